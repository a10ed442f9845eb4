#include "common/utils.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <sstream>

#include "common/log.h"

int StringToInt(const std::string& s) {
    std::istringstream in(s);
    int value = 0;
    in >> value;
    return value;
}

float StringToFloat(const std::string& s) {
    std::istringstream in(s);
    float value = 0.0f;
    in >> value;
    return value;
}

char StringToChar(const std::string& s) {
    std::istringstream in(s);
    char value = '\0';
    in >> value;
    return value;
}

std::string IntToString(int n) {
    std::ostringstream out;
    out << n;
    return out.str();
}

std::string FloatToString(float f) {
    std::ostringstream out;
    out << f;
    return out.str();
}

bool WriteFileAtomic(const std::string& path, const std::string& text) {
    size_t slash = path.rfind('/');
    if (slash != std::string::npos && slash > 0)
        mkdir(path.substr(0, slash).c_str(), 0755);  // already there: nothing to do
    std::string temp = path + ".tmp";
    FILE* out = std::fopen(temp.c_str(), "wb");
    if (!out)
        return false;
    // The first failure is the reason given: once a write has failed, the
    // flush and the close fail too, with less to say.
    int reason = 0;
    const auto failed = [&reason](bool failure) {
        if (failure && reason == 0)
            reason = errno != 0 ? errno : EIO;
    };
    errno = 0;
    failed(std::fwrite(text.data(), 1, text.size(), out) != text.size());
    // On the disk before the rename, or a power cut could leave an empty file in its place.
    failed(std::fflush(out) != 0 || fsync(fileno(out)) != 0);
    failed(std::fclose(out) != 0);
    if (reason == 0)
        failed(std::rename(temp.c_str(), path.c_str()) != 0);
    if (reason != 0) {
        std::remove(temp.c_str());
        errno = reason;
        return false;
    }
    // The rename itself is on the disk only once the folder is: until then a
    // power cut could bring the old file back. The new content is in place
    // either way, so a folder that cannot be synced is no failure.
    const std::string folder = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
    const int dir = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (dir >= 0) {
        fsync(dir);
        close(dir);
    }
    return true;
}

long long FileSize(const std::string& path) {
    struct stat info;
    if (stat(path.c_str(), &info) != 0)
        return -1;
    return static_cast<long long>(info.st_size);
}

namespace {
void LogTooLarge(const std::string& path, long long size, long long limit) {
    Log("ERROR: %s is too large (%lld bytes, more than %lld): not loaded\n", path.c_str(), size, limit);
}
}  // namespace

bool FileTooLarge(const std::string& path, long long limit) {
    long long size = FileSize(path);
    if (size <= limit)
        return false;
    LogTooLarge(path, size, limit);
    return true;
}

std::string ReadDataFile(const std::string& path) {
    if (FileTooLarge(path))
        return std::string();
    std::ifstream in(path, std::ios::binary);
    // Read in pieces and checked again: the file may have grown since it was
    // measured, and a pipe or device measures 0.
    std::string text;
    char piece[1 << 16];
    while (in.read(piece, sizeof piece) || in.gcount() > 0) {
        text.append(piece, size_t(in.gcount()));
        if (static_cast<long long>(text.size()) > MAX_DATA_FILE_BYTES) {
            LogTooLarge(path, static_cast<long long>(text.size()), MAX_DATA_FILE_BYTES);
            return std::string();
        }
    }
    return text;
}

std::string XmlSafeText(const std::string& text) { return text.substr(0, text.find('\0')) + std::string(4, '\0'); }

std::string GetDate() {
    std::time_t now = std::time(nullptr);
    std::tm local;
    localtime_r(&now, &local);
    char text[64];
    // asctime's layout, written out because asctime itself is not reentrant.
    std::strftime(text, sizeof text, "%a %b %e %H:%M:%S %Y\n", &local);
    return text;
}

std::string GetOS() {
#if defined(__APPLE__)
    return "MACINTOSH";
#else
    return "Operating System Unkown";
#endif
}

std::string GetArch() {
#if defined(__i386__) || defined(__x86_64__) || defined(_M_IX86) || defined(_M_X64)
    return "Intel x86";
#else
    return "Architecture Unkown";
#endif
}

bool BigEndianSystem = false;
int16_t (*BigShort)(int16_t) = ShortSwap;
int16_t (*LittleShort)(int16_t) = ShortNoSwap;
int32_t (*BigLong)(int32_t) = LongSwap;
int32_t (*LittleLong)(int32_t) = LongNoSwap;
float (*BigFloat)(float) = FloatSwap;
float (*LittleFloat)(float) = FloatNoSwap;

void InitEndian() {
    const unsigned char bytes[2] = {1, 0};
    int16_t probe;
    std::memcpy(&probe, bytes, sizeof probe);
    BigEndianSystem = probe != 1;
    if (BigEndianSystem) {
        BigShort = ShortNoSwap;
        LittleShort = ShortSwap;
        BigLong = LongNoSwap;
        LittleLong = LongSwap;
    } else {
        BigShort = ShortSwap;
        LittleShort = ShortNoSwap;
        BigLong = LongSwap;
        LittleLong = LongNoSwap;
    }
    // The float pair ignores the machine's order; right on little-endian only.
    BigFloat = FloatSwap;
    LittleFloat = FloatNoSwap;
}

int16_t ShortSwap(int16_t v) {
    uint16_t u = uint16_t(v);
    return int16_t(uint16_t((u >> 8) | (u << 8)));
}
int16_t ShortNoSwap(int16_t v) { return v; }

int32_t LongSwap(int32_t v) {
    uint32_t u = uint32_t(v);
    u = (u >> 24) | ((u >> 8) & 0x0000FF00u) | ((u << 8) & 0x00FF0000u) | (u << 24);
    return int32_t(u);
}
int32_t LongNoSwap(int32_t v) { return v; }

float FloatSwap(float v) {
    int32_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    bits = LongSwap(bits);
    float out;
    std::memcpy(&out, &bits, sizeof out);
    return out;
}
float FloatNoSwap(float v) { return v; }

std::string NameWord(const std::string& text, const char* blanks) {
    size_t start = text.find_first_not_of(blanks);
    if (start == std::string::npos)
        return "";
    size_t end = text.find_first_of(blanks, start);
    std::string word = text.substr(start, end == std::string::npos ? std::string::npos : end - start);
    size_t first = word.find_first_not_of("/?");
    if (first == std::string::npos)
        return "";
    size_t last = word.find_first_of("/?", first);
    return word.substr(first, last == std::string::npos ? std::string::npos : last - first);
}
