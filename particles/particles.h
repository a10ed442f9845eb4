// Particle effects: small textured-quad emitters described by text files
// under data/scripts/, loaded once by name into a fixed registry and drawn
// by name at a position every frame (the ball's trail, the menu's bursts).
#pragma once

#include <string>

// The registry's slot of an already-loaded effect, else loads it into the
// next slot and returns 0.
int ParticleLoad(const std::string& name);
// Draws (and moves) the named effect at (x, y, z); true when a one-shot
// effect (loop false) has ended. False when missing or "r_particles" is 0.
bool ParticleDraw(const std::string& name, float x, float y, float z, bool loop);
// Start-up state: an empty registry, next slot 1.
void Particles_Reset();
