// The sound system on openal-soft's wave-file backend: what reaches the
// output, the eight channels, loading failures and the volume rule.
#include <gtest/gtest.h>
#include <AL/al.h>
#include <AL/alc.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <thread>

#include "console/cvar.h"
#include "sound/openal.h"
#include "sound/sound.h"
#include "test_support.h"

namespace {
std::string Music(const char* name) { return std::string(VELTHRA_GAME_DIR) + "/data/sound/" + name; }

int OpenFiles() {
    int n = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) (void)entry, n++;
    return n;
}

// The samples of the 32-bit float WAV the backend writes (RIFF/WAVE, an
// extensible or plain float fmt chunk); empty when the file is not that.
std::vector<float> ReadFloatWave(const std::string& path, int* rateAndChannels) {
    const std::string b = ReadFile(path);
    auto u16 = [&](size_t at) { return unsigned(uint8_t(b[at])) | unsigned(uint8_t(b[at + 1])) << 8; };
    auto u32 = [&](size_t at) { return u16(at) | u16(at + 2) << 16; };
    std::vector<float> samples;
    if (b.size() < 12 || b.compare(0, 4, "RIFF") || b.compare(8, 4, "WAVE")) return samples;
    bool isFloat = false;
    for (size_t at = 12; at + 8 <= b.size();) {
        const std::string id = b.substr(at, 4);
        const size_t size = std::min<size_t>(u32(at + 4), b.size() - at - 8), body = at + 8;
        if (id == "fmt " && size >= 16) {
            const unsigned tag = u16(body), bits = u16(body + 14);
            isFloat = bits == 32 && (tag == 3 || (tag == 0xFFFE && size >= 26 && u16(body + 24) == 3));
            rateAndChannels[0] = int(u32(body + 4)), rateAndChannels[1] = int(u16(body + 2));
        } else if (id == "data" && isFloat) {
            samples.resize(size / 4);
            std::memcpy(samples.data(), b.data() + body, samples.size() * 4);
        }
        at = body + size + (size & 1);
    }
    return samples;
}

double Rms(const std::vector<float>& s) {
    double sum = 0;
    for (float v : s) sum += double(v) * v;
    return s.empty() ? 0 : std::sqrt(sum / s.size());
}

class Sound : public ShellTest {
protected:
    // openal-soft reads its configuration once per process, so one file and
    // one output path serve every test; each device open rewrites the output.
    static std::string Dir() { return "/tmp/velthra-sound-" + std::to_string(getpid()); }
    static std::string Wave() { return Dir() + "/out.wav"; }
    static void SetUpTestSuite() {
        std::filesystem::create_directories(Dir());
        WriteFile(Dir() + "/alsoft.conf", "drivers = wave\n[wave]\nfile = " + Wave() + "\n");
        setenv("ALSOFT_CONF", (Dir() + "/alsoft.conf").c_str(), 1);
        unsetenv("ALSOFT_DRIVERS");
    }
    static void TearDownTestSuite() { std::filesystem::remove_all(Dir()); }

    void SetUp() override {
        ShellTest::SetUp();
        Sound_Reset();
        RegisterAllCvars();
        std::filesystem::remove(Wave());
        ASSERT_EQ(initOpenAL(&device, &context), 1);
        ASSERT_TRUE(std::filesystem::exists(Wave())) << "OpenAL was configured earlier in this process";
    }
    void TearDown() override {
        Sound_Reset();
        CloseDevice();
        ShellTest::TearDown();
    }
    void CloseDevice() {
        if (device) deinitOpenAL(device, context);
        device = nullptr, context = nullptr;
    }
    // Plays for `seconds` of real time, then closes the device so that the
    // backend finishes the file, and returns what it wrote.
    std::vector<float> Record(double seconds, int* rateAndChannels) {
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
        CloseDevice();
        return ReadFloatWave(Wave(), rateAndChannels);
    }
    ALint SourceInt(ALuint source, ALenum what) {
        ALint v = -1;
        alGetSourcei(source, what, &v);
        return v;
    }
    ALCdevice* device = nullptr;
    ALCcontext* context = nullptr;
    CSoundSystem sounds;  // any instance: the channels are class-wide
};
} // namespace

