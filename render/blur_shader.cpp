#include "render/blur_shader.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <string>

#include "common/appstatus.h"
#include "common/log.h"
#include "render/draw2d.h"
#include "render/glext.h"

namespace {

// Bounded like DrawFBO bounds "r_blurpower"; the count is compiled into the
// summing program, so a count past this is refused rather than compiled.
constexpr int MAX_COPIES = 100;

struct S_BlurShader {
    bool enabled = true;
    bool failed = false;  // refused once: not tried again until destroyed
    GLhandleARB sum = 0;  // copies 1 .. copies - 1 at reduced size
    int sumCopies = 0;    // the count `sum` was compiled for
    GLint sumSpread = -1, sumStep = -1;
    GLhandleARB add = 0;  // copy 0 and the reduced sum, onto the screen
    GLint addScene = -1;
    GLuint target = 0;  // the reduced sum
    GLuint targetFbo = 0;
    int width = 0, height = 0;  // the screen size the target was made for
    int reduction = BLUR_SHADER_REDUCTION;
};
S_BlurShader g_Blur;

bool Usable() {
    GLext_EnsureLoaded();
    return GLext.shaders && GLext_HaveShaderObjects() && GLext.frameBufferObjects && GLext_HaveFramebufferObjects();
}

// Each copy's share is rounded the way an 8-bit framebuffer's blending
// rounds it: the fragment's alpha (copy alpha times texel alpha) to 8 bits,
// then colour times alpha to a whole level. A share below half a level adds
// nothing, and the dark parts of the picture are mostly such shares: summed
// exactly, a play frame came out 2 to 3 levels brighter on average than
// with the copies, 5 with 60 copies.
const char* const SHARE_SOURCE = R"(
vec3 Share(vec4 texel, float alpha) {
    float alpha8 = floor(alpha * texel.a * 255.0 + 0.5);
    return floor(texel.rgb * alpha8 + 0.5);
}
)";

// The fixed pipeline's texture coordinate 0 runs 0..1 across the screen,
// top at 1, exactly as DrawBlur's copy 0 maps the scene. Sums are in levels
// (0..255) until they are written.
const char* const SUM_SOURCE = R"(
uniform sampler2D scene;
uniform float spread;
uniform float alphaStep;
void main() {
    vec2 centred = gl_TexCoord[0].st - 0.5;
    vec3 sum = vec3(0.0);
    float offset = 0.0;
    float alpha = 0.1;
    for (int i = 1; i < COPIES; i++) {
        offset += spread;
        alpha -= alphaStep;
        sum += Share(texture2D(scene, 0.5 + centred * (1.0 + 2.0 * offset)), alpha);
    }
    gl_FragColor = vec4(sum / 255.0, 1.0);
}
)";

// withScene 1: the picture and its copies, written opaque; 0: the copies
// alone, added to the picture already drawn. Alpha is 1 so that an alpha
// test of greater than 0 keeps every fragment, as it keeps every copy that
// adds anything.
const char* const ADD_SOURCE = R"(
uniform sampler2D scene;
uniform sampler2D reduced;
uniform float withScene;
void main() {
    vec4 texel = texture2D(scene, gl_TexCoord[0].st);
    vec3 copies = Share(texel, 0.1) / 255.0 + texture2D(reduced, gl_TexCoord[0].st).rgb;
    gl_FragColor = vec4(texel.rgb * withScene + copies, 1.0);
}
)";

std::string InfoLog(GLhandleARB object) {
    GLint length = 0;
    glProc.GetObjectParameterivARB(object, GL_OBJECT_INFO_LOG_LENGTH_ARB, &length);
    if (length <= 1)
        return "";
    std::string text(size_t(length), '\0');
    GLsizei written = 0;
    glProc.GetInfoLogARB(object, length, &written, &text[0]);
    text.resize(size_t(written > 0 ? written : 0));
    while (!text.empty() && (text.back() == '\n' || text.back() == '\0'))
        text.pop_back();
    return text;
}

