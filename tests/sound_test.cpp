// The sound system on OpenAL's silent device, and on a loopback device that
// mixes only when asked.
#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>

#include "common/cvar.h"
#include "sound/openal.h"
#include "sound/sound.h"
#include "test_support.h"

namespace {
int OpenFiles() { return int(std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {})); }

class Sound : public CvarTest {
protected:
    static void SetUpTestSuite() { setenv("ALSOFT_DRIVERS", "null", 0); }
    void SetUp() override {
        CvarTest::SetUp();
        ASSERT_EQ(initOpenAL(&device, &context), 1);
        sounds.SetupSound();
    }
    void TearDown() override {
        Sound_Reset();  // while the context still exists
        deinitOpenAL(device, context);
        ShellTest::TearDown();
    }
    ALCdevice* device = nullptr;
    ALCcontext* context = nullptr;
    CSoundSystem sounds;  // any instance: the channels are class-wide
};
}  // namespace

TEST_F(Sound, TheJingleIsDecodedWholeAndTheMenuMusicStreamedWithoutLooping) {
    snd_SplashScreen = sounds.Load(GameData("sound/splashscreen.ogg").c_str());
    std::vector<ALint> buffer;
    for (ALenum what : {AL_SIZE, AL_FREQUENCY, AL_CHANNELS, AL_BITS})
        alGetBufferi(snd_SplashScreen.buffer, what, &buffer.emplace_back());
    // Every frame of it, 16-bit stereo at 44.1 kHz.
    EXPECT_EQ(buffer, (std::vector<ALint>{114660 * 4, 44100, 2, 16}));
    sounds.Play(snd_SplashScreen, true);
    sounds.Play(snd_SplashScreen, false);  // restarts it, and must not switch the looping off
    ALint looping = -1;
    alGetSourcei(snd_SplashScreen.source, AL_LOOPING, &looping);
    EXPECT_EQ(looping, AL_TRUE);
    sounds.Stop(snd_SplashScreen);

    snd_Menu = sounds.OpenStream(GameData("sound/menu.ogg").c_str());
    EXPECT_EQ(snd_Menu.source, CSoundSystem::source[1]);
    sounds.Play(snd_Menu, true);
    alGetSourcei(snd_Menu.source, AL_LOOPING, &looping);
    EXPECT_EQ(looping, AL_FALSE) << "a looping source would play its queue over and over";
    EXPECT_TRUE(sounds.IsPlaying(snd_Menu));
    sounds.Stop(snd_Menu);
    EXPECT_FALSE(sounds.IsPlaying(snd_Menu));
}

namespace {
// Mixes what `play` starts on a fresh loopback device, 1024 frames at a time
// with Update between them as the frames call it (none before `starved`).
std::vector<float> Mixed(int frames, const std::function<tSound(CSoundSystem&)>& play, bool* stillPlaying,
                         int starved = 0) {
    auto open = reinterpret_cast<LPALCLOOPBACKOPENDEVICESOFT>(alcGetProcAddress(nullptr, "alcLoopbackOpenDeviceSOFT"));
    auto render = reinterpret_cast<LPALCRENDERSAMPLESSOFT>(alcGetProcAddress(nullptr, "alcRenderSamplesSOFT"));
    ALCcontext* previous = alcGetCurrentContext();
    ALCdevice* device = open ? open(nullptr) : nullptr;
    const ALCint attributes[] = {ALC_FORMAT_CHANNELS_SOFT,
                                 ALC_STEREO_SOFT,
                                 ALC_FORMAT_TYPE_SOFT,
                                 ALC_FLOAT_SOFT,
                                 ALC_FREQUENCY,
                                 44100,
                                 ALC_HRTF_SOFT,
                                 ALC_FALSE,
                                 ALC_OUTPUT_LIMITER_SOFT,
                                 ALC_FALSE,
                                 0};
    ALCcontext* context = device ? alcCreateContext(device, attributes) : nullptr;
    if (!context || !render) {
        ADD_FAILURE() << "no loopback device";
        return {};
    }
    alcMakeContextCurrent(context);
    CSoundSystem sounds;
    sounds.SetupSound();
    const tSound sound = play(sounds);
    std::vector<float> out(size_t(frames) * 2);
    for (int done = 0; done < frames; done += 1024) {
        render(device, out.data() + 2 * done, std::min(1024, frames - done));
        if (done >= starved)
            sounds.Update();
    }
    *stillPlaying = sounds.IsPlaying(sound);
    sounds.Remove(sound);
    Sound_Reset();
    alcMakeContextCurrent(previous);
    alcDestroyContext(context);
    alcCloseDevice(device);
    return out;
}
}  // namespace

TEST_F(Sound, AStreamedSongSoundsAsTheWholeBufferDidAndLoopsWithoutASeam) {
    const std::string jingle = GameData("sound/splashscreen.ogg");
    const int length = 114660, frames = length * 5 / 2;  // twice round and half again
    auto play = [&jingle](bool streamed, bool loop) {
        return [=](CSoundSystem& s) {
            const tSound sound = streamed ? s.OpenStream(jingle.c_str()) : s.Load(jingle.c_str());
            s.Play(sound, loop);
            return sound;
        };
    };
    bool playing = false;
    const std::vector<float> whole = Mixed(frames, play(false, true), &playing);
    ASSERT_EQ(whole.size(), size_t(frames) * 2);
    EXPECT_TRUE(playing);
    const std::vector<float> streamed = Mixed(frames, play(true, true), &playing);
    EXPECT_TRUE(playing);
    EXPECT_GT(*std::max_element(whole.begin() + 2 * length - 2000, whole.begin() + 2 * length + 2000), 0.01f)
        << "something is heard around the loop point";
    EXPECT_TRUE(streamed == whole) << "the same samples, loop points included";

    // Not looping: it is heard once, then silence, and it is over.
    const std::vector<float> once = Mixed(frames, play(true, false), &playing);
    EXPECT_FALSE(playing);
    ASSERT_EQ(once.size(), whole.size());
    EXPECT_TRUE(std::equal(once.begin(), once.begin() + 2 * length, whole.begin()));
    EXPECT_EQ(*std::max_element(once.begin() + 2 * length, once.end()), 0.0f);

    // No refill for two seconds (a frame that long): the ring runs dry, and
    // the next refill sets it going again.
    const std::vector<float> starved = Mixed(frames, play(true, true), &playing, 2 * 44100);
    EXPECT_TRUE(playing);
    EXPECT_GT(*std::max_element(starved.end() - 20000, starved.end()), 0.01f);
}

