#include "sound/sound.h"

#include <AL/alc.h>
#include <vorbis/vorbisfile.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

#include "common/cvar.h"
#include "common/log.h"
#include "common/utils.h"

ALuint CSoundSystem::source[SOUND_CHANNELS];
bool CSoundSystem::m_bChannelsAvailable[SOUND_CHANNELS];

CSoundSystem SoundSystem;
tSound snd_Menu;
tSound snd_Game;
tSound snd_SplashScreen;

size_t g_nSoundDecodeLimit = SOUND_MAX_DECODED_BYTES;

namespace {
// The context the sources were generated in, so that Sound_Reset never
// deletes names that belong to another device's context.
ALCcontext* s_setUpContext = nullptr;

const int OGG_CHUNK = 8192;

// A song played from its file. The decoder keeps pointers into itself, so a
// stream never moves: the list holds it by pointer.
struct S_Stream {
    ALuint source = 0;
    ALuint ring[STREAM_BUFFERS] = {};
    ALuint idle[STREAM_BUFFERS] = {};  // the ring's buffers not queued now
    int idleCount = 0;
    OggVorbis_File file;
    int channels = 0;
    long rate = 0;
    bool looping = false;  // at the end the decoder goes back to the start
    bool active = false;   // played and not stopped since (pausing keeps it)
    bool ended = false;    // the decoder has given its last samples
};
std::vector<std::unique_ptr<S_Stream>> s_streams;

S_Stream* FindStream(ALuint source) {
    for (const auto& stream : s_streams)
        if (stream->source == source)
            return stream.get();
    return nullptr;
}

// Fills `out` with up to `capacity` bytes of samples. At the end of the file
// a looping stream goes on from the start in the same buffer, so the loop
// point has no seam; a damaged stream ends where its samples do, as a whole
// load keeps what decoded before the damage.
size_t Decode(S_Stream& stream, char* out, size_t capacity) {
    const int endian = BigEndianSystem ? 1 : 0;
    size_t filled = 0;
    bool rewound = false;  // a song with no samples at all must not loop forever
    while (filled < capacity && !stream.ended) {
        int bitStream = 0;
        const int want = int(std::min<size_t>(capacity - filled, OGG_CHUNK));
        long bytes = ov_read(&stream.file, out + filled, want, endian, 2, 1, &bitStream);
        // A chained file whose next part has another layout ends there: the
        // ring's buffers all carry the first part's.
        const vorbis_info* info = bytes > 0 ? ov_info(&stream.file, bitStream) : nullptr;
        if (info && (info->channels != stream.channels || info->rate != stream.rate))
            bytes = 0;
        if (bytes > 0) {
            filled += size_t(bytes);
            rewound = false;
        } else if (stream.looping && !rewound && ov_pcm_seek(&stream.file, 0) == 0) {
            rewound = true;
        } else {
            stream.ended = true;
        }
    }
    return filled;
}

// Decodes into the idle buffers and queues them, while there are samples.
void Refill(S_Stream& stream) {
    static char samples[STREAM_BUFFER_BYTES];
    const ALenum format = stream.channels == 1 ? AL_FORMAT_MONO16 : AL_FORMAT_STEREO16;
    while (stream.idleCount > 0) {
        const size_t bytes = Decode(stream, samples, sizeof samples);
        if (bytes == 0)
            return;
        const ALuint buffer = stream.idle[--stream.idleCount];
        alBufferData(buffer, format, samples, ALsizei(bytes), ALsizei(stream.rate));
        alSourceQueueBuffers(stream.source, 1, &buffer);
    }
}

// From the beginning: whatever was queued is dropped and the ring decoded anew.
void Restart(S_Stream& stream) {
    alSourceStop(stream.source);
    alSourcei(stream.source, AL_BUFFER, 0);  // empties the queue
    std::copy(stream.ring, stream.ring + STREAM_BUFFERS, stream.idle);
    stream.idleCount = STREAM_BUFFERS;
    stream.ended = ov_pcm_seek(&stream.file, 0) != 0;
    Refill(stream);
    alSourcePlay(stream.source);
    stream.active = true;
}

void CloseStream(S_Stream& stream, bool deleteBuffers) {
    if (deleteBuffers) {
        if (stream.source) {  // a queued buffer cannot be deleted
            alSourceStop(stream.source);
            alSourcei(stream.source, AL_BUFFER, 0);
        }
        alDeleteBuffers(STREAM_BUFFERS, stream.ring);
    }
    ov_clear(&stream.file);  // closes the file
}
}  // namespace