// A linked program of one fragment shader, or 0 with the reason logged.
GLhandleARB BuildProgram(const std::string& source, const char* what) {
    GLhandleARB shader = glProc.CreateShaderObjectARB(GL_FRAGMENT_SHADER_ARB);
    if (shader == 0) {
        Log(" -- WARNING: blur shader: no shader object for the %s program\n", what);
        return 0;
    }
    const GLcharARB* text = source.c_str();
    glProc.ShaderSourceARB(shader, 1, &text, nullptr);
    glProc.CompileShaderARB(shader);
    GLint ok = 0;
    glProc.GetObjectParameterivARB(shader, GL_OBJECT_COMPILE_STATUS_ARB, &ok);
    if (!ok) {
        Log(" -- WARNING: blur shader: the %s program does not compile: %s\n", what, InfoLog(shader).c_str());
        glProc.DeleteObjectARB(shader);
        return 0;
    }
    GLhandleARB program = glProc.CreateProgramObjectARB();
    glProc.AttachObjectARB(program, shader);
    glProc.LinkProgramARB(program);
    // The program keeps the shader alive while attached.
    glProc.DeleteObjectARB(shader);
    glProc.GetObjectParameterivARB(program, GL_OBJECT_LINK_STATUS_ARB, &ok);
    if (!ok) {
        Log(" -- WARNING: blur shader: the %s program does not link: %s\n", what, InfoLog(program).c_str());
        glProc.DeleteObjectARB(program);
        return 0;
    }
    return program;
}

void DeleteSum() {
    if (g_Blur.sum != 0)
        glProc.DeleteObjectARB(g_Blur.sum);
    g_Blur.sum = 0;
    g_Blur.sumCopies = 0;
}

bool BuildAdd() {
    g_Blur.add = BuildProgram(std::string(SHARE_SOURCE) + ADD_SOURCE, "adding");
    if (g_Blur.add == 0)
        return false;
    glProc.UseProgramObjectARB(g_Blur.add);
    glProc.Uniform1iARB(glProc.GetUniformLocationARB(g_Blur.add, "scene"), 0);
    glProc.Uniform1iARB(glProc.GetUniformLocationARB(g_Blur.add, "reduced"), 1);
    g_Blur.addScene = glProc.GetUniformLocationARB(g_Blur.add, "withScene");
    glProc.UseProgramObjectARB(0);
    return true;
}

bool BuildSum(int copies) {
    DeleteSum();
    g_Blur.sum = BuildProgram("#define COPIES " + std::to_string(copies) + "\n" + SHARE_SOURCE + SUM_SOURCE, "summing");
    if (g_Blur.sum == 0)
        return false;
    g_Blur.sumCopies = copies;
    glProc.UseProgramObjectARB(g_Blur.sum);
    glProc.Uniform1iARB(glProc.GetUniformLocationARB(g_Blur.sum, "scene"), 0);
    g_Blur.sumSpread = glProc.GetUniformLocationARB(g_Blur.sum, "spread");
    g_Blur.sumStep = glProc.GetUniformLocationARB(g_Blur.sum, "alphaStep");
    glProc.UseProgramObjectARB(0);
    return true;
}

void DeleteTarget() {
    if (g_Blur.targetFbo != 0)
        glProc.DeleteFramebuffersEXT(1, &g_Blur.targetFbo);
    if (g_Blur.target != 0)
        glDeleteTextures(1, &g_Blur.target);
    g_Blur.targetFbo = 0;
    g_Blur.target = 0;
    g_Blur.width = g_Blur.height = 0;
}

int Reduced(int size) { return (size + g_Blur.reduction - 1) / g_Blur.reduction; }

bool BuildTarget() {
    DeleteTarget();
    GLint previous = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &previous);
    glGenTextures(1, &g_Blur.target);
    glBindTexture(GL_TEXTURE_2D, g_Blur.target);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, Reduced(Resolution.width), Reduced(Resolution.height), 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glBindTexture(GL_TEXTURE_2D, GLuint(previous));

    GLint bound = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING_EXT, &bound);
    glProc.GenFramebuffersEXT(1, &g_Blur.targetFbo);
    glProc.BindFramebufferEXT(GL_FRAMEBUFFER_EXT, g_Blur.targetFbo);
    glProc.FramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_TEXTURE_2D, g_Blur.target, 0);
    const GLenum status = glProc.CheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT);
    glProc.BindFramebufferEXT(GL_FRAMEBUFFER_EXT, GLuint(bound));
    if (status != GL_FRAMEBUFFER_COMPLETE_EXT || g_Blur.target == 0 || g_Blur.targetFbo == 0) {
        Log(" -- WARNING: blur shader: the reduced target is incomplete (status 0x%04X)\n", unsigned(status));
        DeleteTarget();
        return false;
    }
    g_Blur.width = Resolution.width;
    g_Blur.height = Resolution.height;
    return true;
}

