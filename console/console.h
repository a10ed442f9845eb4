// The console's text output. Any code may print to the console; the lines
// live in AppStatus so that commands reach them without a console object.
#pragma once

#include "app/log.h"

// printf-style; the text goes to the console only, never to the log.
void Con_Print(const char* format, ...) VELTHRA_PRINTF(1, 2);