void CSoundSystem::SetupSound() {
    for (int i = 0; i < SOUND_CHANNELS; i++) {
        alGenSources(1, &source[i]);
        m_bChannelsAvailable[i] = true;
    }
    s_setUpContext = alcGetCurrentContext();
}

void CSoundSystem::CleanupSound() {
    for (int i = 0; i < SOUND_CHANNELS; i++) {
        alDeleteSources(1, &source[i]);
        // The source name, not the channel number, is passed on purpose: only
        // a source whose name happens to be below 8 frees a channel. At
        // shutdown, the only caller, it makes no difference.
        ReleaseChannel(static_cast<int>(source[i]));
    }
    s_setUpContext = nullptr;
}

tSound CSoundSystem::Load(const char* file) { return LoadOGG(file); }

tSound CSoundSystem::LoadOGG(const char* file) {
    tSound result = {0, 0};
    FILE* f = file ? std::fopen(file, "rb") : nullptr;
    if (!f) {
        Log(" -- WARNING: could not load sound %s\n", file ? file : "");
        return result;
    }

    // An error left over from an earlier call (playing a handle without a
    // channel, say) must not be taken for a failure to make the buffer.
    alGetError();
    alGenBuffers(1, &result.buffer);
    if (alGetError() != AL_NO_ERROR) {
        std::fclose(f);
        return result;
    }

    OggVorbis_File vf;
    if (ov_open(f, &vf, nullptr, 0) < 0) {
        std::fclose(f);  // a failed ov_open leaves the file to us
        return result;   // the buffer stays generated, with no channel
    }
    // From here on the decoder owns the file: ov_clear closes it, exactly once.

    vorbis_info* info = ov_info(&vf, -1);
    if (!info) {
        ov_clear(&vf);
        return result;
    }
    const ALenum format = info->channels == 1 ? AL_FORMAT_MONO16 : AL_FORMAT_STEREO16;
    const ALsizei frequency = static_cast<ALsizei>(info->rate);
    const int endian = BigEndianSystem ? 1 : 0;

    std::vector<char> data;
    char chunk[OGG_CHUNK];
    int bitStream = 0;
    long bytes;
    // 0 is the end; a negative read (a damaged stream) keeps what was gathered.
    while ((bytes = ov_read(&vf, chunk, OGG_CHUNK, endian, 2, 1, &bitStream)) > 0) {
        // A stream that decodes past the limit is refused whole rather than
        // allowed to take all memory; it is treated like a file that is not
        // Ogg: the buffer stays generated and gets no channel.
        if (data.size() + static_cast<size_t>(bytes) > g_nSoundDecodeLimit) {
            Log(" -- WARNING: sound %s decodes to more than %zu bytes, not loaded\n", file, g_nSoundDecodeLimit);
            ov_clear(&vf);
            return result;
        }
        data.insert(data.end(), chunk, chunk + bytes);
    }
    ov_clear(&vf);

    alBufferData(result.buffer, format, data.data(), static_cast<ALsizei>(data.size()), frequency);

    // -1 when every channel is taken; tSound's unsigned field holds it as
    // SOUND_NO_CHANNEL.
    result.source = static_cast<ALuint>(CheckChannels());
    return result;
}

