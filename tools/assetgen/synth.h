// A small synthesiser for the game's music: a handful of instruments written
// straight into a stereo buffer, and send effects (echo, reverb).
//
// Loop mode: a buffer that is a musical loop wraps note tails and effect
// tails around to its start, and effects run over the loop twice so that
// their state at the end matches the start: the loop point is seamless.
#pragma once

#include <cstdint>
#include <vector>

#include "image.h"  // Rng

constexpr int kRate = 44100;

struct Mix {
    int frames;
    bool loop;
    std::vector<float> left, right;  // dry
    std::vector<float> send;         // mono feed for echo and reverb
    Mix(int n, bool wrap) : frames(n), loop(wrap), left(n, 0), right(n, 0), send(n, 0) {}
    // Adds one stereo sample at frame i (wrapped in loop mode, dropped past the end otherwise).
    void put(int64_t i, float v, float pan, float sendLevel);
};

float midiToHz(float note);

// Instruments. `start` and `length` are in frames; `vel` 0..1; pan -1..1.
void kick(Mix& m, int64_t start, float vel);
void snare(Mix& m, int64_t start, float vel, Rng& rng);
void hat(Mix& m, int64_t start, float vel, bool open, Rng& rng);
void clap(Mix& m, int64_t start, float vel, Rng& rng);
void bass(Mix& m, int64_t start, int64_t length, float note, float vel, float brightness);
void lead(Mix& m, int64_t start, int64_t length, float note, float vel, float pan);
void pad(Mix& m, int64_t start, int64_t length, const std::vector<float>& notes, float vel);
void pluck(Mix& m, int64_t start, float note, float vel, float pan, Rng& rng);
void bell(Mix& m, int64_t start, int64_t length, float note, float vel, float pan);
void riser(Mix& m, int64_t start, int64_t length, float vel, Rng& rng);

// Runs the send through a ping-pong echo and a plate-like reverb and adds
// the result to the dry signal; then limits softly and scales to `peak`.
void finish(Mix& m, float echoSeconds, float echoFeedback, float echoLevel, float reverbLevel, float peak);
