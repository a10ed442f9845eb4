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
int Log(const char* format, ...) VELTHRA_PRINTF(1, 2);
int VerboseLog(const char* format, ...) VELTHRA_PRINTF(1, 2);
void CloseErrorLog();

// The console keeps at most this many lines; the oldest fall off the end.
constexpr size_t MAX_CONSOLE_LINES = 4096;

// Puts one line at the front of the console buffer, trimming the oldest.
void Con_PushLine(const char* line);
