// High-score files as the game reads them at start-up: the bytes become
// data/stats.cfg and go through Scores_Load. The table must come out best
// first, and what Scores_Save keeps of it (the best 20) must read back the
// same, or a restart would reorder or lose scores.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "app/reset.h"
#include "common/scores.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    Fuzz_Init(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Fuzz_InScratch scratch;
    Fuzz_WriteFile("data/stats.cfg", data, size);

    Scores_Reset();
    Scores_Load();
    const std::vector<std::string> loaded = Score.entries;
    for (size_t i = 1; i < loaded.size(); i++)
        FUZZ_CHECK(!cmp(loaded[i], loaded[i - 1]));
    for (const std::string& entry : loaded)
        FUZZ_CHECK(!entry.empty() && entry.find('\n') == std::string::npos);

    Scores_Save();
    Scores_Reset();
    Scores_Load();
    const size_t kept = std::min(loaded.size(), size_t(MAX_SCORES_SHOWN));
    FUZZ_CHECK(Score.entries == std::vector<std::string>(loaded.begin(), loaded.begin() + kept));

    App_ResetAll();
    return 0;
}
