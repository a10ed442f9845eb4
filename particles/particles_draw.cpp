// Drawing of the particle effects: each live particle's quad, then its rules
// for the frame (CParticles::Step).
#include "common/cvar.h"
#include "common/log.h"
#include "common/utils.h"
#include "particles/particles.h"
#include "render/particle_quad.h"

bool CParticles::Draw(float x, float y, float z, bool loop) {
    for (int i = 0; i < PARTICLES_PER_EFFECT; ++i) {
        const Particle& p = particle[i];
        if (!p.active)
            continue;
        DrawParticleQuad(texture, p.r, p.g, p.b, p.life, p.x, p.y, p.z);
        // A finished one-shot effect leaves at once, with the matrix still
        // pushed and the quad's state still set: the true result is how the
        // caller learns the effect is over, and the game has always left the
        // GL state as it was at that moment.
        if (Step(i, x, y, z, loop) == E_ParticleStep::Ended)
            return true;
        EndParticleQuad();
    }
    return false;
}

bool ParticleDraw(const std::string& name, float x, float y, float z, bool loop) {
    const int slot = Particles_Find(name);
    if (slot >= 0 && Cvar_GetInt(r_particles) != 0)
        return Particles[slot].Draw(x, y, z, loop);
    // Also written, every call, for an effect that exists while "r_particles" is 0.
    VerboseLog("WARNING: could not find %s in particle stack!\n", name.c_str());
    return false;
}
