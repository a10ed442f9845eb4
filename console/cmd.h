// Console commands.
#pragma once

// Only traces that system information is being gathered; not a command.
void system_h();
