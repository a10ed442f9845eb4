// Particle effects: small textured-quad emitters described by text files
// under data/scripts/, loaded once by name into a fixed registry and drawn
// by name at a position every frame (the ball's trail, the menu's bursts).
//
// An effect file is one "key value" per line: texture, life, spray, color,
// speed, wind and direction. Each effect moves three particles that share
// one texture. The rules (reading the keys, loading, moving, respawning and
// the end of a one-shot effect) live in particles.cpp and need no window;
// particles_draw.cpp draws through render/particle_quad.h.
#pragma once

#include <string>

#include "scene/vector.h"

constexpr int MAX_PARTICLE = 1024;  // slots scanned by name
constexpr int PARTICLES_PER_EFFECT = 3;

struct Particle {
    bool active = false;   // drawn and moved only when true; loading sets it
    bool restart = false;  // respawn at the next draw; loading sets it
    float life = 0.0f;     // also the alpha of the colour
    float fade = 0.0f;     // life lost per timer unit
    float lifeStart = 0.0f;
    float r = 0.0f, g = 0.0f, b = 0.0f;
    float x = 0.0f, y = 0.0f, z = 0.0f;
    float xi = 0.0f, yi = 0.0f, zi = 0.0f;  // velocity
    float xg = 0.0f, yg = 0.0f, zg = 0.0f;  // wind: added to the velocity per timer unit
    float dx = 0.0f, dy = 0.0f, dz = 0.0f;  // direction: the velocity given at respawn
    float spray = 0.0f;                     // a whole number, added to each velocity axis at respawn
};

// The values an effect file gives, before they are shared out to the three
// particles. Keys a file leaves out stay 0 (and the texture name empty,
// which fails the load).
struct S_ParticleValues {
    std::string texture;  // file under data/textures/
    float life = 0.0f;
    float spray = 0.0f;  // already truncated toward zero
    float color[3] = {0.0f, 0.0f, 0.0f};
    float speed[3] = {0.0f, 0.0f, 0.0f};
    float wind[3] = {0.0f, 0.0f, 0.0f};
    float direction[3] = {0.0f, 0.0f, 0.0f};
};

// Applies one line of an effect file; unknown keys change nothing.
void Particles_ParseLine(const std::string& line, S_ParticleValues& values);
// The last slot below MAX_PARTICLE registered under exactly this name, or -1.
int Particles_Find(const std::string& name);

// What one particle did in one draw.
enum class E_ParticleStep {
    Idle,  // inactive (or no such particle): not drawn, not moved
    Moved,
    Respawned,  // back at the given position with its start velocity
    Ended,      // a one-shot effect is over
};

class CParticles {
public:
    // data/scripts/<fileName>; false when the file or its texture is missing.
    bool Load(const std::string& fileName);
    // Gives the three particles the file's values; the position stays.
    void Apply(const S_ParticleValues& values, unsigned int textureName);
    // Draws and moves the three particles; true when loop is false and a
    // particle has died (the effect is finished).
    bool Draw(float x, float y, float z, bool loop);
    // The rules of one particle for one draw, after its quad is drawn: the
    // move by the frame time, then the respawn at (x, y, z).
    E_ParticleStep Step(int i, float x, float y, float z, bool loop);

    Particle particle[PARTICLES_PER_EFFECT];
    unsigned int texture = 0;  // OpenGL texture name, 0 when absent
    CVector4 spare[4];         // carried with every effect; nothing reads them
};

// Slot MAX_PARTICLE can be loaded into but has no name and is never found.
extern CParticles Particles[MAX_PARTICLE + 1];
extern std::string ParticleName[MAX_PARTICLE];  // empty when unused
extern int pID;                                 // next slot to fill; slot 0 stays empty

// The registry's slot of an already-loaded effect, else loads it into the
// next slot and returns 0.
int ParticleLoad(const std::string& name);
// Draws (and moves) the named effect at (x, y, z); true when a one-shot
// effect (loop false) has ended. False when missing or "r_particles" is 0.
bool ParticleDraw(const std::string& name, float x, float y, float z, bool loop);
// Start-up state: an empty registry, next slot 1.
void Particles_Reset();
