// The sound system on openal-soft's wave-file backend: what reaches the
// output, the eight channels, loading failures and the volume rule.
#include <AL/al.h>
#include <AL/alc.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <numeric>
#include <thread>

#include "assets_support.h"
#include "common/cvar.h"
#include "sound/openal.h"
#include "sound/sound.h"

namespace {
int OpenFiles() { return int(std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {})); }

class Sound : public CvarTest {
protected:
    // openal-soft reads its configuration once per process: one file and one output serve every test.
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
        CvarTest::SetUp();
        std::filesystem::remove(Wave());
        ASSERT_EQ(initOpenAL(&device, &context), 1);
        ASSERT_TRUE(std::filesystem::exists(Wave())) << "OpenAL was configured earlier in this process";
        sounds.SetupSound();
    }
    void TearDown() override {
        Sound_Reset();  // while the context still exists
        CloseDevice();
        ShellTest::TearDown();
    }
    void CloseDevice() {
        if (device)
            deinitOpenAL(device, context);
        device = nullptr, context = nullptr;
    }
    // Lets the backend write `seconds` of real time, closes the device so that
    // it finishes its 32-bit float WAV, and returns the RMS of the samples.
    double RecordedRms(double seconds) {
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
        CloseDevice();
        const std::string b = ReadFile(Wave());
        auto u32 = [&](size_t at) {
            uint32_t v = 0;
            return std::memcpy(&v, b.data() + at, 4), v;
        };
        const size_t fmt = b.find("fmt "), data = b.find("data");
        if (b.compare(0, 4, "RIFF") || fmt == std::string::npos || data == std::string::npos || fmt + 26 > b.size() ||
            data + 8 > b.size() || (u32(fmt + 22) & 0xFFFF) != 32) {
            ADD_FAILURE() << "not the wave backend's file";
            return 0.0;
        }
        const size_t count = std::min<size_t>(u32(data + 4), b.size() - data - 8) / 4;
        EXPECT_GT(count, u32(fmt + 12) * (u32(fmt + 10) & 0xFFFF) * seconds * 0.6) << "the backend wrote its samples";
        std::vector<float> v(count);
        std::memcpy(v.data(), b.data() + data + 8, 4 * count);
        return std::sqrt(std::inner_product(v.begin(), v.end(), v.begin(), 0.0) / double(count));
    }
    ALCdevice* device = nullptr;
    ALCcontext* context = nullptr;
    CSoundSystem sounds;  // any instance: the channels are class-wide
};
}  // namespace

TEST_F(Sound, MenuMusicIsDecodedWholeAndReachesTheOutputLooping) {
    snd_Menu = sounds.Load(GameData("sound/menu.ogg").c_str());
    std::vector<ALint> buffer;
    for (ALenum what : {AL_SIZE, AL_FREQUENCY, AL_CHANNELS, AL_BITS})
        alGetBufferi(snd_Menu.buffer, what, &buffer.emplace_back());
    // Every frame of the 16 bars, 16-bit stereo at 44.1 kHz.
    EXPECT_EQ(buffer, (std::vector<ALint>{16 * 4 * 44100 * 60 / 96 * 4, 44100, 2, 16}));

    sounds.Play(snd_Menu, true);
    sounds.Play(snd_Menu, false);  // restarts it, and must not switch the looping off
    ALint looping = -1;
    alGetSourcei(snd_Menu.source, AL_LOOPING, &looping);
    EXPECT_EQ(looping, AL_TRUE);
    sounds.Stop(snd_Menu);
    EXPECT_FALSE(sounds.IsPlaying(snd_Menu));
    Cvar_Set("volume", "1");
    sounds.SetVolume();
    sounds.Play(snd_Menu, true);
    EXPECT_GT(RecordedRms(0.5), 0.02) << "the music is heard";
}

TEST_F(Sound, EightChannelsThenTheNinthLoadWarnsAndHandlesWithoutASourceAreHarmless) {
    const std::string jingle = GameData("sound/splashscreen.ogg");
    for (int i = 0; i < SOUND_CHANNELS; i++)
        EXPECT_EQ(sounds.Load(jingle.c_str()).source, CSoundSystem::source[i]);
    const tSound ninth = sounds.Load(jingle.c_str());
    EXPECT_EQ(ninth.source, SOUND_NO_CHANNEL);
    EXPECT_EQ(AppStatus.consoleLines.front(), " -- WARNING: all audio channels are filled!");

    // Without a channel (or a file) OpenAL refuses every call; the refusal must not fail the next load.
    for (tSound none : {ninth, tSound{0, 0}}) {
        sounds.Play(none, true);
        EXPECT_FALSE(sounds.IsPlaying(none));
    }
    sounds.Remove(ninth);
    sounds.ReleaseChannel(8);
    EXPECT_EQ(sounds.CheckChannels(), -1) << "-1 and 8 are no channel";
    sounds.Remove(tSound{0, 0});  // the source name 0 frees channel 0
    EXPECT_EQ(sounds.CheckChannels(), int(CSoundSystem::source[0]));
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

    // Cut in the middle of the audio: whatever the decoder makes of it, the file is closed once.
    WriteFile("data/sound/cut.ogg", ReadFile(jingle).substr(0, 20000));
    sounds.Load("data/sound/cut.ogg");
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

TEST_F(Sound, RemoveAndCleanupReleaseByTheSourceName) {
    const tSound a = sounds.Load(GameData("sound/splashscreen.ogg").c_str());
    sounds.Load(GameData("sound/splashscreen.ogg").c_str());  // takes channel 1
    sounds.Play(a, true);
    sounds.Remove(a);
    EXPECT_FALSE(sounds.IsPlaying(a));
    EXPECT_FALSE(alIsBuffer(a.buffer));
    std::vector<bool> expected = {false, false, true, true, true, true, true, true};
    if (a.source < 8)
        expected[a.source] = true;  // a's name, not a's channel 0
    EXPECT_EQ(std::vector<bool>(CSoundSystem::m_bChannelsAvailable, CSoundSystem::m_bChannelsAvailable + 8), expected);
    std::vector<ALuint> names(CSoundSystem::source, CSoundSystem::source + 8);
    sounds.CleanupSound();
    for (ALuint name : names)
        EXPECT_FALSE(alIsSource(name));
}
