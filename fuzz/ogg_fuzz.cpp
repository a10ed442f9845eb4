// Sound files as the sound system reads them: the bytes become
// data/sound/fuzz.ogg and go through CSoundSystem::LoadOGG, which decodes the
// whole stream with vorbisfile into one OpenAL buffer, then through
// OpenStream, Play (looping) and Update, which decode it into a stream's ring
// as the music is, round and round when it is short. Both need a current
// context (they give up when they cannot make their buffers), so the process
// opens one on openal-soft's null output, which plays nothing; every buffer
// and source is deleted again after its input.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "app/reset.h"
#include "fuzz/fuzz_support.h"
#include "sound/openal.h"
#include "sound/sound.h"

namespace {
ALCdevice* g_Device = nullptr;
ALCcontext* g_Context = nullptr;

void CloseOpenAL() { deinitOpenAL(g_Device, g_Context); }
}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    Fuzz_Init(argc, argv);
    setenv("ALSOFT_DRIVERS", "null", 0);  // no sound card here, and nothing to hear
    if (!initOpenAL(&g_Device, &g_Context)) {
        std::fprintf(stderr, "no OpenAL device: set ALSOFT_DRIVERS=null\n");
        std::exit(1);
    }
    std::atexit(CloseOpenAL);
    App_ResetAll();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Fuzz_InScratch scratch;
    Fuzz_WriteFile("data/sound/fuzz.ogg", data, size);

    const tSound sound = SoundSystem.LoadOGG("data/sound/fuzz.ogg");
    // With the context current the buffer is always made, decoded or not;
    // no channel was set up, so none is handed out.
    FUZZ_CHECK(sound.buffer != 0);
    FUZZ_CHECK(sound.source == 0 || sound.source == SOUND_NO_CHANNEL);
    SoundSystem.Remove(sound);

    SoundSystem.SetupSound();  // a stream needs a channel
    const tSound stream = SoundSystem.OpenStream("data/sound/fuzz.ogg");
    FUZZ_CHECK(stream.buffer == 0);
    FUZZ_CHECK(stream.source == 0 || stream.source == CSoundSystem::source[0]);
    SoundSystem.Play(stream, true);
    SoundSystem.Update();
    SoundSystem.Remove(stream);

    App_ResetAll();
    return 0;
}
