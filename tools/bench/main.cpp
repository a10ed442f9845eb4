// velthra-bench: how fast the real game runs on this machine.
//
// It starts the game the way the game starts (the same functions in the same
// order as SDL_main, in a folder of its own that links to the game's data),
// loads the real data through the staged loading and the splash, and then
// plays fixed scenes for a set number of frames each. The game's clock is fed
// a fixed step per frame, and the random numbers a fixed seed, so every run
// simulates the same game; only the wall clock measures.
//
//   velthra-bench [--size WxH] [--frames N] [--rules-frames N] [--only TEXT]
//                 [--game DIR] [--set CVAR=VALUE ...] [--blur-reduction N] [--parts]
//                 [--shots DIR]
//   velthra-bench --floor WxH     an empty SDL + OpenGL window: its memory
//
// Output: one "scene" line per scene, and "startup", "load", "memory" lines,
// each "key value" pairs after the kind; scripts/bench.sh gathers them.
#include <SDL.h>
#include <GL/gl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "app/appstatus.h"
#include "app/cmdline.h"
#include "app/events.h"
#include "app/log.h"
#include "app/main.h"
#include "app/timer.h"
#include "app/utils.h"
#include "app/window.h"
#include "console/cconsole.h"
#include "console/cmd.h"
#include "console/config.h"
#include "console/cvar.h"
#include "game/ball.h"
#include "game/brick.h"
#include "game/game.h"
#include "game/gamestats.h"
#include "game/world.h"
#include "game/scores.h"
#include "measure.h"
#include "menu/input.h"
#include "menu/menu.h"
#include "particles/particles.h"
#include "platform/clock.h"
#include "render/blur.h"
#include "render/blur_shader.h"
#include "render/glstate.h"
#include "scene/camera.h"
#include "scene/skybox.h"
#include "sound/openal.h"

namespace fs = std::filesystem;

namespace {

constexpr uint64_t STEP_US = 16667;  // the fixed frame step: 60 frames a second of game time
constexpr unsigned SEED = 20240601;  // in place of the game's time-based seed

uint64_t g_GameUs = 1000000;
void GameClock(UnsignedWide* out) {
    out->lo = uint32_t(g_GameUs & 0xFFFFFFFFu);
    out->hi = uint32_t(g_GameUs >> 32);
}

struct S_Options {
    int width = 800, height = 600;
    int frames = 300;        // timed frames of each drawn scene
    int warmup = 30;         // untimed frames before each
    int rulesFrames = 20000; // simulated frames of the rules-only scene
    std::string only;        // run only scenes whose name contains this
    std::string game = VELTHRA_GAME_DIR;
    std::vector<std::pair<std::string, std::string>> cvars;  // set once the menu shows
    int blurReduction = 0;   // 0: the game's own
    bool parts = false;      // time the parts of each drawn frame
    std::string shots;       // a folder for a picture of each drawn scene's last frame
    std::string self;        // this executable, for the floor measurement
};

bool ParseSize(const char* text, int& width, int& height) {
    return text && std::sscanf(text, "%dx%d", &width, &height) == 2 && width >= 64 && height >= 64;
}

void Usage() {
    std::fprintf(stderr, "usage: velthra-bench [--size WxH] [--frames N] [--rules-frames N] [--only TEXT] "
                         "[--game DIR] [--set CVAR=VALUE] [--blur-reduction N] [--parts] "
                         "[--shots DIR]\n       velthra-bench --floor WxH\n");
    std::exit(2);
}

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
    SDL_GL_SetAttribute(SDL_GL_ACCUM_RED_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_ACCUM_GREEN_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_ACCUM_BLUE_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_ACCUM_ALPHA_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 16);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
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

struct S_Floor {
    double drawn = 0.0, open = 0.0;
};

// Runs `self --floor WxH` and reads its answer (after drawing, and with the
// window open but nothing drawn yet); 0 when it fails.
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

// The folder the game runs in: the game's data and archive linked in, and
// nobody's settings, scores or log, so every run starts as a first run.
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

// The back buffer as a binary PPM, top row first.
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

int SaneDimension(int value, int fallback) { return value >= 64 && value <= 16384 ? value : fallback; }

// How long the process had run when this was called, from the kernel's
// record of its start (in clock ticks, so to the nearest 10 ms or so).
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

class CBench {
public:
    CBench(const S_Options& options, double mainMs) : options_(options), mainMs_(mainMs) {}

