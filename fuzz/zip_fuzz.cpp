// Damaged asset archives: the bytes become assets.zip and readZipFile asks
// for the members the game reads from the real archive (the default
// settings and the levels). Whatever a member holds, no more than the
// archive's member limit may come back.
#include <cstddef>
#include <cstdint>
#include <string>

#include "app/reset.h"
#include "common/archive.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    Fuzz_Init(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Fuzz_InScratch scratch;
    Fuzz_WriteFile("assets.zip", data, size);

    // Each read opens the archive anew, as the game's reads do.
    for (const char* member : {"data/default.cfg", "data/levels/lvl1.xml", "data/levels/lvl10.xml"}) {
        const std::string bytes = readZipFile("assets.zip", member);
        FUZZ_CHECK(bytes.size() <= MAX_ZIP_MEMBER_BYTES);
    }

    App_ResetAll();
    return 0;
}
