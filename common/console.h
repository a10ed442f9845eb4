// The console's text buffer. Any code may print to the console; the lines
// live in AppStatus so that commands and the log reach them without the
// console object (which only reads them to draw and scroll).
#pragma once

#include <cstddef>

#include "common/log.h"

// The console keeps at most this many lines; the oldest fall off the end.
constexpr size_t MAX_CONSOLE_LINES = 4096;

// Puts one line at the front of the console buffer, trimming the oldest.
void Con_PushLine(const char* line);
// printf-style; the text goes to the console only, never to the log.
void Con_Print(const char* format, ...) VELTHRA_PRINTF(1, 2);
// Empties the buffer and its line count (start-up state).
void Con_ResetBuffer();
