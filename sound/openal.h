// Opening and closing the OpenAL device and context.
#pragma once

#include <AL/al.h>
#include <AL/alc.h>

int initOpenAL(ALCdevice** device, ALCcontext** context);  // 1 on success, 0 on failure
void deinitOpenAL(ALCdevice* device, ALCcontext* context);
