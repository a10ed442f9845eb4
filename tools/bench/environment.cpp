#include "environment.h"

#include <GL/gl.h>
#include <SDL.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <vector>

#include "app/window.h"
#include "common/appstatus.h"
#include "measure.h"

namespace fs = std::filesystem;

std::string SelfPath(const char* argv0) {
    std::error_code error;
    fs::path self = fs::read_symlink("/proc/self/exe", error);
    return error ? std::string(argv0) : self.string();
}

namespace {

// A window with the attributes the game asks for; false (SDL shut) when refused.
bool OpenGameLikeWindow(int width, int height) {
    if (SDL_Init(SDL_INIT_VIDEO) < 0)
        return false;
    Window_SetGLAttributes();
    if (!SDL_SetVideoMode(width, height, 32, SDL_OPENGL)) {
        SDL_Quit();
        return false;
    }
    return true;
}

// One frame: both buffers cleared, a square of the bound texture spanning
// -half..half in clip space, the swap.
void DrawTexturedSquareFrame(float half) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glBegin(GL_QUADS);
    glTexCoord2f(0, 0);
    glVertex2f(-half, -half);
    glTexCoord2f(1, 0);
    glVertex2f(half, -half);
    glTexCoord2f(1, 1);
    glVertex2f(half, half);
    glTexCoord2f(0, 1);
    glVertex2f(-half, half);
    glEnd();
    SDL_GL_SwapBuffers();
}

}  // namespace

// An empty window with the attributes the game asks for, and its resident
// memory: what SDL and the driver cost before the game adds anything. Each
// frame draws one small textured square, so that a driver that compiles its
// drawing code on first use (llvmpipe does) counts that compiler too; a
// window that only clears never starts it.
int RunFloor(int width, int height) {
    if (!OpenGameLikeWindow(width, height))
        return 1;
    const unsigned char texels[4 * 4] = {255, 255, 255, 255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255, 255};
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 2, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels);
    glEnable(GL_TEXTURE_2D);
    const double before = ResidentMiB();
    for (int frame = 0; frame < 60; frame++) {
        DrawTexturedSquareFrame(0.1f);
    }
    std::printf("%.1f %.1f\n", ResidentMiB(), before);
    std::fflush(stdout);
    SDL_Quit();
    return 0;
}

S_Floor MeasureFloor(const std::string& self, int width, int height) {
    const std::string command = "'" + self + "' --floor " + std::to_string(width) + "x" + std::to_string(height);
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return S_Floor();
    S_Floor floor;
    if (std::fscanf(pipe, "%lf %lf", &floor.drawn, &floor.open) != 2)
        floor = S_Floor();
    pclose(pipe);
    return floor;
}

std::string PrepareRunFolder(const std::string& game) {
    char pattern[] = "/tmp/velthra-bench-XXXXXX";
    if (!mkdtemp(pattern)) {
        std::perror("velthra-bench: mkdtemp");
        std::exit(1);
    }
    const fs::path run(pattern);
    const fs::path data = fs::path(game) / "data";
    if (!fs::is_directory(data) || !fs::exists(fs::path(game) / "assets.zip")) {
        std::fprintf(stderr, "velthra-bench: no game data in %s\n", game.c_str());
        std::exit(1);
    }
    fs::create_directory(run / "data");
    for (const fs::directory_entry& entry : fs::directory_iterator(data)) {
        if (entry.is_directory())
            fs::create_directory_symlink(fs::absolute(entry.path()), run / "data" / entry.path().filename());
    }
    fs::create_symlink(fs::absolute(fs::path(game) / "assets.zip"), run / "assets.zip");
    return run.string();
}

std::vector<unsigned char> ReadBackBuffer() {
    const int width = Resolution.width, height = Resolution.height;
    const size_t row = size_t(width) * 3;
    std::vector<unsigned char> bottomUp(row * size_t(height)), rgb(bottomUp.size());
    glFinish();
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, bottomUp.data());
    for (int y = 0; y < height; y++)
        std::memcpy(rgb.data() + size_t(y) * row, bottomUp.data() + size_t(height - 1 - y) * row, row);
    return rgb;
}

bool SavePicture(const std::string& path, int width, int height, const std::vector<unsigned char>& rgb) {
    FILE* file = std::fopen(path.c_str(), "wb");
    if (!file)
        return false;
    std::fprintf(file, "P6\n%d %d\n255\n", width, height);
    const bool written = std::fwrite(rgb.data(), 1, rgb.size(), file) == rgb.size();
    return std::fclose(file) == 0 && written;
}

