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

// An empty window with the attributes the game asks for, and its resident
// memory: what SDL and the driver cost before the game adds anything. Each
// frame draws one small textured square, so that a driver that compiles its
// drawing code on first use (llvmpipe does) counts that compiler too; a
// window that only clears never starts it.
int RunFloor(int width, int height) {
    if (SDL_Init(SDL_INIT_VIDEO) < 0)
        return 1;
    Window_SetGLAttributes();
    if (!SDL_SetVideoMode(width, height, 32, SDL_OPENGL)) {
        SDL_Quit();
        return 1;
    }
    const unsigned char texels[4 * 4] = {255, 255, 255, 255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255, 255};
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 2, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels);
    glEnable(GL_TEXTURE_2D);
    const double before = ResidentMiB();
    for (int frame = 0; frame < 60; frame++) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glBegin(GL_QUADS);
        glTexCoord2f(0, 0);
        glVertex2f(-0.1f, -0.1f);
        glTexCoord2f(1, 0);
        glVertex2f(0.1f, -0.1f);
        glTexCoord2f(1, 1);
        glVertex2f(0.1f, 0.1f);
        glTexCoord2f(0, 1);
        glVertex2f(-0.1f, 0.1f);
        glEnd();
        SDL_GL_SwapBuffers();
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

void SaveBackBuffer(const std::string& path) {
    const int width = Resolution.width, height = Resolution.height;
    std::vector<unsigned char> rgb(size_t(width) * size_t(height) * 3);
    glFinish();
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, rgb.data());
    FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) {
        std::fprintf(stderr, "velthra-bench: cannot write %s\n", path.c_str());
        return;
    }
    std::fprintf(file, "P6\n%d %d\n255\n", width, height);
    for (int row = height - 1; row >= 0; row--)
        std::fwrite(rgb.data() + size_t(row) * size_t(width) * 3, 1, size_t(width) * 3, file);
    std::fclose(file);
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
