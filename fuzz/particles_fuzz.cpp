// Particle effect files as the registry loads them: the bytes become
// data/scripts/fuzz.txt and go through ParticleLoad, which reads every line
// with Particles_ParseLine and then asks for the named picture. No picture
// exists in the scratch folder, so the load ends there without OpenGL; the
// effect still takes its slot under its name.
#include <cstddef>
#include <cstdint>

#include "app/reset.h"
#include "fuzz/fuzz_support.h"
#include "particles/particles.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    Fuzz_Init(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Fuzz_InScratch scratch;
    Fuzz_WriteFile("data/scripts/fuzz.txt", data, size);

    ParticleLoad("fuzz.txt");
    FUZZ_CHECK(Particles_Find("fuzz.txt") == 1);
    FUZZ_CHECK(pID == 2);

    App_ResetAll();  // the texture cache too: a texture line may name a file that exists, such as the input
    return 0;
}