    void StartUp();
    void LoadUntilTheMenu();
    void RunScenes();
    void Report(const S_Floor& floor);
    void ShutDown();

private:
    // One pass of the main loop that draws: pending events, the timer, the
    // frame, the swap, one loading step and the end of the input frame.
    // `shot`: the back buffer is saved there (PPM) before the swap.
    void Frame(const std::string& shot = "");
    // --parts: Draw's frame taken apart (the body of Draw3D, Run3d and
    // Draw2D in their order), each part finished before the next begins, to
    // see what costs what. It must follow app/main.cpp and CGame::Run3d; it
    // is slower than the frame in one piece, whose parts the driver overlaps.
    void PartsFrame();
    // The same frame's rules with nothing drawn (Run3d, ProcessGame and
    // Run2d without their drawing halves).
    void RulesFrame();
    // Moves the pointer so the paddle stays under the ball (a little to one
    // side or the other, so it does not always hit the paddle's centre), and
    // clicks while the ball rests. Through the SDL queue when `queued`.
    void Autopilot(bool queued);
    void NewGame(int level, const std::function<void()>& frame);
    bool Wanted(const std::string& name) const {
        return options_.only.empty() || name.find(options_.only) != std::string::npos;
    }
    void DrawnScene(const std::string& name, bool blur, bool shaders, bool play);
    void PlayScene(const std::string& name, int level, bool blur);
    void RulesScene();
    int BricksBroken() const;

    S_Options options_;
    CConsole console_;
    CGame game_;
    CCmdLine cmdline_;
    SDL_Event event_{};
    ALCdevice* device_ = nullptr;
    ALCcontext* context_ = nullptr;
    int frameCount_ = 0;
    // Lives lost to the ball, counted frame by frame (an extra life must
    // not hide a loss); kept up by CountLosses after every frame.
    int ballsLost_ = 0, lastLives_ = 0;
    void CountLosses() {
        if (Game_Stats.lives < lastLives_)
            ballsLost_ += lastLives_ - Game_Stats.lives;
        lastLives_ = Game_Stats.lives;
    }

