// The log file "log.txt" and the two printf-style tracing calls.
// Log writes to the file (once it is open) and puts the first line of every
// message into the console's text buffer; VerboseLog writes to the file only,
// and only under "-vlog".
#pragma once

#include <cstdio>

#define VELTHRA_PRINTF(fmt, args) __attribute__((format(printf, fmt, args)))

extern FILE* ErrorLog;

// Opens log.txt (truncating it) and writes the banner; ends the process with
// status 1 when the file cannot be created.
bool InitErrorLog();
// Always 0. The console gets the text up to its first newline, at most 254
// characters, even before the file is open.
int Log(const char* format, ...) VELTHRA_PRINTF(1, 2);
int VerboseLog(const char* format, ...) VELTHRA_PRINTF(1, 2);  // always 0
void CloseErrorLog();  // also the module's reset: nothing is written until InitErrorLog