// Gives up on the fast path until BlurShader_Destroy: the copies from now on.
bool Refuse() {
    Log(" -- WARNING: blur shader unavailable, drawing the blur with copies\n");
    BlurShader_Destroy();
    g_Blur.failed = true;
    return false;
}

// Everything the next draw needs for `copies`, built or rebuilt as the
// screen size and the copy count change.
bool Prepare(int copies) {
    if (g_Blur.add == 0) {
        VerboseLog(" -- attempting to build the blur shaders ... ");
        if (!BuildAdd()) {
            VerboseLog("FAILURE!\n");
            return Refuse();
        }
        VerboseLog("success!\n");
    }
    if (g_Blur.width != Resolution.width || g_Blur.height != Resolution.height || g_Blur.target == 0) {
        if (!BuildTarget())
            return Refuse();
    }
    if (copies > 1 && g_Blur.sumCopies != copies && !BuildSum(copies))
        return Refuse();
    return true;
}

// DrawBlur's quad: the same corners in the same order, so culling and the
// texture coordinates' direction match the copies.
void ScreenQuad(float width, float height) {
    glBegin(GL_QUADS);
    glTexCoord2f(0.0f, 1.0f);
    glVertex2f(0.0f, 0.0f);
    glTexCoord2f(0.0f, 0.0f);
    glVertex2f(0.0f, height);
    glTexCoord2f(1.0f, 0.0f);
    glVertex2f(width, height);
    glTexCoord2f(1.0f, 1.0f);
    glVertex2f(width, 0.0f);
    glEnd();
}

// The copies are blended fragments: an alpha test would drop some of them.
// The game's own test (greater than 0) drops only shares of 0.
bool AlphaTestKeepsCopies() {
    GLint function = 0;
    GLfloat reference = 0.0f;
    glGetIntegerv(GL_ALPHA_TEST_FUNC, &function);
    glGetFloatv(GL_ALPHA_TEST_REF, &reference);
    return function == GL_GREATER && reference == 0.0f;
}

// The state DrawBlur sets up, which it also leaves behind.
void BeginCopies(unsigned int scene) {
    glDisable(GL_TEXTURE_GEN_S);
    glDisable(GL_TEXTURE_GEN_T);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    glBindTexture(GL_TEXTURE_2D, scene);
}

// DrawBlur's running alpha: the last copy's, the colour it leaves current.
float LastCopyAlpha(int times, float alphaStep) {
    float alpha = 0.1f;
    float lastAlpha = -1.0f;
    for (int i = 0; i < times; i++) {
        lastAlpha = alpha;
        alpha -= alphaStep;
    }
    return lastAlpha;
}

// The zooming copies, 1 to times - 1, summed at reduced size into the target.
void SumCopies(int times, float spread, float alphaStep) {
    GLint bound = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING_EXT, &bound);
    glProc.BindFramebufferEXT(GL_FRAMEBUFFER_EXT, g_Blur.targetFbo);
    if (times > 1) {
        glPushAttrib(GL_VIEWPORT_BIT);
        glViewport(0, 0, Reduced(Resolution.width), Reduced(Resolution.height));
        glDisable(GL_BLEND);
        glProc.UseProgramObjectARB(g_Blur.sum);
        glProc.Uniform1fARB(g_Blur.sumSpread, spread);
        glProc.Uniform1fARB(g_Blur.sumStep, alphaStep);
        ScreenQuad(float(Resolution.width), float(Resolution.height));
        glPopAttrib();
    } else {
        // One copy: nothing zooms, the reduced sum adds nothing.
        GLfloat clear[4];
        glGetFloatv(GL_COLOR_CLEAR_VALUE, clear);
        glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        glClearColor(clear[0], clear[1], clear[2], clear[3]);
    }
    glProc.BindFramebufferEXT(GL_FRAMEBUFFER_EXT, GLuint(bound));
}

