// The rules of the particle effects: reading an effect file, sharing its
// values out to the three particles, the registry by name, and how a particle
// moves, respawns and ends. Drawing is in particles_draw.cpp.
#include "particles/particles.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "common/log.h"
#include "common/timer.h"
#include "common/utils.h"
#include "render/texture.h"

CParticles Particles[MAX_PARTICLE + 1];
std::string ParticleName[MAX_PARTICLE];
int pID = 1;

namespace {

constexpr size_t PIECE_MAX = 255;  // characters of one ';' piece that count

// "a;b;c": each piece runs to the next ';'; missing pieces read as 0.
void ReadTriple(const std::string& value, float out[3], bool integers) {
    size_t start = 0;
    for (int k = 0; k < 3; ++k) {
        std::string piece;
        if (start < value.size()) {
            const size_t end = std::min(value.find(';', start), value.size());
            piece = value.substr(start, std::min(end - start, PIECE_MAX));
            start = end + 1;
        }
        // Colours are whole numbers: "0.5" is 0, and only 0 and 1 span the range.
        out[k] = integers ? float(StringToInt(piece)) : StringToFloat(piece);
    }
}

}  // namespace

void Particles_ParseLine(const std::string& line, S_ParticleValues& values) {
    const size_t blank = line.find(' ');
    const std::string key = line.substr(0, blank);
    // The value starts right after the key and one blank; further blanks belong to it.
    const std::string value = blank == std::string::npos ? std::string() : line.substr(blank + 1);

    if (key == "texture") {
        if (!value.empty())
            values.texture = value;
    } else if (key == "life") {
        if (!value.empty())
            values.life = StringToFloat(value);
    } else if (key == "spray") {
        // A whole number kept as a float; std::trunc also copes with values
        // too large for an int.
        if (!value.empty())
            values.spray = std::trunc(StringToFloat(value));
    } else if (key == "color") {
        ReadTriple(value, values.color, true);
    } else if (key == "speed") {
        ReadTriple(value, values.speed, false);
    } else if (key == "wind") {
        ReadTriple(value, values.wind, false);
    } else if (key == "direction") {
        ReadTriple(value, values.direction, false);
    }
}

bool CParticles::Load(const std::string& fileName) {
    const std::string path = "data/scripts/" + fileName;
    std::ifstream probe(path);
    if (!probe) {
        VerboseLog("ERROR: could not load particles %s\n", fileName.c_str());
        return false;
    }
    // A file too large to be ours reads as empty (logged), so it has no texture.
    std::istringstream file(ReadDataFile(path));
    S_ParticleValues values;
    std::string line;
    while (std::getline(file, line))
        Particles_ParseLine(line, values);

    const unsigned int name = values.texture.empty() ? 0 : GetTexture(values.texture, 1);
    if (name == 0) {
        Log("ERROR: cannot load particle texture: %s\n", fileName.c_str());
        return false;
    }
    Apply(values, name);
    return true;
}

void CParticles::Apply(const S_ParticleValues& values, unsigned int textureName) {
    texture = textureName;
    for (Particle& p : particle) {
        p.active = true;
        p.restart = true;
        p.life = 1.0f;
        p.fade = p.lifeStart = values.life;
        p.r = values.color[0], p.g = values.color[1], p.b = values.color[2];
        p.xi = values.speed[0], p.yi = values.speed[1], p.zi = values.speed[2];
        p.xg = values.wind[0], p.yg = values.wind[1], p.zg = values.wind[2];
        p.dx = values.direction[0], p.dy = values.direction[1], p.dz = values.direction[2];
        p.spray = values.spray;
    }
}

E_ParticleStep CParticles::Step(int i, float x, float y, float z, bool loop) {
    if (i < 0 || i >= PARTICLES_PER_EFFECT || !particle[i].active)
        return E_ParticleStep::Idle;
    Particle& p = particle[i];

    // The frame time is asked for at every step, as the game always did.
    p.x += p.xi / 5 * Timer.get_ticks();
    p.y += p.yi / 5 * Timer.get_ticks();
    p.z += p.zi / 5 * Timer.get_ticks();
    p.xi += p.xg * Timer.get_ticks();
    p.yi += p.yg * Timer.get_ticks();
    p.zi += p.zg * Timer.get_ticks();
    p.life -= p.fade * Timer.get_ticks();

    E_ParticleStep result = E_ParticleStep::Moved;
    if ((p.life < 0 && loop) || p.restart) {
        // From here on the file's life is the lifetime in timer units: the
        // fade is 1 whatever the file said.
        p.life = p.lifeStart;
        p.fade = 1.0f;
        p.x = x, p.y = y, p.z = z;
        // Three draws that the velocity does not use: every respawn gives the
        // same velocity, but the shared random sequence still moves on by three.
        std::rand();
        std::rand();
        std::rand();
        p.xi = p.spray + p.dx;
        p.yi = p.spray + p.dy;
        p.zi = p.spray + p.dz;
        p.restart = false;
        result = E_ParticleStep::Respawned;
    }
    if (p.life < 0 && !loop)
        return E_ParticleStep::Ended;
    return result;
}

int Particles_Find(const std::string& name) {
    int found = -1;
    for (int slot = 0; slot < MAX_PARTICLE; ++slot)
        if (ParticleName[slot] == name)
            found = slot;
    return found;
}

int ParticleLoad(const std::string& name) {
    const int found = Particles_Find(name);
    if (found >= 0)
        return found;
    if (pID <= MAX_PARTICLE) {
        // A failed load still takes the slot under its name.
        Particles[pID].Load(name);
        // The last slot has no name entry: it can be loaded but never found.
        if (pID < MAX_PARTICLE)
            ParticleName[pID] = name;
        ++pID;
        return 0;
    }
    Log("ERROR: MAX_PARTICLE was execeded!\n");
    return 0;
}

void Particles_Reset() {
    for (CParticles& effect : Particles)
        effect = CParticles();
    for (std::string& name : ParticleName)
        name.clear();
    pID = 1;
}
