// The desktop shell: runs the game from the folder that holds the executable
// (so data/, assets.zip, log.txt and the settings are found and written
// there wherever the game is started from) and drops the "-psn..." argument
// that some desktops add.
#include <unistd.h>

#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "app/main.h"

namespace {
void ChangeToExecutableFolder(const char* argv0) {
    char path[PATH_MAX];
    ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
    std::string exe = length > 0 ? std::string(path, size_t(length)) : std::string(argv0 ? argv0 : "");
    size_t slash = exe.rfind('/');
    if (slash != std::string::npos) {
        std::string folder = exe.substr(0, slash);
        if (chdir(folder.empty() ? "/" : folder.c_str()) != 0) {
            // Stay where we are: the game then looks for its data here.
        }
    }
}
} // namespace

int main(int argc, char** argv) {
    ChangeToExecutableFolder(argc > 0 ? argv[0] : nullptr);
    std::vector<char*> args;
    for (int i = 0; i < argc; i++)
        if (i == 0 || std::strncmp(argv[i], "-psn", 4) != 0)
            args.push_back(argv[i]);
    args.push_back(nullptr);
    return SDL_main(int(args.size()) - 1, args.data());
}
