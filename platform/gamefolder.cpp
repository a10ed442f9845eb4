#include "platform/gamefolder.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <vector>

#ifndef VELTHRA_DATA_FROM_EXE
#define VELTHRA_DATA_FROM_EXE "../share/games/velthra"
#endif
const char* const GAME_DATA_FROM_EXE = VELTHRA_DATA_FROM_EXE;

namespace {
bool IsFolder(const std::string& path) {
    struct stat st;
    return stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool IsFile(const std::string& path) {
    struct stat st;
    return stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

bool HoldsGameData(const std::string& folder) { return IsFolder(folder + "/data") && IsFile(folder + "/assets.zip"); }

// The settings and scores go in data/, the log and the dump beside it.
bool Writable(const std::string& folder) {
    return access(folder.c_str(), W_OK | X_OK) == 0 && access((folder + "/data").c_str(), W_OK | X_OK) == 0;
}

std::string Reason(const std::string& what, const std::string& path) {
    return what + " " + path + ": " + std::strerror(errno);
}

// mkdir -p. On failure leaves the reason in `why`.
bool MakeFolders(const std::string& path, std::string& why) {
    for (size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
        std::string part = path.substr(0, slash);
        if (mkdir(part.c_str(), 0755) != 0 && errno != EEXIST) {
            why = Reason("cannot create", part);
            return false;
        }
        if (slash == std::string::npos)
            break;
    }
    if (!IsFolder(path)) {
        why = "cannot create " + path + ": a file of that name is in the way";
        return false;
    }
    return true;
}

// Makes `link` a symbolic link to `target`, unless the player has put a real
// file or folder there. On failure leaves the reason in `why`.
bool Link(const std::string& target, const std::string& link, std::string& why) {
    struct stat st;
    if (lstat(link.c_str(), &st) == 0) {
        if (!S_ISLNK(st.st_mode))
            return true;  // the player's own copy
        char buffer[PATH_MAX];
        ssize_t length = readlink(link.c_str(), buffer, sizeof buffer - 1);
        if (length > 0 && std::string(buffer, size_t(length)) == target)
            return true;
        if (unlink(link.c_str()) != 0) {
            why = Reason("cannot replace", link);
            return false;
        }
    } else if (errno != ENOENT) {
        why = Reason("cannot examine", link);
        return false;
    }
    if (symlink(target.c_str(), link.c_str()) != 0) {
        why = Reason("cannot link", link);
        return false;
    }
    return true;
}

// The read-only folders of data/ (levels, models, scripts, ...), sorted so
// that a failure is reported the same way each time. Files such as a
// portable folder's own prefs.cfg are not shared.
std::vector<std::string> DataFolders(const std::string& data) {
    std::vector<std::string> names;
    if (DIR* dir = opendir(data.c_str())) {
        while (dirent* entry = readdir(dir)) {
            std::string name = entry->d_name;
            if (name[0] != '.' && IsFolder(data + "/" + name))
                names.push_back(name);
        }
        closedir(dir);
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string Canonical(const std::string& path) {
    char buffer[PATH_MAX];
    return realpath(path.c_str(), buffer) ? std::string(buffer) : path;
}

bool PrepareUserFolder(const std::string& source, const std::string& user, std::string& why) {
    if (!MakeFolders(user + "/data", why))
        return false;
    if (!Link(source + "/assets.zip", user + "/assets.zip", why))
        return false;
    for (const std::string& name : DataFolders(source + "/data"))
        if (!Link(source + "/data/" + name, user + "/data/" + name, why))
            return false;
    if (!Writable(user)) {
        errno = EACCES;
        why = Reason("cannot write in", user + "/data");
        return false;
    }
    return true;
}
}  // namespace

S_GameFolder Platform_PrepareGameFolder(const std::string& exeFolder, const char* xdgDataHome, const char* home) {
    S_GameFolder result;
    const bool beside = HoldsGameData(exeFolder);
    if (beside && Writable(exeFolder)) {
        result.path = exeFolder;
        result.portable = true;
        return result;
    }

    const std::string installed = exeFolder + "/" + GAME_DATA_FROM_EXE;
    const std::string source = Canonical(beside ? exeFolder : installed);
    if (!beside && !HoldsGameData(source)) {
        result.error = "no game data (data/ and assets.zip) in " + exeFolder + " nor in " + installed;
        return result;
    }

    // A relative XDG_DATA_HOME is invalid and ignored, as the base directory rules say.
    std::string base;
    if (xdgDataHome && xdgDataHome[0] == '/')
        base = xdgDataHome;
    else if (home && home[0] == '/')
        base = std::string(home) + "/.local/share";
    const std::string why_beside = beside ? "may not be written" : "holds no data/ and assets.zip";
    if (base.empty()) {
        result.error = exeFolder + " " + why_beside + ", and HOME is not set to find a per-user folder";
        return result;
    }
    const std::string user = base + "/velthra";
    std::string why;
    if (!PrepareUserFolder(source, user, why)) {
        result.error =
            exeFolder + " " + why_beside + ", and the per-user folder " + user + " cannot be prepared: " + why;
        return result;
    }
    result.path = user;
    return result;
}