TEST_F(Sound, MenuMusicIsDecodedWholeAndReachesTheOutputLooping) {
    const int files = OpenFiles();
    sounds.SetupSound();
    snd_Menu = sounds.Load(Music("menu.ogg").c_str());
    EXPECT_EQ(OpenFiles(), files) << "the decoder closes the file";
    ASSERT_NE(snd_Menu.buffer, 0u);
    EXPECT_EQ(snd_Menu.source, CSoundSystem::source[0]) << "first free channel";
    ALint size = 0, rate = 0, channels = 0, bits = 0;
    alGetBufferi(snd_Menu.buffer, AL_SIZE, &size);
    alGetBufferi(snd_Menu.buffer, AL_FREQUENCY, &rate);
    alGetBufferi(snd_Menu.buffer, AL_CHANNELS, &channels);
    alGetBufferi(snd_Menu.buffer, AL_BITS, &bits);
    EXPECT_EQ(size, 16 * 4 * 44100 * 60 / 96 * 4) << "every frame of the 16 bars, 16-bit stereo";
    EXPECT_EQ(std::vector<ALint>({rate, channels, bits}), std::vector<ALint>({44100, 2, 16}));

    sounds.SetVolume();
    sounds.Play(snd_Menu, true);
    EXPECT_TRUE(sounds.IsPlaying(snd_Menu));
    sounds.Play(snd_Menu, false);  // restarts it, and must not switch the looping off
    EXPECT_EQ(SourceInt(snd_Menu.source, AL_LOOPING), AL_TRUE);
    sounds.Stop(snd_Menu);
    EXPECT_FALSE(sounds.IsPlaying(snd_Menu));
    sounds.Play(snd_Menu, false);

    int format[2] = {0, 0};
    const std::vector<float> out = Record(0.5, format);
    ASSERT_GT(format[0], 0);
    EXPECT_GT(out.size(), size_t(format[0] * format[1] * 0.3)) << "about half a second was written";
    EXPECT_GT(Rms(out), 0.02) << "the music is heard";
}

TEST_F(Sound, VolumeZeroSilencesTheMusic) {
    sounds.SetupSound();
    snd_Menu = sounds.Load(Music("menu.ogg").c_str());
    Cvar_Set("volume", "0");
    sounds.SetVolume();
    sounds.Play(snd_Menu, true);
    EXPECT_TRUE(sounds.IsPlaying(snd_Menu));
    int format[2] = {0, 0};
    const std::vector<float> out = Record(0.3, format);
    ASSERT_GT(out.size(), size_t(format[0] * format[1] * 0.15)) << "the backend wrote its samples";
    EXPECT_EQ(Rms(out), 0.0);
}

TEST_F(Sound, EightChannelsThenTheNinthLoadWarnsAndHandlesWithoutASourceAreHarmless) {
    const std::string jingle = Music("splashscreen.ogg");
    EXPECT_EQ(sounds.Load(jingle.c_str()).source, SOUND_NO_CHANNEL) << "no channel is free before SetupSound";
    sounds.SetupSound();
    for (int i = 0; i < SOUND_CHANNELS; i++) EXPECT_EQ(sounds.Load(jingle.c_str()).source, CSoundSystem::source[i]);
    const size_t lines = AppStatus.consoleLines.size();
    const tSound ninth = sounds.Load(jingle.c_str());
    EXPECT_NE(ninth.buffer, 0u);
    EXPECT_EQ(ninth.source, 0xFFFFFFFFu);
    ASSERT_EQ(AppStatus.consoleLines.size(), lines + 1);
    EXPECT_EQ(AppStatus.consoleLines.front(), " -- WARNING: all audio channels are filled!");

    // Without a channel (or without a file) every call is refused by OpenAL,
    // and that refusal must not make the next load fail.
    for (tSound none : {ninth, tSound{0, 0}}) {
        sounds.Play(none, true);
        sounds.Pause(none);
        sounds.UnPause(none);
        EXPECT_FALSE(sounds.IsPlaying(none));
    }
    sounds.Remove(ninth);
    sounds.ReleaseChannel(8);
    EXPECT_EQ(sounds.CheckChannels(), -1) << "-1 and 8 are no channel";
    sounds.Remove(tSound{0, 0});  // the source name 0 frees channel 0
    EXPECT_EQ(sounds.CheckChannels(), int(CSoundSystem::source[0]));
    sounds.ReleaseChannel(5);
    const tSound again = sounds.Load(jingle.c_str());
    EXPECT_NE(again.buffer, 0u);
    EXPECT_EQ(again.source, CSoundSystem::source[5]);
}

TEST_F(Sound, MissingFileAndNonOggFileGetNoChannel) {
    ScratchDir scratch;
    sounds.SetupSound();
    const int files = OpenFiles();
    const tSound missing = sounds.Load("data/sound/game.ogg");
    EXPECT_EQ(missing.buffer, 0u);
    EXPECT_EQ(missing.source, 0u);
    EXPECT_EQ(AppStatus.consoleLines.front(), " -- WARNING: could not load sound data/sound/game.ogg");

    const size_t lines = AppStatus.consoleLines.size();
    WriteFile("data/sound/menu.ogg", "this is not an Ogg Vorbis stream at all");
    const tSound text = sounds.Load("data/sound/menu.ogg");
    EXPECT_TRUE(alIsBuffer(text.buffer)) << "the buffer stays generated";
    EXPECT_EQ(text.source, 0u);
    EXPECT_EQ(AppStatus.consoleLines.size(), lines) << "no message";
    EXPECT_EQ(sounds.CheckChannels(), int(CSoundSystem::source[0])) << "neither took a channel";

    // Cut in the middle of the audio: whatever the decoder makes of it, the
    // file is closed once and nothing breaks.
    WriteFile("data/sound/cut.ogg", ReadFile(Music("splashscreen.ogg")).substr(0, 20000));
    sounds.Load("data/sound/cut.ogg");
    EXPECT_EQ(OpenFiles(), files) << "every file was closed";
}

