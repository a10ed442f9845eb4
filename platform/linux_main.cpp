// The desktop shell: chooses the folder the game runs in (platform/gamefolder.h:
// the executable's own folder when it is a writable copy of the game, else the
// player's per-user folder), changes to it so every relative path the game
// opens is found there, and drops the "-psn..." argument that some desktops add.
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "app/main.h"
#include "platform/gamefolder.h"

namespace {
std::string ExecutableFolder(const char* argv0) {
    char path[PATH_MAX];
    ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
    std::string exe = length > 0 ? std::string(path, size_t(length)) : std::string(argv0 ? argv0 : "");
    size_t slash = exe.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : exe.substr(0, slash);
}
}  // namespace

int main(int argc, char** argv) {
    S_GameFolder folder = Platform_PrepareGameFolder(ExecutableFolder(argc > 0 ? argv[0] : nullptr),
                                                     std::getenv("XDG_DATA_HOME"), std::getenv("HOME"));
    if (!folder.path.empty() && chdir(folder.path.c_str()) != 0)
        folder.error = "cannot enter " + folder.path + ": " + std::strerror(errno);
    if (folder.path.empty() || !folder.error.empty()) {
        std::fprintf(stderr, "velthra: %s\n", folder.error.c_str());
        return 1;
    }
    std::vector<char*> args;
    for (int i = 0; i < argc; i++)
        if (i == 0 || std::strncmp(argv[i], "-psn", 4) != 0)
            args.push_back(argv[i]);
    args.push_back(nullptr);
    return SDL_main(int(args.size()) - 1, args.data());
}
