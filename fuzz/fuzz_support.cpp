#include "fuzz/fuzz_support.h"

#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::string g_Scratch;  // empty until made
std::string g_Home;     // the working directory the process started in

std::string CurrentDir() {
    char cwd[PATH_MAX];
    if (!getcwd(cwd, sizeof cwd))
        Fuzz_Fail("the working directory can be read", __FILE__, __LINE__);
    return cwd;
}

std::string ScratchParent() {
    const char* tmp = std::getenv("TMPDIR");
    if (tmp && *tmp)
        return tmp;
    // Memory-backed: the loaders read and write a file for every input.
    if (access("/dev/shm", W_OK) == 0)
        return "/dev/shm";
    return "/tmp";
}

void RemoveScratch() {
    if (g_Scratch.empty())
        return;
    std::error_code ignored;
    fs::remove_all(g_Scratch, ignored);
}

void MakeScratch() {
    if (!g_Scratch.empty())
        return;
    g_Home = CurrentDir();
    std::string pattern = ScratchParent() + "/velthra-fuzz-XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    if (!mkdtemp(name.data()))
        Fuzz_Fail("a scratch folder can be made", __FILE__, __LINE__);
    g_Scratch = name.data();
    // The folders the loaders look in, so that an input can be a file there.
    std::error_code error;
    for (const char* folder : {"data/levels", "data/models", "data/scripts", "data/textures", "data/sound"})
        fs::create_directories(fs::path(g_Scratch) / folder, error);
    if (error)
        Fuzz_Fail("the data folders can be made", __FILE__, __LINE__);
    std::atexit(RemoveScratch);
}

bool HasFlag(int argc, char** argv, const char* flag) {
    const size_t n = std::strlen(flag);
    for (int i = 1; i < argc; i++)
        if (std::strncmp(argv[i], flag, n) == 0)
            return true;
    return false;
}

}  // namespace

void Fuzz_Init(int* argc, char*** argv) {
    MakeScratch();
    if (!argc || !argv || HasFlag(*argc, *argv, "-artifact_prefix=") || HasFlag(*argc, *argv, "-exact_artifact_path="))
        return;
    // libFuzzer takes its flags after this call; the array must outlive it.
    static std::string prefix;
    static std::vector<char*> arguments;
    prefix = "-artifact_prefix=" + g_Home + "/";
    arguments.assign(*argv, *argv + *argc);
    arguments.push_back(prefix.data());
    arguments.push_back(nullptr);
    *argc += 1;
    *argv = arguments.data();
}

Fuzz_InScratch::Fuzz_InScratch() {
    MakeScratch();
    if (chdir(g_Scratch.c_str()) != 0)
        Fuzz_Fail("the scratch folder can be entered", __FILE__, __LINE__);
}

Fuzz_InScratch::~Fuzz_InScratch() {
    if (chdir(g_Home.c_str()) != 0)
        Fuzz_Fail("the starting folder can be entered again", __FILE__, __LINE__);
}

void Fuzz_WriteFile(const std::string& path, const uint8_t* data, size_t size) {
    FILE* file = std::fopen(path.c_str(), "wb");
    if (!file)
        Fuzz_Fail("the input file can be created", __FILE__, __LINE__);
    const bool written = size == 0 || std::fwrite(data, 1, size, file) == size;
    if (std::fclose(file) != 0 || !written)
        Fuzz_Fail("the input file can be written", __FILE__, __LINE__);
}

void Fuzz_Fail(const char* what, const char* file, int line) {
    std::fprintf(stderr, "FUZZ CHECK FAILED: %s (%s:%d)\n", what, file, line);
    std::fflush(stderr);
    std::abort();
}
