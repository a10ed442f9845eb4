// Settings files as the game reads the player's own: the bytes become
// data/prefs.cfg and go through Cvar_Load with the game's cvar table
// registered. What loads must survive a save: Cvar_Save writes the file
// again and a fresh table loaded from it ends with the very same values, so
// no setting a player has can be lost or changed by a restart.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "app/reset.h"
#include "common/config.h"
#include "common/cvar.h"
#include "fuzz/fuzz_support.h"

namespace {

void RegisterTable() {
    for (const S_Cvar* cvar : Cvar_Table())
        Cvar_Register(*cvar);
}

std::vector<std::string> Values() {
    std::vector<std::string> values;
    for (const S_Cvar& cvar : CVAR)
        values.push_back(cvar.value);
    return values;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    Fuzz_Init(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Fuzz_InScratch scratch;
    Fuzz_WriteFile("data/prefs.cfg", data, size);

    RegisterTable();
    FUZZ_CHECK(Cvar_Load("prefs.cfg"));
    Cvar_Save();  // applies the screen size first, as at shutdown
    const std::vector<std::string> saved = Values();

    Cvar_Clear();
    RegisterTable();
    FUZZ_CHECK(Cvar_Load("prefs.cfg"));
    FUZZ_CHECK(Values() == saved);

    App_ResetAll();
    return 0;
}
