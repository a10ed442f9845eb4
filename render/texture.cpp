#include "render/texture.h"

#include <GL/gl.h>

#include "common/archive.h"
#include "common/log.h"
#include "common/utils.h"
#include "render/glstate.h"
#include "render/tga.h"

S_TextureRecord CTexture::texture[MAX_TEXTURES];
std::vector<std::string> CTexture::TextureManger;
int CTexture::Number = 0;

CTexture* Texture[MAX_TEXTURES] = {};
unsigned int g_DefaultTex = 0;

namespace {
std::string TexturePath(const std::string& name) { return std::string("data/") + "textures/" + name; }
}  // namespace

CTexture::CTexture(const std::string&) { Number++; }
CTexture::CTexture(const char*) { Number++; }

CTexture::~CTexture() {
    // Only record 0 is ever filled, so this releases the last loaded name;
    // the rest of the walk deletes 0, which OpenGL ignores.
    for (int i = 0; i < Number && i < MAX_TEXTURES; i++)
        glDeleteTextures(1, &texture[i].texID);
    Number = 0;
    TextureManger.clear();
}

int CTexture::Count() { return Number; }

unsigned int CTexture::CheckPreLoaded(const std::string& path) {
    for (const std::string& entry : TextureManger) {
        size_t blank = entry.find(' ');
        std::string key = entry.substr(0, blank);
        if (key == path)
            return blank == std::string::npos ? 0u : unsigned(StringToInt(entry.substr(blank + 1)));
    }
    return 0;
}

unsigned int CTexture::LoadTGA(const std::string& path) {
    S_TextureRecord& record = texture[0];
    S_TgaImage image;
    bool ok = TGA_Read(path, image);
    if (image.width || image.height || image.bpp) {
        record.width = image.width;
        record.height = image.height;
        record.bpp = image.bpp;
    }
    if (!ok)
        return 0;
    record.imageData = std::move(image.pixels);

    glGenTextures(1, &record.texID);
    glBindTexture(GL_TEXTURE_2D, record.texID);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    // Rows go up in file order and sizes as they are: no flip, no mipmaps.
    // Rows of 24-bit images are packed, not padded to 4 bytes.
    GLint alignment = 4;
    glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    GLenum format = record.bpp == 24 ? GL_RGB : GL_RGBA;
    // Kept with four channels even for a 24-bit file: a software rasteriser
    // reads them faster, and since the file gives no alpha it is 1 either
    // way, so every picture drawn with it is the same.
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, record.width, record.height, 0, format, GL_UNSIGNED_BYTE,
                 record.imageData.data());
    glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);

    record.fileName = path;
    TextureManger.push_back(path + " " + IntToString(int(record.texID)));
    return record.texID;
}

unsigned int GetTexture(const std::string& name, unsigned long /*flags*/) {
    const std::string path = TexturePath(name);
    unsigned int id = CTexture::CheckPreLoaded(path);
    if (id == 0) {
        if (FileExists(path)) {
            // A file that exists but fails to load still leaves its object,
            // so a full table is possible. Past it the picture is refused:
            // an object made and deleted there would, in its destructor,
            // empty the whole cache and delete a live texture.
            int slot = CTexture::Number;
            if (slot >= MAX_TEXTURES) {
                Log("WARNING! texture table full (%i), could not load texture %s\n", MAX_TEXTURES, path.c_str());
                return g_DefaultTex;
            }
            Texture[slot] = new CTexture(path);
            id = CTexture::LoadTGA(path);
        }
        if (id == 0) {
            Log("WARNING! could not load texture %s\n", path.c_str());
            return g_DefaultTex;
        }
    }
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, id);
    return id;
}

unsigned int FindTexture(const std::string& name) {
    unsigned int id = CTexture::CheckPreLoaded(TexturePath(name));
    if (id == 0) {
        VerboseLog("  ---- WARNING! could not find texture * %s * in list!\n", name.c_str());
        return g_DefaultTex;
    }
    return id;
}

