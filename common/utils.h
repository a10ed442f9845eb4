// Small helpers shared by every module: text/number conversions (every cvar
// value passes through them), system description texts and byte order.
#pragma once

#include <cstdint>
#include <string>

// Stream-extraction semantics: leading blanks skipped, stop at the first
// character that cannot continue the number; text that does not start with a
// number gives 0 (0.0f, '\0').
int StringToInt(const std::string& s);
float StringToFloat(const std::string& s);
char StringToChar(const std::string& s);
std::string IntToString(int n);
std::string FloatToString(float f);  // default stream notation, 6 significant digits

// Replaces the file at `path` with `text` in one step: written beside it as
// path + ".tmp" and renamed over it, so a crash or a full disk half-way never
// leaves a truncated file. Makes the file's own folder if it is missing (one
// level). On any failure returns false with errno telling why, leaves the old
// file as it was and removes the temporary file.
bool WriteFileAtomic(const std::string& path, const std::string& text);

// Every text file a player or a mod can replace (settings, scores, levels,
// menus, particle files, models) is read whole into memory; a damaged or
// hostile one could otherwise be gigabytes. The largest real one is a few
// tens of KB.
constexpr long long MAX_DATA_FILE_BYTES = 1 << 20;
// The file's length in bytes, or -1 when it cannot be examined.
long long FileSize(const std::string& path);
// True, and logged, when the file is longer than `limit`: the caller then
// refuses it as it would a damaged one.
bool FileTooLarge(const std::string& path, long long limit = MAX_DATA_FILE_BYTES);
// The whole file, "" when it cannot be opened or is too large (logged).
std::string ReadDataFile(const std::string& path);

// TinyXML, in a UTF-8 document, steps over a multi-byte character's bytes
// without looking for the end, so a text cut inside one is read on past its
// last byte. This is the text up to its first zero byte (where TinyXML stops
// anyway) with zeros after it to land on: parse its c_str().
std::string XmlSafeText(const std::string& text);

// The first word of `text` (words end at any of `blanks`) with leading '/'
// and '?' skipped and cut at the next one: "?quit", "/quit" and "quit?" all
// give "quit"; a word made only of those characters gives "". The console
// names cvars and commands this way.
std::string NameWord(const std::string& text, const char* blanks);

std::string GetDate();  // asctime form, newline included
std::string GetOS();    // decided at build time
std::string GetArch();  // decided at build time

// Byte order, chosen once by InitEndian.
extern bool BigEndianSystem;
extern int16_t (*BigShort)(int16_t);
extern int16_t (*LittleShort)(int16_t);
extern int32_t (*BigLong)(int32_t);
extern int32_t (*LittleLong)(int32_t);
extern float (*BigFloat)(float);
extern float (*LittleFloat)(float);

// Points the Big and Little pointers at the swapping or the plain forms for
// this machine. BigFloat always swaps and LittleFloat never does, whatever
// the machine: correct on little-endian machines only.
void InitEndian();
// The Swap forms reverse the byte order; the NoSwap forms return v as it is.
int16_t ShortSwap(int16_t v);
int16_t ShortNoSwap(int16_t v);
int32_t LongSwap(int32_t v);
int32_t LongNoSwap(int32_t v);
float FloatSwap(float v);
float FloatNoSwap(float v);
