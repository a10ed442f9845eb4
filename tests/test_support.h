// Helpers shared by the tests: a scratch working folder, real zip archives,
// the shell's reset, a driven clock and SDL events.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "common/appstatus.h"

// A fresh folder as the working directory (where the game finds its data),
// left and deleted on destruction.
class ScratchDir {
public:
    ScratchDir();
    ~ScratchDir();
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;
    const std::string& path() const { return path_; }

private:
    std::string path_;
    std::string previous_;
};

void WriteFile(const std::string& path, const std::string& bytes);  // creates parent folders
std::string ReadFile(const std::string& path);
std::string GameData(const std::string& rel);                 // a file of the runnable folder's data/
std::vector<std::string> ListFiles(const std::string& root);  // every file below root, relative, sorted

struct ZipMember {
    std::string name;
    std::string bytes;
    bool stored = false;  // no compression: the bytes stand in the archive as they are
};
// Writes a real archive with minizip. Returns false on any failure.
bool MakeZip(const std::string& path, const std::vector<ZipMember>& members);

// The console lines as they are now, oldest first (easier to compare).
std::vector<std::string> ConsoleLinesOldestFirst();

void ResetShellState();  // every module's own reset

void RegisterAllCvars();  // with their compiled defaults

// Base fixture: every test starts and ends with the shell's start-up state.
class ShellTest : public ::testing::Test {
protected:
    void SetUp() override { ResetShellState(); }
    void TearDown() override { ResetShellState(); }
};

class ScratchTest : public ShellTest {
protected:
    ScratchDir scratch;
};

class CvarTest : public ShellTest {
protected:
    void SetUp() override {
        ShellTest::SetUp();
        RegisterAllCvars();
    }
};

// log.txt in the working folder as written so far (flushed, left open).
std::string LogText();

// A microsecond clock the test drives (ResetShellState puts the real one
// back); Frame times one frame of `seconds` as the main loop does.
void DrivenClock_Start(uint64_t microseconds = 1000000);
void DrivenClock_Frame(double seconds);
void DrivenClock_Advance(uint64_t microseconds);  // time passes, no frame is timed

#include <SDL.h>

// Events built the way SDL 1.2 delivers them.
SDL_Event KeyEvent(SDLKey sym, Uint16 unicode = 0, Uint8 type = SDL_KEYDOWN);
SDL_Event MouseButtonEvent(Uint8 type, Uint8 button);
SDL_Event MouseMotionEvent(int x, int y);
void MouseAt(int x, int y);  // a motion event straight to Input_MouseMotion