    double mainMs_ = 0.0;   // the wall clock at main(), less the process's age then
    double startMs_ = 0.0;  // the wall clock where SDL_main's work begins
    struct S_Step {
        std::string name;
        double ms, mib;  // its time, and the resident memory after it
    };
    std::vector<S_Step> startSteps_;
    double firstFrameMs_ = 0.0;
    std::vector<double> phaseMs_, phaseMib_;
    double loadedMs_ = 0.0;
    double menuMiB_ = 0.0, playMiB_ = 0.0, menuHeapFreeMiB_ = 0.0;
    std::vector<S_SceneResult> scenes_;
    static constexpr int PARTS = 7;
    static constexpr const char* PART_NAMES[PARTS] = {"start_3d", "sky", "field_bricks", "paddle_ball",
                                                      "blur",     "2d",  "swap"};
    double partMs_[PARTS] = {};
    std::vector<std::string> partLines_;
    std::vector<std::string> notes_;
};

void CBench::StartUp() {
    startMs_ = WallMs();
    double mark = startMs_;
    auto step = [&](const char* name) {
        const double now = WallMs();
        startSteps_.push_back({name, now - mark, ResidentMiB()});
        mark = now;
    };
    // SDL_main's order, with the bench's size and a fixed seed.
    SetMicrosecondsSource(GameClock);
    Timer.start();
    Screen = nullptr;
    InitEndian();
    char name[] = "velthra";
    char* argv[] = {name, nullptr};
    cmdline_.Proccess(1, argv);
    Cvar_Init();
    Cvar_Set("screenwidth", IntToString(options_.width));
    Cvar_Set("screenheight", IntToString(options_.height));
    Resolution.width = SaneDimension(StringToInt(Cvar_Get("screenwidth")), 640);
    Resolution.height = SaneDimension(StringToInt(Cvar_Get("screenheight")), 480);
    Resolution.bpp = 32;
    Scores_Load();
    Cvar_Dynamic();
    std::srand(SEED);
    InitErrorLog();
    step("settings");
    SetupOpengl(SDL_OPENGL);
    step("window");
    if (initOpenAL(&device_, &context_) <= 0) {
        Log("FAILED TO INIT OPEN AL\n");
        std::fprintf(stderr, "velthra-bench: OpenAL did not start (try ALSOFT_DRIVERS=null)\n");
        std::exit(1);
    }
    step("openal");
    console_.Init();
    Cmd_Init_Commands();
    Menu_Load();
    Con_Bump();
    step("console_menus");
    isProgramLooping = true;
    g_MediaLoaded = false;
}

void CBench::Frame(const std::string& shot) {
    while (SDL_PollEvent(&event_))
        HandleEvent(event_, &console_);
    g_GameUs += STEP_US;
    Timer.update();
    Draw(Screen, game_, event_, console_);
    if (!shot.empty())
        SaveBackBuffer(shot);
    SDL_GL_SwapBuffers();
    LoadMedia(game_, Timer);
    Input_EndFrame();
    CountLosses();
    frameCount_++;
}

void CBench::PartsFrame() {
    while (SDL_PollEvent(&event_))
        HandleEvent(event_, &console_);
    g_GameUs += STEP_US;
    Timer.update();
    CGame game = game_;  // as Draw is handed a copy
    auto part = [this](int index, const std::function<void()>& body) {
        const double start = WallMs();
        body();
        glFinish();
        partMs_[index] += WallMs() - start;
    };
    part(0, [&] {
        game.UpdateCvars(console_);
        BeginFBO();
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glLoadIdentity();
        EnableGL3d();
        if (g_MediaLoaded) {
            game.setCamera();
            game.controlCamera();
            game.UpdateSession();
        }
    });
    const bool play = g_MediaLoaded && !Menu_Visible();
    part(1, [&] {
        if (play)
            Skybox.Draw_Skybox(Camera.getPosX(), Camera.getPosY(), Camera.getPosZ(), 100, 100, 100);
    });
    part(2, [&] {
        if (play)
            World_Draw();
    });
    part(3, [&] {
        if (g_MediaLoaded)
            game.ProcessGame();
        glFlush();
        EndFBO();
    });
    part(4, [&] {
        EnableGL2d();
        DrawFBO();
    });
    part(5, [&] {
        SDL_ShowCursor(SDL_DISABLE);
        if (g_MediaLoaded) {
            game.Run2d(event_);
            if (AppStatus.consoleVisible)
                console_.draw(game);
        }
        LoadingBar();
        DisableGL2d();
    });
    part(6, [] { SDL_GL_SwapBuffers(); });
    LoadMedia(game_, Timer);
    Input_EndFrame();
    CountLosses();
    frameCount_++;
}

void CBench::LoadUntilTheMenu() {
    // The first eleven frames each load one phase; the time of each is the
    // frame's, since the phase runs inside it.
    for (int phase = 0; phase <= 10; phase++) {
        const double start = WallMs();
        Frame();
        phaseMs_.push_back(WallMs() - start);
        phaseMib_.push_back(ResidentMiB());
        if (phase == 0)
            firstFrameMs_ = WallMs() - mainMs_;
    }
    // The splash: three seconds of game time.
    while (!g_MediaLoaded && frameCount_ < 11 + 1000)
        Frame();
    loadedMs_ = WallMs() - mainMs_;
    if (!g_MediaLoaded)
        notes_.push_back("the splash never ended");
}

void CBench::Autopilot(bool queued) {
    const double factor = PaddleFactor(Resolution.height);
    if (factor == 0.0)
        return;
    // Sideways by up to 1.6 units, changing slowly: the ball leaves the
    // paddle at varied angles and reaches more bricks.
    const double aside = 1.6 * std::sin(frameCount_ / 37.0);
    const double target = double(Ball.GetX()) + aside;
    int x = int(std::lround((target + 8.0) / factor));
    x = std::max(0, std::min(Resolution.width - 1, x));
    const int y = Resolution.height / 2;

    SDL_Event motion{};
    motion.type = SDL_MOUSEMOTION;
    motion.motion.type = SDL_MOUSEMOTION;
    motion.motion.state = 0;
    motion.motion.x = Uint16(x);
    motion.motion.y = Uint16(y);
    motion.motion.xrel = 0;
    motion.motion.yrel = 0;
    if (queued)
        SDL_PushEvent(&motion);
    else
        Input_MouseMotion(motion);

    if (!Game_Stats.ballLaunched && !Menu_Visible()) {
        SDL_Event press{};
        press.type = SDL_MOUSEBUTTONDOWN;
        press.button.type = SDL_MOUSEBUTTONDOWN;
        press.button.button = SDL_BUTTON_LEFT;
        press.button.state = SDL_PRESSED;
        press.button.x = Uint16(x);
        press.button.y = Uint16(y);
        SDL_Event release = press;
        release.type = release.button.type = SDL_MOUSEBUTTONUP;
        release.button.state = SDL_RELEASED;
        if (queued) {
            SDL_PushEvent(&press);
            SDL_PushEvent(&release);
        } else {
            HandleEvent(press, nullptr);
            HandleEvent(release, nullptr);
        }
    }
}

void CBench::RulesFrame() {
    g_GameUs += STEP_US;
    Timer.update();
    const float t = Timer.get_ticks();
    game_.UpdateSession();
    const bool menu = Menu_Visible();
    if (!menu) {
        for (int i = 0; i < CBrick::Count() && i < MAX_BRICKS; i++)
            if (Brick[i])
                Brick[i]->Update(t);
    }
    if (!menu) {
        game_.MovePaddle();
        if (Game_Stats.ballLaunched) {
            Ball.Step(t);
            if (StringToInt(Cvar_Get("r_particles")) != 0) {
                for (const char* effect : {"particles1.txt", "particles2.txt", "particles3.txt", "particles4.txt"}) {
                    const int slot = Particles_Find(effect);
                    for (int i = 0; slot >= 0 && i < PARTICLES_PER_EFFECT; i++)
                        if (Particles[slot].Step(i, Ball.GetX(), 0.0f, Ball.GetZ(), true) == E_ParticleStep::Ended)
                            break;
                }
            }
        }
    }
    for (size_t i = 0; i < GameMenu.size(); i++)
        Menu_Think(i);
    Input_EndFrame();
    CountLosses();
    frameCount_++;
}

void CBench::NewGame(int level, const std::function<void()>& frame) {
    // What a player does: back to the main menu, "New Game", then the
    // console's "skip" until the level is reached.
    Menu_Screen("main");
    frame();
    Menu_ScanFunc("restart");
    frame();
    for (int l = 1; l < level; l++) {
        Cmd_RunCommand("skip");
        frame();
    }
}

int CBench::BricksBroken() const {
    int broken = 0;
    for (int i = 0; i < CBrick::Count() && i < MAX_BRICKS; i++)
        if (Brick[i] && Brick[i]->Alive())
            broken++;
    return broken;
}

void CBench::DrawnScene(const std::string& name, bool blur, bool shaders, bool play) {
    Cvar_Set("r_blur", blur ? "1" : "0");
    BlurShader_Enable(shaders);
    for (int i = 0; i < options_.warmup; i++) {
        if (play)
            Autopilot(true);
        Frame();
    }
    CSceneTimer timer;
    timer.Begin(name);
    for (double& ms : partMs_)
        ms = 0.0;
    for (int i = 0; i < options_.frames; i++) {
        timer.FrameStart();
        if (play)
            Autopilot(true);
        if (options_.parts)
            PartsFrame();
        else
            Frame();
        timer.FrameEnd();
    }
    scenes_.push_back(timer.End());
    if (!options_.shots.empty()) {
        std::string file = name;
        for (char& c : file)
            if (!std::isalnum(static_cast<unsigned char>(c)))
                c = '_';
        if (play)
            Autopilot(true);
        Frame(options_.shots + "/" + file + ".ppm");
    }
    if (options_.parts) {
        std::string line = "parts \"" + name + "\"";
        char text[64];
        for (int i = 0; i < PARTS; i++) {
            std::snprintf(text, sizeof text, " %s_ms %.3f", PART_NAMES[i], partMs_[i] / options_.frames);
            line += text;
        }
        partLines_.push_back(line);
    }
    BlurShader_Enable(true);
}

void CBench::PlayScene(const std::string& name, int level, bool blur) {
    if (!Wanted(name))
        return;
    Cvar_Set("r_particles", "1");
    NewGame(level, [this] { Frame(); });
    const int startLevel = Game_Stats.level - 1;
    ballsLost_ = 0;
    lastLives_ = Game_Stats.lives;
    DrawnScene(name, blur, true, true);
    char note[200];
    std::snprintf(note, sizeof note,
                  "%s: level %d to %d, %d of %d bricks broken on the last, score %d, %d balls lost, %s", name.c_str(),
                  startLevel, Game_Stats.level - 1, BricksBroken(), CBrick::Count(), Game_Stats.score, ballsLost_,
                  Menu_Visible() ? "a menu showed at the end" : "still playing");
    notes_.push_back(note);
}

void CBench::RulesScene() {
    const std::string name = "rules only (no drawing)";
    if (!Wanted("rules"))
        return;
    Cvar_Set("r_particles", "1");
    NewGame(1, [this] { RulesFrame(); });
    ballsLost_ = 0;
    lastLives_ = Game_Stats.lives;
    int levels = 0, lastLevel = Game_Stats.level;
    CSceneTimer timer;
    timer.Begin(name);
    for (int i = 0; i < options_.rulesFrames; i++) {
        timer.FrameStart();
        Autopilot(false);
        RulesFrame();
        timer.FrameEnd();
        if (Game_Stats.level != lastLevel) {
            levels++;
            lastLevel = Game_Stats.level;
        }
    }
    scenes_.push_back(timer.End());
    char note[200];
    std::snprintf(note, sizeof note, "%s: %d frames of game time (%.0f s), %d levels changed, score %d, %d balls lost",
                  name.c_str(), options_.rulesFrames, options_.rulesFrames * STEP_US / 1e6, levels, Game_Stats.score,
                  ballsLost_);
    notes_.push_back(note);
}

void CBench::RunScenes() {
    for (const auto& [name, value] : options_.cvars)
        Cvar_Set(name, value);
    if (options_.blurReduction > 0)
        BlurShader_SetReduction(options_.blurReduction);
    // The main menu with its bursts; the splash has just given way to it.
    Cvar_Set("r_particles", "1");
    struct S_MenuScene {
        const char* name;
        bool blur, shaders;
    };
    for (const S_MenuScene& scene : {S_MenuScene{"menu, blur off", false, true}, S_MenuScene{"menu, blur on", true, true},
                                     S_MenuScene{"menu, blur on, copies", true, false}}) {
        if (!Wanted(scene.name))
            continue;
        DrawnScene(scene.name, scene.blur, scene.shaders, false);
        if (menuMiB_ == 0.0) {
            menuMiB_ = ResidentMiB();
            menuHeapFreeMiB_ = HeapFreeMiB();
        }
        if (scene.blur && scene.shaders && !BlurShader_Ready())
            notes_.push_back("the blur's shader path was not used: blur on drew the copies");
    }
    PlayScene("play level 1, blur off", 1, false);
    PlayScene("play level 1, blur on", 1, true);
    PlayScene("play level 10, blur off", 10, false);
    PlayScene("play level 10, blur on", 10, true);
    playMiB_ = ResidentMiB();
    RulesScene();
}

void CBench::Report(const S_Floor& floor) {
    std::printf("bench size %dx%d renderer \"%s\" step_ms %.3f frames %d blur_reduction %d\n", options_.width,
                options_.height, reinterpret_cast<const char*>(glGetString(GL_RENDERER)), STEP_US / 1000.0,
                options_.frames, BlurShader_Reduction());
    // From the process's start: to the first frame on the screen, and to the
    // main menu after the loading and the splash.
    std::printf("startup first_frame_ms %.1f menu_ms %.1f before_startup_ms %.1f", firstFrameMs_, loadedMs_,
                startMs_ - mainMs_);
    for (const S_Step& step : startSteps_)
        std::printf(" %s_ms %.1f", step.name.c_str(), step.ms);
    for (const S_Step& step : startSteps_)
        std::printf(" %s_mib %.1f", step.name.c_str(), step.mib);
    std::printf("\n");
    std::printf("load");
    for (size_t phase = 0; phase < phaseMs_.size(); phase++)
        std::printf(" phase%zu_ms %.1f", phase, phaseMs_[phase]);
    for (size_t phase = 0; phase < phaseMib_.size(); phase++)
        std::printf(" phase%zu_mib %.1f", phase, phaseMib_[phase]);
    std::printf("\n");
    for (const S_SceneResult& scene : scenes_) {
        std::printf("scene \"%s\" frames %d fps %.1f median_ms %.2f p95_ms %.2f max_ms %.2f cpu_ms_per_frame %.3f\n",
                    scene.name.c_str(), scene.frames, scene.Fps(), scene.medianMs, scene.p95Ms, scene.maxMs,
                    scene.CpuPerFrame());
    }
    for (const std::string& line : partLines_)
        std::printf("%s\n", line.c_str());
    std::printf("memory floor_mib %.1f window_only_mib %.1f menu_mib %.1f play_mib %.1f menu_heap_free_mib %.1f\n",
                floor.drawn, floor.open, menuMiB_, playMiB_, menuHeapFreeMiB_);
    for (const std::string& note : notes_)
        std::printf("note %s\n", note.c_str());
    std::fflush(stdout);
}

void CBench::ShutDown() {
    // The game's shutdown less the saving: the run folder is thrown away.
    Deinitialize(game_);
    CloseErrorLog();
    deinitOpenAL(device_, context_);
}

} // namespace

