// Targa pictures as the texture cache reads them, before any upload: the
// bytes become data/textures/fuzz.tga and go through TGA_Read. A picture the
// reader accepts must hold exactly width x height pixels of its depth, since
// the upload hands that many bytes to OpenGL without looking again.
#include <cstddef>
#include <cstdint>

#include "app/reset.h"
#include "fuzz/fuzz_support.h"
#include "render/tga.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    Fuzz_Init(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Fuzz_InScratch scratch;
    Fuzz_WriteFile("data/textures/fuzz.tga", data, size);

    S_TgaImage image;
    if (TGA_Read("data/textures/fuzz.tga", image)) {
        FUZZ_CHECK(image.bpp == 24 || image.bpp == 32);
        FUZZ_CHECK(image.width > 0 && image.height > 0);
        FUZZ_CHECK(image.pixels.size() == size_t(image.width) * size_t(image.height) * size_t(image.bpp / 8));
        // The pixels come from the file: they cannot outnumber its bytes.
        FUZZ_CHECK(image.pixels.size() + 18 <= size);
    } else {
        FUZZ_CHECK(image.pixels.empty());
    }

    App_ResetAll();
    return 0;
}
