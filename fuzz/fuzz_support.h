// What the fuzz targets share. Each target hands libFuzzer's bytes to one of
// the game's loaders; most loaders take a file name under "data/", relative
// to the working directory, so every process gets a scratch folder of its own
// (under $TMPDIR, else /dev/shm, else /tmp) with the data/ folders the game
// expects, and each input runs with that folder as the working directory.
// Nothing a loader or a console command writes (dump.txt, prefs.cfg, a
// stray log.txt) can land anywhere else.
//
// The working directory is changed only while an input runs: libFuzzer reads
// and writes its corpus folders, given relative to where it was started,
// between inputs. A crash report is written while the input runs, so
// Fuzz_Init points libFuzzer's artifacts at the starting folder unless the
// command line already says where they go.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// For LLVMFuzzerInitialize: makes the scratch folder (removed again at exit)
// and adds "-artifact_prefix=<starting folder>/" to the arguments when
// neither -artifact_prefix nor -exact_artifact_path is given.
void Fuzz_Init(int* argc, char*** argv);

// Scope of one input: the scratch folder is the working directory until the
// object goes away. Makes the folder if Fuzz_Init was never called.
class Fuzz_InScratch {
public:
    Fuzz_InScratch();
    ~Fuzz_InScratch();
    Fuzz_InScratch(const Fuzz_InScratch&) = delete;
    Fuzz_InScratch& operator=(const Fuzz_InScratch&) = delete;
};

// Writes the bytes to `path`, relative to the working directory (so inside
// the scratch folder while a Fuzz_InScratch lives). Ends the process when
// the file cannot be written: a target that fed nothing would only look clean.
void Fuzz_WriteFile(const std::string& path, const uint8_t* data, size_t size);

// A property the loader promises did not hold: printed, then abort(), which
// libFuzzer reports as a crash with the input saved.
[[noreturn]] void Fuzz_Fail(const char* what, const char* file, int line);
#define FUZZ_CHECK(condition)                                                                                          \
    do {                                                                                                               \
        if (!(condition))                                                                                              \
            Fuzz_Fail(#condition, __FILE__, __LINE__);                                                                 \
    } while (0)
