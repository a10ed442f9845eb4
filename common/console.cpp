#include "common/console.h"

#include <cstdarg>
#include <cstdio>

#include "common/appstatus.h"

void Con_PushLine(const char* line) {
    AppStatus.consoleLines.emplace_front(line);
    // The buffer would otherwise grow for as long as the game runs.
    if (AppStatus.consoleLines.size() > MAX_CONSOLE_LINES)
        AppStatus.consoleLines.pop_back();
    AppStatus.consoleLineCount++;
}

void Con_Print(const char* format, ...) {
    // A longer message is cut at the buffer, never written past it.
    char text[1024];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    Con_PushLine(text);
}

void Con_ResetBuffer() {
    AppStatus.consoleLines.clear();
    AppStatus.consoleLineCount = 0;
}
