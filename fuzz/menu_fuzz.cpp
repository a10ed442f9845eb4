// Menu files as the game loads and sets them up: the bytes become
// data/scripts/fuzz.xml, named as the menu file, and go through Menu_Load,
// which reads them with TinyXML and fills the item list with Menu_Parse; then
// Menu_Setup converts the items to the largest screen the game offers (the
// largest multipliers) and makes the widgets, as the game's initialisation
// does. A list box keeps 32 rows and the widget tables their size whatever
// the file holds.
#include <cstddef>
#include <cstdint>

#include "app/reset.h"
#include "common/appstatus.h"
#include "common/config.h"
#include "fuzz/fuzz_support.h"
#include "menu/menu.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    Fuzz_Init(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Fuzz_InScratch scratch;
    Fuzz_WriteFile("data/scripts/fuzz.xml", data, size);

    AppStatus.menuFile = "fuzz.xml";
    Menu_Load();
    // A fresh list is in file units, whatever came before.
    FUZZ_CHECK(!g_MenuConverted);
    for (const S_GameMenu& item : GameMenu)
        FUZZ_CHECK(item.type >= 0 && item.type <= 5);

    Resolution.width = RESOLUTION_PRESETS[6].width;
    Resolution.height = RESOLUTION_PRESETS[6].height;
    Menu_Setup();
    FUZZ_CHECK(g_MenuConverted);

    App_ResetAll();
    return 0;
}