TEST_F(Sound, PlayingAMissingFilesHandleIsHarmless) {
    // OpenAL refuses every call on it, and the refusal must not fail the next load.
    const tSound none{0, 0};
    sounds.Play(none, true);
    EXPECT_FALSE(sounds.IsPlaying(none));
    EXPECT_EQ(sounds.Load(GameData("sound/splashscreen.ogg").c_str()).source, CSoundSystem::source[0]);
}

TEST_F(Sound, EightChannelsThenTheNinthLoadWarnsAndHandlesWithoutASourceAreHarmless) {
    const std::string jingle = GameData("sound/splashscreen.ogg");
    for (int i = 0; i < SOUND_CHANNELS; i++)
        EXPECT_EQ(sounds.Load(jingle.c_str()).source, CSoundSystem::source[i]);
    const tSound ninth = sounds.Load(jingle.c_str());
    EXPECT_EQ(ninth.source, SOUND_NO_CHANNEL);
    EXPECT_EQ(AppStatus.consoleLines.front(), " -- WARNING: all audio channels are filled!");
    // OpenAL refuses every call on no source; the refusal must not fail the next load.
    sounds.Play(ninth, true);
    EXPECT_FALSE(sounds.IsPlaying(ninth));
    sounds.Remove(ninth);
    sounds.ReleaseChannel(5);
    EXPECT_EQ(sounds.Load(jingle.c_str()).source, CSoundSystem::source[5]);
}

TEST_F(Sound, MissingFileNonOggFileAndTheDecodeLimitGetNoChannel) {
    ScratchDir scratch;
    const int files = OpenFiles();
    const tSound missing = sounds.Load("data/sound/game.ogg");
    EXPECT_EQ(std::make_pair(missing.buffer, missing.source), std::make_pair(0u, 0u));
    EXPECT_EQ(AppStatus.consoleLines.front(), " -- WARNING: could not load sound data/sound/game.ogg");

    const size_t lines = AppStatus.consoleLines.size();
    WriteFile("data/sound/menu.ogg", "this is not an Ogg Vorbis stream at all");
    const tSound text = sounds.Load("data/sound/menu.ogg");
    EXPECT_TRUE(alIsBuffer(text.buffer)) << "the buffer stays generated";
    EXPECT_EQ(text.source, 0u);
    const tSound streamedText = sounds.OpenStream("data/sound/menu.ogg");
    EXPECT_EQ(std::make_pair(streamedText.buffer, streamedText.source), std::make_pair(0u, 0u)) << "streamed";
    EXPECT_EQ(AppStatus.consoleLines.size(), lines) << "no message";

    const std::string jingle = GameData("sound/splashscreen.ogg");
    const size_t bytes = 114660 * 4;  // the jingle's frames, 16-bit stereo
    g_nSoundDecodeLimit = bytes - 1;
    EXPECT_EQ(sounds.Load(jingle.c_str()).source, 0u);
    EXPECT_EQ(AppStatus.consoleLines.front(),
              " -- WARNING: sound " + jingle + " decodes to more than 458639 bytes, not loaded");
    EXPECT_EQ(sounds.CheckChannels(), int(CSoundSystem::source[0])) << "none of the three took a channel";
    g_nSoundDecodeLimit = bytes;
    EXPECT_EQ(sounds.Load(jingle.c_str()).source, CSoundSystem::source[1]) << "exactly at the limit is fine";

    // Cut in the middle of the audio: whatever the decoder makes of it, the file is closed once,
    // a stream's when it is removed (played looping, it goes round what is left).
    WriteFile("data/sound/cut.ogg", ReadFile(jingle).substr(0, 20000));
    sounds.Load("data/sound/cut.ogg");
    const tSound cut = sounds.OpenStream("data/sound/cut.ogg");
    EXPECT_EQ(cut.source, CSoundSystem::source[3]);
    sounds.Play(cut, true);
    sounds.Update();
    EXPECT_EQ(OpenFiles(), files + 1);
    sounds.Remove(cut);
    EXPECT_EQ(OpenFiles(), files) << "every file was closed, the loaded ones too";
}

TEST_F(Sound, VolumeIsClampedToZeroToOneOnEverySource) {
    const struct {
        const char* volume;
        float gain;
    } cases[] = {{"1.5", 1.0f}, {"0.25", 0.25f}, {"-0.2", 0.0f}, {"0.5", 0.5f}, {"nan", 0.0f}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.volume);
        Cvar_Set("volume", c.volume);
        sounds.SetVolume();
        for (ALuint source : CSoundSystem::source) {
            float gain = -1.0f;
            alGetSourcef(source, AL_GAIN, &gain);
            EXPECT_EQ(gain, c.gain);
        }
    }
}
