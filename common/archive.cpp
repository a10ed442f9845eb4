#include "common/archive.h"

#include <sys/stat.h>
#include <unzip.h>

#include <memory>

#include "common/log.h"

namespace {
constexpr size_t READ_BUFFER = 1 << 16;  // our members are a few KB: one read, normally
}  // namespace

std::string readZipFile(const std::string& zipName, const std::string& memberName) {
    std::string result;
    unzFile zip = unzOpen(zipName.c_str());
    if (!zip) {
        Log("Cannot open %s\n", zipName.c_str());
        return result;
    }
    if (unzLocateFile(zip, memberName.c_str(), 1) != UNZ_OK) {
        Log("File %s not found in %s\n", memberName.c_str(), zipName.c_str());
        unzClose(zip);
        return result;
    }
    char name[256];
    unz_file_info info;
    int code = unzGetCurrentFileInfo(zip, &info, name, sizeof name, nullptr, 0, nullptr, 0);
    if (code != UNZ_OK) {
        Log("Error %i with zipfile %s in unzGetCurrentFileInfo.\n", code, zipName.c_str());
        unzClose(zip);
        return result;
    }
    if (info.uncompressed_size > MAX_ZIP_MEMBER_BYTES) {
        Log("File %s in %s is too large (%lu bytes)\n", memberName.c_str(), zipName.c_str(),
            static_cast<unsigned long>(info.uncompressed_size));
        unzClose(zip);
        return result;
    }
    std::unique_ptr<char[]> buffer(new (std::nothrow) char[READ_BUFFER]);
    if (!buffer) {
        Log("Error allocating memory for read buffer\n");
        unzClose(zip);
        return result;
    }
    if (unzOpenCurrentFilePassword(zip, nullptr) != UNZ_OK) {
        unzClose(zip);
        return result;
    }
    for (;;) {
        int count = unzReadCurrentFile(zip, buffer.get(), READ_BUFFER);
        if (count < 0) {
            result.clear();
            break;
        }
        if (count == 0)
            break;
        // The size record can lie: the inflated bytes are counted too.
        if (result.size() + size_t(count) > MAX_ZIP_MEMBER_BYTES) {
            Log("File %s in %s is too large (%lu bytes)\n", memberName.c_str(), zipName.c_str(),
                static_cast<unsigned long>(result.size() + size_t(count)));
            result.clear();
            break;
        }
        result.append(buffer.get(), size_t(count));
    }
    // A CRC mismatch is only reported here, after every byte was read.
    if (unzCloseCurrentFile(zip) != UNZ_OK)
        result.clear();
    unzClose(zip);
    return result;
}

bool FileExists(const std::string& path) {
    struct stat info;
    return stat(path.c_str(), &info) == 0;
}

bool Zip_Load() {
    if (FileExists(std::string("data/") + "assets.zip"))
        return true;
    Log("ERROR: %s does not exist!\n", "assets.zip");
    return false;
}