tSound CSoundSystem::OpenStream(const char* file) {
    FILE* f = file ? std::fopen(file, "rb") : nullptr;
    if (!f) {
        Log(" -- WARNING: could not load sound %s\n", file ? file : "");
        return tSound{0, 0};
    }
    auto stream = std::make_unique<S_Stream>();
    if (ov_open(f, &stream->file, nullptr, 0) < 0) {
        std::fclose(f);  // a failed ov_open leaves the file to us
        return tSound{0, 0};
    }
    // From here on the decoder owns the file: ov_clear closes it, exactly once.
    const vorbis_info* info = ov_info(&stream->file, -1);
    alGetError();
    // Streaming loops by seeking back to the start, and every buffer of the
    // ring must hold whole frames of one of OpenAL's two layouts.
    const bool playable = info && (info->channels == 1 || info->channels == 2) && ov_seekable(&stream->file);
    if (playable)
        alGenBuffers(STREAM_BUFFERS, stream->ring);
    if (!playable || alGetError() != AL_NO_ERROR) {
        ov_clear(&stream->file);
        return tSound{0, 0};
    }
    stream->channels = info->channels;
    stream->rate = info->rate;
    std::copy(stream->ring, stream->ring + STREAM_BUFFERS, stream->idle);
    stream->idleCount = STREAM_BUFFERS;

    const tSound result = {0, static_cast<ALuint>(CheckChannels())};
    if (result.source == SOUND_NO_CHANNEL) {
        CloseStream(*stream, true);
        return result;
    }
    stream->source = result.source;
    s_streams.push_back(std::move(stream));
    return result;
}

void CSoundSystem::Update() {
    for (const auto& stream : s_streams) {
        if (!stream->active)
            continue;
        ALint processed = 0;
        alGetSourcei(stream->source, AL_BUFFERS_PROCESSED, &processed);
        processed = std::min<ALint>(processed, STREAM_BUFFERS - stream->idleCount);
        if (processed > 0) {
            alSourceUnqueueBuffers(stream->source, processed, stream->idle + stream->idleCount);
            stream->idleCount += processed;
        }
        Refill(*stream);
        ALint state = AL_STOPPED, queued = 0;
        alGetSourcei(stream->source, AL_SOURCE_STATE, &state);
        alGetSourcei(stream->source, AL_BUFFERS_QUEUED, &queued);
        if (state == AL_STOPPED) {
            // Ran dry since the last call: go on with what is queued now; with
            // nothing left the song is over.
            if (queued > 0)
                alSourcePlay(stream->source);
            else
                stream->active = false;
        }
    }
}

int CSoundSystem::CheckChannels() {
    for (int i = 0; i < SOUND_CHANNELS; i++) {
        if (m_bChannelsAvailable[i]) {
            m_bChannelsAvailable[i] = false;
            return static_cast<int>(source[i]);
        }
    }
    Log(" -- WARNING: all audio channels are filled!\n");
    return -1;
}

void CSoundSystem::ReleaseChannel(int n) {
    // Callers pass source names, so -1 (a sound without a channel) arrives
    // here too: anything outside 0..7 is ignored rather than indexed.
    if (n >= 0 && n < SOUND_CHANNELS)
        m_bChannelsAvailable[n] = true;
}

// A handle whose source is 0 or -1 names no source: OpenAL refuses every call
// on it with an error flag and nothing else happens. LoadOGG clears that flag
// before it relies on it.
void CSoundSystem::Play(tSound sound, bool loop) {
    if (S_Stream* stream = FindStream(sound.source)) {
        if (loop)
            stream->looping = true;
        ALint state = AL_INITIAL;
        alGetSourcei(stream->source, AL_SOURCE_STATE, &state);
        if (state == AL_PAUSED)
            alSourcePlay(stream->source);
        else
            Restart(*stream);
        return;
    }
    if (loop)
        alSourcei(sound.source, AL_LOOPING, AL_TRUE);
    // Refused while the source is paused, which is how UnPause resumes
    // where it stopped instead of starting over.
    alSourcei(sound.source, AL_BUFFER, static_cast<ALint>(sound.buffer));
    alSourcePlay(sound.source);
}

void CSoundSystem::UnPause(tSound sound) { Play(sound, false); }

void CSoundSystem::Stop(tSound sound) {
    if (S_Stream* stream = FindStream(sound.source))
        stream->active = false;
    alSourceStop(sound.source);
}

void CSoundSystem::Pause(tSound sound) { alSourcePause(sound.source); }

