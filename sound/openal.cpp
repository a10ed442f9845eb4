#include "sound/openal.h"

#include <AL/efx.h>

#include "common/log.h"

int initOpenAL(ALCdevice** device, ALCcontext** context) {
    Log(" -- initializing Open AL...\n");
    *device = alcOpenDevice(nullptr);
    if (!*device)
        return 0;
    // No auxiliary sends: the game uses no effects, and each of the library's
    // voices would keep room for them (about 0.7 MiB in all).
    const ALCint attributes[] = {ALC_MAX_AUXILIARY_SENDS, 0, 0};
    *context = alcCreateContext(*device, attributes);
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
