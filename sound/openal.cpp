#include "sound/openal.h"

#include "common/log.h"

int initOpenAL(ALCdevice** device, ALCcontext** context) {
    Log(" -- initializing Open AL...\n");
    *device = alcOpenDevice(nullptr);
    if (!*device)
        return 0;
    *context = alcCreateContext(*device, nullptr);
    if (!*context) {
        alcCloseDevice(*device);
        *device = nullptr;
        return 0;
    }
    alcMakeContextCurrent(*context);
    return 1;
}

void deinitOpenAL(ALCdevice* device, ALCcontext* context) {
    alcMakeContextCurrent(nullptr);
    if (context)
        alcDestroyContext(context);
    if (device)
        alcCloseDevice(device);
}
