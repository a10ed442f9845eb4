// The texture cache: every picture of the game is an uncompressed Targa file
// under data/textures/, read once per run, uploaded as a GL_TEXTURE_2D and
// remembered under its full relative path. Callers hold only OpenGL texture
// names; 0 means "none" and a missing picture becomes the 2 x 2 four-colour
// fallback g_DefaultTex once DefaultTexture has made it.
//
// The class-wide tables keep their historical shape: record 0 of
// CTexture::texture is the working record of every load, the cache list holds
// "path name" strings, and one CTexture destruction clears the whole cache
// (see CleanupTextures).
#pragma once

#include <SDL.h>

#include <string>
#include <vector>

constexpr int MAX_TEXTURES = 1024;

struct S_TextureRecord {
    std::vector<unsigned char> imageData;  // the last successful load's pixels stay here
    int bpp = 0;                           // 24 or 32
    int width = 0;
    int height = 0;
    unsigned int texID = 0;
    std::string fileName;
};

class CTexture {
public:
    explicit CTexture(const std::string& path);  // the path is not used
    // Both constructors only count the object in Number.
    CTexture(const char* path);
    // Deletes the names of the first Number records (only record 0 is ever
    // filled: the last texture loaded) and empties the cache list: one
    // destruction forgets the whole cache. Number goes back to 0.
    ~CTexture();
    CTexture(const CTexture&) = delete;
    CTexture& operator=(const CTexture&) = delete;

    // Reads, uploads and caches one file; the texture name or 0.
    static unsigned int LoadTGA(const std::string& path);
    // The texture name cached under exactly this path, or 0.
    static unsigned int CheckPreLoaded(const std::string& path);
    static int Count();  // Number: objects made since the cache was last emptied

    static S_TextureRecord texture[MAX_TEXTURES];
    static std::vector<std::string> TextureManger;  // "path name" per load
    static int Number;                              // live objects, see the destructor

private:
    // The object's one word of its own, cleared and never read: all a
    // texture's state is class-wide.
    [[maybe_unused]] unsigned int word = 0;
};

extern CTexture* Texture[MAX_TEXTURES];
extern unsigned int g_DefaultTex;

// "data/textures/<name>", loaded on first use; binds it. flags is unused.
unsigned int GetTexture(const std::string& name, unsigned long flags);
// An already loaded picture or the fallback; never loads, never binds.
unsigned int FindTexture(const std::string& name);
// GetTexture for its loading alone. Its warning shows only before
// DefaultTexture: after it a failed picture gives the fallback, not 0.
void PreCacheImage(const std::string& name, unsigned long flags);
// Deletes a loaded picture's texture and drops it from the cache, so that a
// later GetTexture reads the file again: for a picture shown only for a while
// (the splash screen), which would otherwise keep its texels in the driver
// for the whole run. Nothing for a picture not loaded.
void ReleaseTexture(const std::string& name);
// Makes g_DefaultTex (2 x 2 texels, red, green, blue, yellow, nearest filters);
// a new name on every call. Leaves the depth test on and texturing off.
void DefaultTexture();
// Deletes the first CTexture object in the table, whose destructor empties
// the cache; the other objects stay. Nothing when Count is 0.
void CleanupTextures();

// Auxiliary BMP path, kept for tools; the game does not call it.
SDL_Surface* load_image(const std::string& path);
// Flips the surface in place, pads it to powers of two and uploads it;
// texcoords receives 0, 0, the used width and height fractions.
unsigned int SDL_GL_LoadTexture(SDL_Surface* surface, float* texcoords);

// Test/start-up reset: empties the cache list, the tables and the fallback
// name without touching OpenGL (the caller owns any texture still alive).
void Texture_Reset();