// Copy 0 and the reduced sum onto the screen: with the picture, opaque, when
// it is drawn `alone`; otherwise added over the picture already drawn.
void AddCopies(bool alone) {
    glProc.ActiveTextureARB(GL_TEXTURE1_ARB);
    glBindTexture(GL_TEXTURE_2D, g_Blur.target);
    glProc.ActiveTextureARB(GL_TEXTURE0_ARB);
    glProc.UseProgramObjectARB(g_Blur.add);
    glProc.Uniform1fARB(g_Blur.addScene, alone ? 1.0f : 0.0f);
    if (alone) {
        glDisable(GL_BLEND);
    } else {
        glBlendFunc(GL_ONE, GL_ONE);
        glEnable(GL_BLEND);
    }
    // Every pixel samples the scene at a texel's centre, where linear
    // filtering gives the texel itself: nearest gives it for less work.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    ScreenQuad(float(Resolution.width), float(Resolution.height));
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glProc.UseProgramObjectARB(0);
    glProc.ActiveTextureARB(GL_TEXTURE1_ARB);
    glBindTexture(GL_TEXTURE_2D, 0);
    glProc.ActiveTextureARB(GL_TEXTURE0_ARB);
}

// The rest of the state DrawBlur leaves behind.
void EndCopies() {
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
}

}  // namespace

bool BlurShader_DrawScene(unsigned int scene, int times, float spread) {
    if (!g_Blur.enabled || g_Blur.failed || times < 0 || times > MAX_COPIES || scene == 0 || !Usable())
        return false;
    if (Resolution.width <= 0 || Resolution.height <= 0)
        return false;
    const bool alphaTest = glIsEnabled(GL_ALPHA_TEST);
    if (alphaTest && !AlphaTestKeepsCopies())
        return false;
    if (!Prepare(times))
        return false;

    // Where the picture is drawn opaque, it and its copies are one pass.
    // Otherwise (a blend or alpha test left on by earlier drawing) the
    // picture is drawn exactly as the copies' path draws it, and the copies
    // are added over it.
    const bool alone = times > 0 && !alphaTest && !glIsEnabled(GL_BLEND);
    if (!alone)
        DisplayImage(0, 0, Resolution.width, Resolution.height, scene);

    BeginCopies(scene);
    if (times > 0) {
        const float alphaStep = 0.1f / float(times);
        SumCopies(times, spread, alphaStep);
        AddCopies(alone);
        glColor4f(1.0f, 1.0f, 1.0f, LastCopyAlpha(times, alphaStep));
    }
    EndCopies();
    return true;
}

void BlurShader_Enable(bool on) { g_Blur.enabled = on; }

void BlurShader_SetReduction(int factor) {
    factor = factor < 1 ? 1 : factor > 8 ? 8 : factor;
    if (factor == g_Blur.reduction)
        return;
    g_Blur.reduction = factor;
    g_Blur.width = g_Blur.height = 0;  // the target is made again at its next use
}

int BlurShader_Reduction() { return g_Blur.reduction; }

bool BlurShader_Enabled() { return g_Blur.enabled; }

bool BlurShader_Ready() { return g_Blur.add != 0 && g_Blur.target != 0 && !g_Blur.failed; }

void BlurShader_Destroy() {
    if (GLext_HaveShaderObjects()) {
        DeleteSum();
        if (g_Blur.add != 0)
            glProc.DeleteObjectARB(g_Blur.add);
    }
    g_Blur.add = 0;
    g_Blur.sum = 0;
    g_Blur.sumCopies = 0;
    if (GLext_HaveFramebufferObjects())
        DeleteTarget();
    g_Blur.target = g_Blur.targetFbo = 0;
    g_Blur.width = g_Blur.height = 0;
    g_Blur.failed = false;
}

void BlurShader_Reset() { g_Blur = S_BlurShader(); }
