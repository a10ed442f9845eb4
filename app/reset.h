#pragma once

// The whole game state back to what it is when the process starts, before
// SDL_main: every module's own reset, and the C library's random numbers
// unseeded again, in one place, for whatever runs the game's code more than
// once in a process (the tests between tests, the fuzz targets between
// inputs) or wants to start from a known state (the benchmark). Models'
// vertex buffers and the sound's sources and buffers are deleted while their
// context is current; textures, the blur's framebuffer, the sky's faces and
// the font's lists are only forgotten, so a caller with a live context
// deletes those first if it cares.
void App_ResetAll();