void CSoundSystem::SetLooping(tSound sound, bool loop) {
    if (S_Stream* stream = FindStream(sound.source)) {
        // Looping switched on after the last samples were decoded: decoding
        // goes on from the start (the decoder stands at the end).
        if (loop && !stream->looping)
            stream->ended = false;
        stream->looping = loop;
        return;
    }
    alSourcei(sound.source, AL_LOOPING, loop ? AL_TRUE : AL_FALSE);
}

bool CSoundSystem::IsPlaying(tSound sound) {
    ALint state = AL_INITIAL;
    alGetSourcei(sound.source, AL_SOURCE_STATE, &state);
    return state == AL_PLAYING;
}

void CSoundSystem::CheckForActiveSource(tSound) {}

void CSoundSystem::SetPosition(tSound sound, const float position[3]) {
    alSourcefv(sound.source, AL_POSITION, position);
}

void CSoundSystem::SetVelocity(tSound sound, const float velocity[3]) {
    alSourcefv(sound.source, AL_VELOCITY, velocity);
}

void CSoundSystem::SetPitch(tSound sound, float pitch) { alSourcef(sound.source, AL_PITCH, pitch); }

void CSoundSystem::SetGain(tSound sound, float gain) { alSourcef(sound.source, AL_GAIN, gain); }

void CSoundSystem::SetMaxDistance(tSound sound, float distance) { alSourcef(sound.source, AL_MAX_DISTANCE, distance); }

void CSoundSystem::SetListenerPosition(const float position[3]) { alListenerfv(AL_POSITION, position); }

void CSoundSystem::SetListenerVelocity(const float velocity[3]) { alListenerfv(AL_VELOCITY, velocity); }

void CSoundSystem::SetListenerOrientation(const float at[3], const float up[3]) {
    const float orientation[6] = {at[0], at[1], at[2], up[0], up[1], up[2]};
    alListenerfv(AL_ORIENTATION, orientation);
}

void CSoundSystem::SetDopplerParameters(float factor, float velocity) {
    alDopplerFactor(factor);
    alDopplerVelocity(velocity);
}

float Sound_VolumeGain(float setting) {
    // The cvar's text never parses to NaN today, but a NaN gain would be
    // refused by OpenAL and leave the old one: count it as silence instead.
    if (std::isnan(setting) || setting < 0.0f)
        return 0.0f;
    if (setting > 1.0f)
        return 1.0f;
    return setting;
}

void CSoundSystem::SetVolume() {
    const float gain = Sound_VolumeGain(Cvar_GetFloat(volume));
    for (int i = 0; i < SOUND_CHANNELS; i++)
        alSourcef(source[i], AL_GAIN, gain);
}

void CSoundSystem::Remove(tSound sound) {
    for (auto it = s_streams.begin(); it != s_streams.end(); ++it) {
        if ((*it)->source == sound.source) {
            CloseStream(**it, true);
            s_streams.erase(it);
            break;
        }
    }
    alSourceStop(sound.source);
    // The source name again, not the channel number (see CleanupSound).
    ReleaseChannel(static_cast<int>(sound.source));
    // A buffer still attached to a source cannot be deleted.
    alSourcei(sound.source, AL_BUFFER, 0);
    alDeleteBuffers(1, &sound.buffer);
}

void Sound_Reset() {
    const bool ours = s_setUpContext && alcGetCurrentContext() == s_setUpContext;
    for (const auto& stream : s_streams)
        CloseStream(*stream, ours);
    s_streams.clear();
    if (ours) {
        alDeleteSources(SOUND_CHANNELS, CSoundSystem::source);
        for (tSound* sound : {&snd_Menu, &snd_Game, &snd_SplashScreen})
            if (sound->buffer)
                alDeleteBuffers(1, &sound->buffer);
    }
    s_setUpContext = nullptr;
    for (int i = 0; i < SOUND_CHANNELS; i++) {
        CSoundSystem::source[i] = 0;
        CSoundSystem::m_bChannelsAvailable[i] = false;
    }
    snd_Menu = snd_Game = snd_SplashScreen = tSound{0, 0};
    g_nSoundDecodeLimit = SOUND_MAX_DECODED_BYTES;
}
