// The player's own files (settings, scores): written whole or not at all, and
// a failure told to the player instead of passing unseen.
#pragma once

#include <string>

// WriteFileAtomic, and on failure one line naming `what`, the file and the
// reason: "WARNING: <what> not saved to <path>: <strerror>", on standard error
// and through Log (the console, and the log file when it can be written).
// Told once per file: further failures stay quiet until a save of that file
// succeeds again. False when the file was not written.
bool SaveFile_Write(const std::string& path, const std::string& text, const char* what);
void SaveFile_Reset();  // no failure known: the next one is told again
