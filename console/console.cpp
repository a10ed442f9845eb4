#include "console/console.h"

#include <cstdarg>

void Con_Print(const char* format, ...) {
    char text[1024];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    Con_PushLine(text);
}
