// Level files as a level starts: the bytes become data/levels/fuzz.xml (a
// level on disk wins over the archive's) and go through World_Load, which
// parses them with TinyXML and fills the world list with World_Parse, then
// World_Setup builds the brick table from it and World_Cleanup frees it.
// The table has 32 places whatever the file says.
#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "app/reset.h"
#include "fuzz/fuzz_support.h"
#include "game/brick.h"
#include "game/world.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    Fuzz_Init(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Fuzz_InScratch scratch;
    Fuzz_WriteFile("data/levels/fuzz.xml", data, size);

    World_Load("fuzz.xml");
    World_Setup();
    FUZZ_CHECK(CBrick::Count() >= 0 && CBrick::Count() <= MAX_BRICKS);
    FUZZ_CHECK(size_t(CBrick::Count()) == std::min(GameWorld.size(), size_t(MAX_BRICKS)));
    for (int i = 0; i < CBrick::Count(); i++)
        FUZZ_CHECK(Brick[i] != nullptr);
    World_Cleanup();

    App_ResetAll();
    return 0;
}
