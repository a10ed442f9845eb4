// Opening and closing the OpenAL device and context: the system's default
// device and one context, current for the whole run. The game does not run
// without them: start-up ends the process when initOpenAL fails. Where there
// is no sound card, ALSOFT_DRIVERS=null gives OpenAL Soft a silent device.
#pragma once

#include <AL/al.h>
#include <AL/alc.h>

// On success the new context is current; a failure leaves nothing open.
int initOpenAL(ALCdevice** device, ALCcontext** context);  // 1 on success, 0 on failure
// Makes no context current, then destroys the context and closes the device;
// either may be null.
void deinitOpenAL(ALCdevice* device, ALCcontext* context);