TEST_F(Sound, AStreamDecodingPastTheLimitIsRefused) {
    sounds.SetupSound();
    const std::string jingle = Music("splashscreen.ogg");
    const size_t bytes = 114660 * 4;  // the jingle's frames, 16-bit stereo
    g_nSoundDecodeLimit = bytes;
    EXPECT_EQ(sounds.Load(jingle.c_str()).source, CSoundSystem::source[0]) << "exactly at the limit is fine";
    g_nSoundDecodeLimit = bytes - 1;
    const int files = OpenFiles();
    const tSound refused = sounds.Load(jingle.c_str());
    EXPECT_EQ(refused.source, 0u);
    EXPECT_EQ(OpenFiles(), files);
    EXPECT_EQ(AppStatus.consoleLines.front(),
              " -- WARNING: sound " + jingle + " decodes to more than 458639 bytes, not loaded");
    EXPECT_EQ(sounds.CheckChannels(), int(CSoundSystem::source[1])) << "no channel was taken";
}

TEST_F(Sound, VolumeIsClampedToZeroToOneOnEverySource) {
    sounds.SetupSound();
    auto gains = [&](const char* volume) {
        Cvar_Set("volume", volume);
        sounds.SetVolume();
        std::vector<float> g(SOUND_CHANNELS, -1.0f);
        for (int i = 0; i < SOUND_CHANNELS; i++) alGetSourcef(CSoundSystem::source[i], AL_GAIN, &g[i]);
        return g;
    };
    EXPECT_EQ(gains("1.5"), std::vector<float>(SOUND_CHANNELS, 1.0f));
    EXPECT_EQ(gains("0.25"), std::vector<float>(SOUND_CHANNELS, 0.25f));
    EXPECT_EQ(gains("-0.2"), std::vector<float>(SOUND_CHANNELS, 0.0f));
    gains("0.5");
    EXPECT_EQ(gains("nan"), std::vector<float>(SOUND_CHANNELS, 0.0f));
    EXPECT_EQ(Sound_VolumeGain(NAN), 0.0f);
    EXPECT_EQ(Sound_VolumeGain(INFINITY), 1.0f);
}

TEST_F(Sound, UnPauseResumesWhereThePauseStopped) {
    sounds.SetupSound();
    const tSound jingle = sounds.Load(Music("splashscreen.ogg").c_str());
    sounds.Play(jingle, false);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    sounds.Pause(jingle);
    EXPECT_EQ(SourceInt(jingle.source, AL_SOURCE_STATE), AL_PAUSED);
    const ALint paused = SourceInt(jingle.source, AL_SAMPLE_OFFSET);
    EXPECT_GT(paused, 0);
    sounds.UnPause(jingle);
    EXPECT_TRUE(sounds.IsPlaying(jingle));
    EXPECT_GE(SourceInt(jingle.source, AL_SAMPLE_OFFSET), paused);
    EXPECT_EQ(SourceInt(jingle.source, AL_LOOPING), AL_FALSE);
}

TEST_F(Sound, RemoveAndCleanupReleaseTheChannelNamedBySourceNotByIndex) {
    sounds.SetupSound();
    const tSound a = sounds.Load(Music("splashscreen.ogg").c_str());
    sounds.Load(Music("splashscreen.ogg").c_str());  // takes channel 1
    sounds.Play(a, true);
    sounds.Remove(a);
    EXPECT_FALSE(sounds.IsPlaying(a));
    EXPECT_FALSE(alIsBuffer(a.buffer));
    std::vector<bool> expected = {false, false, true, true, true, true, true, true};
    if (a.source < 8) expected[a.source] = true;  // a's name, not a's channel 0
    EXPECT_EQ(std::vector<bool>(CSoundSystem::m_bChannelsAvailable, CSoundSystem::m_bChannelsAvailable + 8), expected);

    const std::vector<ALuint> names(CSoundSystem::source, CSoundSystem::source + 8);
    sounds.CleanupSound();
    for (ALuint name : names) EXPECT_FALSE(alIsSource(name));
}

TEST_F(Sound, ResetDeletesWhatWasSetUpAndReturnsToStartUp) {
    sounds.SetupSound();
    snd_Game = sounds.Load(Music("splashscreen.ogg").c_str());
    const std::vector<ALuint> names(CSoundSystem::source, CSoundSystem::source + 8);
    const ALuint buffer = snd_Game.buffer;
    Sound_Reset();
    for (ALuint name : names) EXPECT_FALSE(alIsSource(name));
    EXPECT_FALSE(alIsBuffer(buffer));
    EXPECT_EQ(snd_Game.buffer, 0u);
    EXPECT_EQ(sounds.CheckChannels(), -1) << "no channel is free at start-up";
}

TEST_F(Sound, ListenerOrientationIsTheFacingThenTheUpVector) {
    const float at[3] = {0, 0, -1}, up[3] = {0, 1, 0};
    sounds.SetListenerOrientation(at, up);
    float orientation[6] = {};
    alGetListenerfv(AL_ORIENTATION, orientation);
    EXPECT_EQ(std::vector<float>(orientation, orientation + 6), std::vector<float>({0, 0, -1, 0, 1, 0}));
}