void ReleaseTexture(const std::string& name) {
    const std::string key = TexturePath(name) + " ";
    for (auto entry = CTexture::TextureManger.begin(); entry != CTexture::TextureManger.end(); ++entry) {
        if (entry->compare(0, key.size(), key) == 0) {
            GLuint id = GLuint(StringToInt(entry->substr(key.size())));
            glDeleteTextures(1, &id);
            CTexture::TextureManger.erase(entry);
            return;
        }
    }
}

void PreCacheImage(const std::string& name, unsigned long flags) {
    // GetTexture answers with the fallback once it exists, so this warning
    // only shows for pictures pre-cached before DefaultTexture: intended.
    if (GetTexture(name, flags) == 0)
        Log("WARNING: could not pre-cache %s!\n", name.c_str());
}

void DefaultTexture() {
    static const unsigned char checker[2 * 2 * 4] = {
        255, 0, 0,   255, 0,   255, 0, 255,  // first row: red, green
        0,   0, 255, 255, 255, 255, 0, 255,  // second row: blue, yellow
    };
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_TEXTURE_2D);
    glGenTextures(1, &g_DefaultTex);
    glBindTexture(GL_TEXTURE_2D, g_DefaultTex);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 2, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, checker);
    // Hard quarters: an unmistakable mark of a missing picture.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glDisable(GL_TEXTURE_2D);
}

void CleanupTextures() {
    if (CTexture::Count() < 1)
        return;
    // The count is read again each round and the first destruction sets it
    // to 0, so the walk stops after one object; that one clears the cache.
    for (int i = 0; i < CTexture::Number; i++) {
        if (Texture[i]) {
            delete Texture[i];
            // Only the destroyed entry is forgotten; the others keep their
            // objects, as they always have.
            Texture[i] = nullptr;
        }
    }
}

SDL_Surface* load_image(const std::string& path) { return SDL_LoadBMP_RW(SDL_RWFromFile(path.c_str(), "rb"), 1); }

namespace {
int PowerOfTwo(int input) {
    int value = 1;
    while (value < input)
        value <<= 1;
    return value;
}
}  // namespace

unsigned int SDL_GL_LoadTexture(SDL_Surface* surface, float* texcoords) {
    if (!surface)
        return 0;
    SDL_InvertSurface(surface);
    int w = PowerOfTwo(surface->w);
    int h = PowerOfTwo(surface->h);
    texcoords[0] = 0.0f;
    texcoords[1] = 0.0f;
    texcoords[2] = float(surface->w) / float(w);
    texcoords[3] = float(surface->h) / float(h);

    // The byte order of these masks makes the pixels R, G, B, A in memory.
    SDL_Surface* image = SDL_CreateRGBSurface(SDL_SWSURFACE, w, h, 32, 0x000000FF, 0x0000FF00, 0x00FF0000, 0xFF000000);
    if (!image)
        return 0;

    Uint32 savedFlags = surface->flags & (SDL_SRCALPHA | SDL_RLEACCELOK);
    Uint8 savedAlpha = surface->format->alpha;
    if (savedFlags & SDL_SRCALPHA)
        SDL_SetAlpha(surface, 0, 0);
    SDL_Rect area = {0, 0, Uint16(surface->w), Uint16(surface->h)};
    SDL_BlitSurface(surface, &area, image, &area);
    if (savedFlags & SDL_SRCALPHA)
        SDL_SetAlpha(surface, savedFlags, savedAlpha);

    unsigned int id = 0;
    glGenTextures(1, &id);
    glBindTexture(GL_TEXTURE_2D, id);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, w, h, 0, GL_RGBA, GL_UNSIGNED_BYTE, image->pixels);
    SDL_FreeSurface(image);
    return id;
}

void Texture_Reset() {
    // Number goes first so that the destructors below touch no OpenGL name.
    CTexture::Number = 0;
    for (CTexture*& object : Texture) {
        delete object;
        object = nullptr;
    }
    CTexture::Number = 0;
    CTexture::TextureManger.clear();
    for (S_TextureRecord& record : CTexture::texture)
        record = S_TextureRecord();
    g_DefaultTex = 0;
}