int main(int argc, char** argv) {
    const double mainMs = WallMs() - ProcessAgeMs();
    S_Options options;
    options.self = SelfPath(argv[0]);
    for (int i = 1; i < argc; i++) {
        const std::string arg = argv[i];
        const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
        if (arg == "--floor") {
            int width = 0, height = 0;
            if (!ParseSize(value, width, height))
                Usage();
            return RunFloor(width, height);
        }
        if (arg == "--parts") {
            options.parts = true;
            continue;
        }
        if (!value)
            Usage();
        if (arg == "--size") {
            if (!ParseSize(value, options.width, options.height))
                Usage();
        } else if (arg == "--frames") {
            options.frames = std::max(1, std::atoi(value));
        } else if (arg == "--rules-frames") {
            options.rulesFrames = std::max(1, std::atoi(value));
        } else if (arg == "--only") {
            options.only = value;
        } else if (arg == "--game") {
            options.game = value;
        } else if (arg == "--shots") {
            options.shots = value;
        } else if (arg == "--blur-reduction") {
            options.blurReduction = std::atoi(value);
        } else if (arg == "--set") {
            const char* equals = std::strchr(value, '=');
            if (!equals)
                Usage();
            options.cvars.push_back({std::string(value, equals), equals + 1});
        } else {
            Usage();
        }
        i++;
    }

    const std::string run = PrepareRunFolder(options.game);
    if (chdir(run.c_str()) != 0) {
        std::perror("velthra-bench: chdir");
        return 1;
    }
    CBench bench(options, mainMs);
    bench.StartUp();
    bench.LoadUntilTheMenu();
    bench.RunScenes();
    const S_Floor floor = MeasureFloor(options.self, options.width, options.height);
    bench.Report(floor);
    bench.ShutDown();

    std::error_code ignored;
    fs::remove_all(run, ignored);
    // Like the game's own exit: the loop is left, nothing is saved.
    std::exit(0);
}
