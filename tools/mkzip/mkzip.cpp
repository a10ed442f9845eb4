// mkzip ARCHIVE ROOT MEMBER...
// Writes ARCHIVE holding each MEMBER (a path relative to ROOT, stored under
// that same name). Every entry gets the same fixed date, so building twice
// gives the same bytes.
#include <zip.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: mkzip ARCHIVE ROOT MEMBER...\n");
        return 2;
    }
    const std::string archive = argv[1];
    const std::string root = argv[2];
    const std::string temp = archive + ".part";
    zipFile zip = zipOpen(temp.c_str(), APPEND_STATUS_CREATE);
    if (!zip) {
        std::fprintf(stderr, "mkzip: cannot create %s\n", temp.c_str());
        return 1;
    }
    for (int i = 3; i < argc; i++) {
        const std::string member = argv[i];
        std::ifstream in(root + "/" + member, std::ios::binary);
        if (!in) {
            std::fprintf(stderr, "mkzip: cannot read %s/%s\n", root.c_str(), member.c_str());
            zipClose(zip, nullptr);
            std::remove(temp.c_str());
            return 1;
        }
        std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        zip_fileinfo info{};
        info.tmz_date.tm_year = 2026;
        info.tmz_date.tm_mon = 0;
        info.tmz_date.tm_mday = 1;
        if (zipOpenNewFileInZip(zip, member.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                                Z_BEST_COMPRESSION) != ZIP_OK ||
            zipWriteInFileInZip(zip, bytes.data(), unsigned(bytes.size())) != ZIP_OK ||
            zipCloseFileInZip(zip) != ZIP_OK) {
            std::fprintf(stderr, "mkzip: cannot add %s\n", member.c_str());
            zipClose(zip, nullptr);
            std::remove(temp.c_str());
            return 1;
        }
    }
    if (zipClose(zip, nullptr) != ZIP_OK || std::rename(temp.c_str(), archive.c_str()) != 0) {
        std::remove(temp.c_str());
        return 1;
    }
    return 0;
}
