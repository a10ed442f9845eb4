// Model files as the game loads them: the bytes become data/models/fuzz.solid
// and go through CSolid::Load (the triangle count, the refusals, the
// triangles and their TEXTURE lines) and CSolid::getTexture. With vertex
// buffers off nothing is uploaded, and no picture exists in the scratch
// folder, so no OpenGL call is made. A loaded model must have exactly the
// triangles it counted, never more than the file has bytes.
#include <cstddef>
#include <cstdint>

#include "app/reset.h"
#include "common/appstatus.h"
#include "fuzz/fuzz_support.h"
#include "scene/solid.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    Fuzz_Init(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Fuzz_InScratch scratch;
    Fuzz_WriteFile("data/models/fuzz.solid", data, size);
    AppStatus.useVertexBuffers = false;  // no window: the triangle array is the model

    static CSolid model;  // one object: every CSolid made counts for good
    model.Reset();
    if (model.Load("fuzz.solid")) {
        FUZZ_CHECK(model.loaded);
        FUZZ_CHECK(model.numTriangles >= 0 && model.numTriangles <= MAX_SOLID_TRIANGLES);
        FUZZ_CHECK(size_t(model.numTriangles) <= size);
        FUZZ_CHECK(model.triangles.size() == size_t(model.numTriangles));
    } else {
        FUZZ_CHECK(!model.loaded);
    }
    CSolid::getTexture("data/models/fuzz.solid");

    model.Cleanup();
    App_ResetAll();
    return 0;
}
