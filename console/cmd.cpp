#include "console/cmd.h"

#include "app/log.h"

void system_h() { VerboseLog(" -- attempting to retrive system info ... \n"); }