bool LoadPicture(const std::string& path, int& width, int& height, std::vector<unsigned char>& rgb) {
    FILE* file = std::fopen(path.c_str(), "rb");
    if (!file)
        return false;
    int maximum = 0;
    // The header SavePicture writes: no comments, one blank after the maximum.
    const bool header = std::fscanf(file, "P6 %d %d %d", &width, &height, &maximum) == 3 && std::fgetc(file) != EOF &&
                        width > 0 && height > 0 && width <= 16384 && height <= 16384 && maximum == 255;
    if (header) {
        rgb.resize(size_t(width) * size_t(height) * 3);
        if (std::fread(rgb.data(), 1, rgb.size(), file) != rgb.size())
            rgb.clear();
    }
    std::fclose(file);
    return header && !rgb.empty();
}

long DifferingPixels(const std::vector<unsigned char>& a, const std::vector<unsigned char>& b) {
    long count = 0;
    for (size_t i = 0; i + 2 < a.size() && i + 2 < b.size(); i += 3)
        if (a[i] != b[i] || a[i + 1] != b[i + 1] || a[i + 2] != b[i + 2])
            count++;
    return count;
}

int RunFill(int width, int height, int frames, int warmup) {
    if (!OpenGameLikeWindow(width, height))
        return 1;
    // A picture with detail everywhere, so no texel is like its neighbour.
    constexpr int SIDE = 256;
    std::vector<unsigned char> texels(size_t(SIDE) * SIDE * 4);
    for (int y = 0; y < SIDE; y++)
        for (int x = 0; x < SIDE; x++) {
            unsigned char* t = &texels[(size_t(y) * SIDE + size_t(x)) * 4];
            t[0] = static_cast<unsigned char>(x ^ y);
            t[1] = static_cast<unsigned char>(x * 3 + y);
            t[2] = static_cast<unsigned char>(y * 5 - x);
            t[3] = 255;
        }
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, SIDE, SIDE, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels.data());
    glViewport(0, 0, width, height);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    glClearColor(0.0f, 0.0f, 0.0f, 0.5f);
    std::vector<double> times;
    double wallStart = 0.0, cpuStart = 0.0;
    for (int frame = 0; frame < warmup + frames; frame++) {
        if (frame == warmup) {
            wallStart = WallMs();
            cpuStart = ProcessCpuMs();
        }
        const double start = WallMs();
        DrawTexturedSquareFrame(1.0f);
        if (frame >= warmup)
            times.push_back(WallMs() - start);
    }
    const double seconds = (WallMs() - wallStart) / 1000.0, cpuMs = ProcessCpuMs() - cpuStart;
    std::printf("%d %.6f %.3f %.3f %.3f %.3f\n", frames, seconds, cpuMs, Percentile(times, 50.0),
                Percentile(times, 95.0), times.empty() ? 0.0 : *std::max_element(times.begin(), times.end()));
    std::fflush(stdout);
    SDL_Quit();
    return 0;
}

S_SceneResult MeasureFill(const std::string& self, int width, int height, int frames) {
    S_SceneResult fill;
    fill.name = "one screen fill";
    const std::string command = "'" + self + "' --frames " + std::to_string(frames) + " --fill " +
                                std::to_string(width) + "x" + std::to_string(height);
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return fill;
    if (std::fscanf(pipe, "%d %lf %lf %lf %lf %lf", &fill.frames, &fill.seconds, &fill.cpuMs, &fill.medianMs,
                    &fill.p95Ms, &fill.maxMs) != 6)
        fill.frames = 0;
    pclose(pipe);
    return fill;
}

double ProcessAgeMs() {
    FILE* stat = std::fopen("/proc/self/stat", "r");
    if (!stat)
        return 0.0;
    char text[1024];
    const size_t length = std::fread(text, 1, sizeof text - 1, stat);
    std::fclose(stat);
    text[length] = '\0';
    // Field 22, counted after the command name's closing parenthesis.
    const char* field = std::strrchr(text, ')');
    unsigned long long started = 0;
    for (int i = 2; field && i < 22; i++)
        field = std::strchr(field + 1, ' ');
    if (!field || std::sscanf(field + 1, "%llu", &started) != 1)
        return 0.0;
    timespec now;
    clock_gettime(CLOCK_BOOTTIME, &now);
    const double nowMs = double(now.tv_sec) * 1000.0 + double(now.tv_nsec) / 1e6;
    return std::max(0.0, nowMs - double(started) * 1000.0 / double(sysconf(_SC_CLK_TCK)));
}
