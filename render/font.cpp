#include "render/font.h"

#include <GL/gl.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

#include "common/appstatus.h"
#include "render/glext.h"
#include "render/texture.h"

unsigned int fontNum = 0;
int loop = 0;

namespace {
// Each cell's corners in the picture, as BuildFont computes them: left,
// top, right, bottom texture coordinates (top is the higher t).
struct S_GlyphCell {
    float left, top, right, bottom;
};
S_GlyphCell g_Cells[256];
bool g_Built = false;  // BuildFont has filled g_Cells and KillFont not emptied it

// The vertices of one call of glPrint: four corners per glyph.
std::vector<float> g_Positions, g_TexCoords;
}  // namespace

bool FontLoad(const std::string& fileName) {
    fontNum = GetTexture(fileName, 1);
    VerboseLog(" -- attempting to load %s ... ", fileName.c_str());
    if (fontNum != 0) {
        BuildFont();
        VerboseLog("success!\n");
    } else {
        VerboseLog("ERROR: could not load font: %s", fileName.c_str());
    }
    return fontNum != 0;
}

void BuildFont() {
    glBindTexture(GL_TEXTURE_2D, fontNum);
    const float cell = 1.0f / 16.0f;
    for (loop = 0; loop < 256; loop++) {
        const float cx = float(loop % 16) / 16.0f;
        const float cy = 1.0f - float(loop / 16) / 16.0f;
        g_Cells[loop] = {cx, cy, cx + cell, cy - cell};
    }
    g_Built = true;
}

void KillFont() { g_Built = false; }

void glPrint(long x, long y, int set, int mode, const char* format, ...) {
    if (set > 1)
        set = 1;
    // Only text below the screen is skipped; text above the top is drawn.
    if (y > Resolution.height)
        return;

    char text[1024];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);

    // One quad per glyph, 16 units square, the pen 10 units further each
    // time; a byte whose cell is outside the picture draws nothing and does
    // not move the pen. All of them go to the driver in one draw: a draw
    // per glyph, with the pen moved by the matrix in between, costs a
    // software rasteriser far more than the quads themselves.
    g_Positions.clear();
    g_TexCoords.clear();
    float pen = 0.0f;
    const S_GlyphCell* last = nullptr;
    for (const char* c = text; g_Built && *c; c++) {
        const int cell = int(static_cast<unsigned char>(*c)) - 32 + 128 * set;
        if (cell < 0 || cell > 255)
            continue;
        const S_GlyphCell& g = g_Cells[cell];
        g_Positions.insert(g_Positions.end(), {pen, 0.0f, pen + 16.0f, 0.0f, pen + 16.0f, 16.0f, pen, 16.0f});
        g_TexCoords.insert(g_TexCoords.end(), {g.left, g.top, g.right, g.top, g.right, g.bottom, g.left, g.bottom});
        pen += 10.0f;
        last = &g;
    }

    glPushMatrix();
    glDepthFunc(GL_LEQUAL);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    glEnable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, fontNum);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    if (mode != 2)
        glColor3f(1.0f, 1.0f, 1.0f);
    if (mode == 3)
        glColor3f(1.0f, 0.0f, 0.0f);
    glTranslated(double(x), double(y), 0.0);
    if (last) {
        // Client arrays: no buffer object may be bound to the array target.
        if (GLext_HaveBufferObjects())
            glProc.BindBufferARB(GL_ARRAY_BUFFER_ARB, 0);
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glVertexPointer(2, GL_FLOAT, 0, g_Positions.data());
        glTexCoordPointer(2, GL_FLOAT, 0, g_TexCoords.data());
        glDrawArrays(GL_QUADS, 0, GLsizei(g_Positions.size() / 2));
        glDisableClientState(GL_VERTEX_ARRAY);
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
        // Where immediate-mode glyphs leave it: at the last glyph's last corner.
        glTexCoord2f(last->left, last->bottom);
    }
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glPopMatrix();
}

void Font_Reset() {
    fontNum = 0;
    loop = 0;
    g_Built = false;
}
