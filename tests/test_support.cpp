#include "test_support.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/reset.h"
#include "common/cvar.h"
#include "common/log.h"
#include "common/timer.h"
#include "input/input.h"

namespace fs = std::filesystem;

ScratchDir::ScratchDir() {
    char cwd[PATH_MAX];
    previous_ = getcwd(cwd, sizeof cwd) ? cwd : "/";
    char pattern[] = "/tmp/velthra-test-XXXXXX";
    const char* made = mkdtemp(pattern);
    if (!made)
        ADD_FAILURE() << "cannot create a scratch folder";
    path_ = made ? made : "/tmp";
    if (chdir(path_.c_str()) != 0)
        ADD_FAILURE() << "cannot enter " << path_;
}

ScratchDir::~ScratchDir() {
    if (chdir(previous_.c_str()) != 0)
        ADD_FAILURE() << "cannot return to " << previous_;
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void WriteFile(const std::string& path, const std::string& bytes) {
    fs::path p(path);
    if (p.has_parent_path())
        fs::create_directories(p.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string GameData(const std::string& rel) { return std::string(VELTHRA_GAME_DIR) + "/data/" + rel; }

std::vector<std::string> ListFiles(const std::string& root) {
    std::vector<std::string> out;
    for (const auto& e : fs::recursive_directory_iterator(root))
        if (e.is_regular_file())
            out.push_back(fs::relative(e.path(), root).string());
    std::sort(out.begin(), out.end());
    return out;
}

bool MakeZip(const std::string& path, const std::vector<ZipMember>& members) {
    zipFile zip = zipOpen(path.c_str(), APPEND_STATUS_CREATE);
    if (!zip)
        return false;
    bool ok = true;
    for (const ZipMember& member : members) {
        zip_fileinfo info{};
        ok = ok &&
             zipOpenNewFileInZip(zip, member.name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr,
                                 member.stored ? 0 : Z_DEFLATED, member.stored ? 0 : Z_DEFAULT_COMPRESSION) == ZIP_OK;
        ok = ok && zipWriteInFileInZip(zip, member.bytes.data(), unsigned(member.bytes.size())) == ZIP_OK;
        ok = ok && zipCloseFileInZip(zip) == ZIP_OK;
    }
    return zipClose(zip, nullptr) == ZIP_OK && ok;
}

std::vector<std::string> ConsoleLinesOldestFirst() {
    return std::vector<std::string>(AppStatus.consoleLines.rbegin(), AppStatus.consoleLines.rend());
}

void ResetShellState() { App_ResetAll(); }

std::string LogText() {
    if (ErrorLog)
        std::fflush(ErrorLog);
    return ReadFile("log.txt");
}

void RegisterAllCvars() {
    for (const S_Cvar* cvar : Cvar_Table())
        Cvar_Register(*cvar);
}

namespace {
uint64_t g_DrivenMicroseconds = 0;
void DrivenClock(UnsignedWide* out) {
    out->lo = uint32_t(g_DrivenMicroseconds);
    out->hi = uint32_t(g_DrivenMicroseconds >> 32);
}
}  // namespace

void DrivenClock_Start(uint64_t microseconds) {
    g_DrivenMicroseconds = microseconds;
    SetMicrosecondsSource(DrivenClock);
}

void DrivenClock_Advance(uint64_t microseconds) { g_DrivenMicroseconds += microseconds; }

void DrivenClock_Frame(double seconds) {
    Timer.start();
    g_DrivenMicroseconds += uint64_t(seconds * 1e6);
    Timer.update();
}

// ---- Input events shared by the console, menu and widget tests.

SDL_Event KeyEvent(SDLKey sym, Uint16 unicode, Uint8 type) {
    SDL_Event e{};
    e.type = e.key.type = type;
    e.key.keysym.sym = sym;
    e.key.keysym.unicode = unicode;
    return e;
}

SDL_Event MouseButtonEvent(Uint8 type, Uint8 button) {
    SDL_Event e{};
    e.type = e.button.type = type;
    e.button.button = button;
    return e;
}

SDL_Event MouseMotionEvent(int x, int y) {
    SDL_Event e{};
    e.type = e.motion.type = SDL_MOUSEMOTION;
    e.motion.x = Uint16(x);
    e.motion.y = Uint16(y);
    return e;
}

void MouseAt(int x, int y) { Input_MouseMotion(MouseMotionEvent(x, y)); }
