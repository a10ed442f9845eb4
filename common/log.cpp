#include "common/log.h"

#include <cstdarg>
#include <cstdlib>
#include <cstring>

#include "common/appstatus.h"
#include "common/console.h"

FILE* ErrorLog = nullptr;

namespace {
constexpr size_t LOG_BUFFER = 1024;
constexpr size_t CONSOLE_LINE_MAX = 254;
}  // namespace

bool InitErrorLog() {
    ErrorLog = std::fopen("log.txt", "w");
    if (!ErrorLog) {
        std::perror("Can't init Logfile!\n");
        std::exit(1);
    }
    Log("Console Initialized...\n%s V%s\n\n", GAME_NAME, GAME_VERSION);
    AppStatus.consoleLineCount = 0;
    return true;
}

int Log(const char* format, ...) {
    va_list args;
    if (ErrorLog) {
        va_start(args, format);
        std::vfprintf(ErrorLog, format, args);
        va_end(args);
        std::fflush(ErrorLog);
    }

    char text[LOG_BUFFER];
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);

    // Only the first line reaches the console, cut to 254 characters.
    char line[CONSOLE_LINE_MAX + 1];
    size_t n = 0;
    while (n < CONSOLE_LINE_MAX && text[n] != '\0' && text[n] != '\n') {
        line[n] = text[n];
        n++;
    }
    line[n] = '\0';
    Con_PushLine(line);
    return 0;
}

int VerboseLog(const char* format, ...) {
    if (!AppStatus.verboseLog || !ErrorLog)
        return 0;
    va_list args;
    va_start(args, format);
    std::vfprintf(ErrorLog, format, args);
    va_end(args);
    std::fflush(ErrorLog);
    return 0;
}

void CloseErrorLog() {
    if (ErrorLog) {
        std::fclose(ErrorLog);
        // Cleared so that a stray late message cannot write to a closed stream.
        ErrorLog = nullptr;
    }
}
