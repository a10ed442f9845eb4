// Reading single members of the packaged archive ("assets.zip") and testing
// for plain files on disk. The archive is opened anew for every read.
#pragma once

#include <string>

// No packaged member comes near this (levels and settings, a few KB each);
// a damaged or hostile archive can hold a member that inflates to gigabytes
// from a few MB, so a longer one is refused.
constexpr unsigned long MAX_ZIP_MEMBER_BYTES = 8ul << 20;

// The whole member, byte for byte, or "" on any failure (which is logged).
std::string readZipFile(const std::string& zipName, const std::string& memberName);
// True when stat succeeds: a file or a folder (a link counts by its target).
bool FileExists(const std::string& path);
bool Zip_Load();  // probes "data/assets.zip"; kept, unused by the game
