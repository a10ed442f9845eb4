// fuzz_replay_<target> FOLDER_OR_FILE...
// Runs every file of the given folders (in name order), and every file given
// by name, once through the target's LLVMFuzzerTestOneInput, the way
// libFuzzer replays a corpus, but with no libFuzzer: any compiler builds it,
// and a sanitizer build turns a saved corpus into a regression test. Each
// name is printed before it runs, so a crash names its input. A missing
// folder, or no input at all, is an error: a replay of nothing proves nothing.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace fs = std::filesystem;

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s FOLDER_OR_FILE...\n", argv[0]);
        return 2;
    }
    // Absolute before the target runs: inputs run in a scratch folder.
    std::vector<fs::path> inputs;
    for (int i = 1; i < argc; i++) {
        std::error_code error;
        const fs::path given = fs::absolute(argv[i], error).lexically_normal();
        if (!error && fs::is_directory(given, error)) {
            std::vector<fs::path> found;
            for (const fs::directory_entry& entry : fs::directory_iterator(given, error))
                if (entry.is_regular_file())
                    found.push_back(entry.path());
            std::sort(found.begin(), found.end());
            inputs.insert(inputs.end(), found.begin(), found.end());
        } else if (!error && fs::is_regular_file(given, error)) {
            inputs.push_back(given);
        } else {
            std::fprintf(stderr, "%s: no such folder or file: %s\n", argv[0], argv[i]);
            return 2;
        }
    }
    if (inputs.empty()) {
        std::fprintf(stderr, "%s: no inputs to replay\n", argv[0]);
        return 2;
    }

    // The target may add libFuzzer flags to the arguments; they mean nothing here.
    int initArgc = 1;
    char** initArgv = argv;
    LLVMFuzzerInitialize(&initArgc, &initArgv);

    for (const fs::path& input : inputs) {
        std::ifstream in(input, std::ios::binary);
        if (!in) {
            std::fprintf(stderr, "%s: cannot read %s\n", argv[0], input.c_str());
            return 2;
        }
        const std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        std::printf("replaying %s (%zu bytes)\n", input.c_str(), bytes.size());
        std::fflush(stdout);
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    }
    std::printf("%zu inputs replayed\n", inputs.size());
    return 0;
}
