#include "common/savefile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <set>

#include "common/log.h"
#include "common/utils.h"

namespace {
// The files whose last save failed and was told.
std::set<std::string> g_failing;
}  // namespace

bool SaveFile_Write(const std::string& path, const std::string& text, const char* what) {
    if (WriteFileAtomic(path, text)) {
        g_failing.erase(path);
        return true;
    }
    const std::string reason = std::strerror(errno);
    // Once: a full disk would otherwise add a line for every score and every
    // setting changed, each one the same news.
    if (g_failing.insert(path).second) {
        std::fprintf(stderr, "velthra: WARNING: %s not saved to %s: %s\n", what, path.c_str(), reason.c_str());
        Log("WARNING: %s not saved to %s: %s\n", what, path.c_str(), reason.c_str());
    }
    return false;
}

void SaveFile_Reset() { g_failing.clear(); }
