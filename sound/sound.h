// The sound system: a fixed pool of eight OpenAL sources ("channels") and Ogg
// Vorbis files played through them. A short sound is decoded whole into one
// OpenAL buffer at load time (Load); music is streamed (OpenStream): its file
// stays open and a small ring of buffers is decoded ahead and refilled by
// Update, once a frame and while the loop waits, so a song costs a few hundred
// kilobytes however long it is. Every loaded sound keeps its channel for
// good. The game has three sounds: the menu music, the game music (streamed)
// and the splash jingle (snd_Menu, snd_Game, snd_SplashScreen).
//
// The device and context are opened elsewhere (sound/openal.h); every call
// here acts on whatever context is current, and with none they do nothing.
#pragma once

#include <AL/al.h>

#include <cstddef>

// A sound handle: the OpenAL buffer name, then the source name of its channel.
// Both are 0 when the file could not be opened. When no channel was free the
// source is -1, which the unsigned field holds as 0xFFFFFFFF (SOUND_NO_CHANNEL).
// A streamed sound has buffer 0: its ring belongs to the sound system.
struct tSound {
    ALuint buffer;
    ALuint source;
};

const ALuint SOUND_NO_CHANNEL = static_cast<ALuint>(-1);
const int SOUND_CHANNELS = 8;

// A stream's ring: this many buffers of this many bytes of samples each, about
// 1.5 s of 16-bit stereo at 44.1 kHz queued ahead, so that frames (or waits)
// up to a second apart never leave the source without samples.
const int STREAM_BUFFERS = 4;
const size_t STREAM_BUFFER_BYTES = 64u * 1024u;

// Decoding stops and a sound loaded whole is refused past this many bytes of
// samples (the jingle is under half a megabyte); Sound_Reset restores it.
const size_t SOUND_MAX_DECODED_BYTES = 64u * 1024u * 1024u;
extern size_t g_nSoundDecodeLimit;

class CSoundSystem {
public:
    // Shared by every instance; a channel is free while its flag is true.
    // At start-up no source exists and no channel is free.
    static ALuint source[SOUND_CHANNELS];
    static bool m_bChannelsAvailable[SOUND_CHANNELS];

    void SetupSound();  // generates the eight sources, all channels free
    // Remove and CleanupSound hand ReleaseChannel the source NAME, not the
    // channel number, so they free channel <name> when the name is below 8.
    void CleanupSound();  // deletes the eight sources

    tSound Load(const char* file);  // LoadOGG
    // The whole file as 16-bit samples at its own rate (mono for one channel,
    // else stereo) in a new buffer, then the lowest free channel. A file that
    // is not Ogg Vorbis, or decodes past g_nSoundDecodeLimit, keeps its empty
    // buffer and gets source 0; a damaged stream keeps what decoded before.
    tSound LoadOGG(const char* file);
    // The file opened for streaming, with the lowest free channel; nothing is
    // decoded until Play. A missing file is logged as by LoadOGG; a file that
    // is not Ogg Vorbis, or has more than two channels, gives {0, 0}; with no
    // channel free, {0, -1}, and nothing stays open. Remove closes it.
    tSound OpenStream(const char* file);
    // Refills the rings of the streams that play: called once a frame and
    // while the loop waits for events. A source that ran dry between two calls
    // starts again with what is queued; a song that is not looping and has
    // been played to its end stops. Cheap when nothing is due.
    void Update();

    int CheckChannels();         // takes the lowest free channel: its source, or -1 when all are taken
    void ReleaseChannel(int n);  // channel n is free again; anything outside 0..7 is ignored

    // loop false leaves the looping flag as it was. A stream starts from its
    // beginning (resumes when paused), like a whole buffer; a looping stream
    // goes on from its start in the same buffer, so the loop has no seam.
    void Play(tSound sound, bool loop);
    void UnPause(tSound sound);  // Play(sound, false)
    // After Stop the next Play starts from the beginning; after Pause, UnPause
    // resumes where it stopped. SetLooping is the one way to turn looping off.
    // IsPlaying is false when paused, stopped, never played or without a source.
    // A stream's looping is its own flag: its source never loops the ring.
    void Stop(tSound sound);
    void Pause(tSound sound);
    void SetLooping(tSound sound, bool loop);
    bool IsPlaying(tSound sound);
    void CheckForActiveSource(tSound sound);  // hook called every frame; does nothing

    // Handed to OpenAL unchecked (vectors x, y, z). The game calls none of
    // them: its sounds are not placed, and SetVolume puts "volume" over every
    // source's gain each frame.
    void SetPosition(tSound sound, const float position[3]);
    void SetVelocity(tSound sound, const float velocity[3]);
    void SetPitch(tSound sound, float pitch);
    void SetGain(tSound sound, float gain);
    void SetMaxDistance(tSound sound, float distance);

    // The listener and the Doppler effect, shared by every source of the
    // context; unused by the game as well.
    void SetListenerPosition(const float position[3]);
    void SetListenerVelocity(const float velocity[3]);
    void SetListenerOrientation(const float at[3], const float up[3]);
    void SetDopplerParameters(float factor, float velocity);

    void SetVolume();  // the "volume" cvar, clamped to 0..1, as the gain of all eight sources

    // Stops the source, frees a channel and deletes the buffer; a stream's
    // ring too, and its file is closed.
    void Remove(tSound sound);
};

// The gain that a "volume" value gives: clamped to 0..1, NaN counts as 0.
float Sound_VolumeGain(float volume);

extern CSoundSystem SoundSystem;
extern tSound snd_Menu;
extern tSound snd_Game;
extern tSound snd_SplashScreen;

// Back to start-up state: no sources, no channel free, no stream, the three
// handles zero, the decode limit restored. Deletes the sources (and the three
// sounds' and the streams' buffers) only when SetupSound ran under the
// context that is current now; with nothing set up it makes no OpenAL call.
void Sound_Reset();
