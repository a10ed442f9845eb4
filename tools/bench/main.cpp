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
//                 [--game DIR] [--set CVAR=VALUE ...] [--blur-reduction N]
//   velthra-bench --floor WxH     an empty SDL + OpenGL window: its memory
//
// Output: one "scene" line per scene, and "startup", "load", "memory" lines,
// each "key value" pairs after the kind; scripts/bench.sh gathers them.
#include <SDL.h>
#include <GL/gl.h>
#include <unistd.h>

#include <algorithm>
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
#include "game/scores.h"
#include "measure.h"
#include "menu/input.h"
#include "menu/menu.h"
#include "particles/particles.h"
#include "platform/clock.h"
#include "render/blur_shader.h"
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
    std::string self;        // this executable, for the floor measurement
};

bool ParseSize(const char* text, int& width, int& height) {
    return text && std::sscanf(text, "%dx%d", &width, &height) == 2 && width >= 64 && height >= 64;
}

void Usage() {
    std::fprintf(stderr, "usage: velthra-bench [--size WxH] [--frames N] [--rules-frames N] [--only TEXT] "
                         "[--game DIR] [--set CVAR=VALUE] [--blur-reduction N]\n       velthra-bench --floor WxH\n");
    std::exit(2);
}

std::string SelfPath(const char* argv0) {
    std::error_code error;
    fs::path self = fs::read_symlink("/proc/self/exe", error);
    return error ? std::string(argv0) : self.string();
}

// An empty window with the attributes the game asks for, a few cleared
// frames, and its resident memory: what SDL and the driver cost before the
// game adds anything.
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
    for (int frame = 0; frame < 60; frame++) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        SDL_GL_SwapBuffers();
    }
    std::printf("%.1f\n", ResidentMiB());
    std::fflush(stdout);
    SDL_Quit();
    return 0;
}

// Runs `self --floor WxH` and reads its answer; 0 when it fails.
double MeasureFloor(const std::string& self, int width, int height) {
    const std::string command = "'" + self + "' --floor " + std::to_string(width) + "x" + std::to_string(height);
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return 0.0;
    double mib = 0.0;
    if (std::fscanf(pipe, "%lf", &mib) != 1)
        mib = 0.0;
    pclose(pipe);
    return mib;
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
    void Report(double floorMiB);
    void ShutDown();

private:
    // One pass of the main loop that draws: pending events, the timer, the
    // frame, the swap, one loading step and the end of the input frame.
    void Frame();
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

    double mainMs_ = 0.0;   // the wall clock at main(), less the process's age then
    double startMs_ = 0.0;  // the wall clock where SDL_main's work begins
    std::vector<std::pair<std::string, double>> startSteps_;
    double firstFrameMs_ = 0.0;
    std::vector<double> phaseMs_;
    double loadedMs_ = 0.0;
    double menuMiB_ = 0.0, playMiB_ = 0.0;
    std::vector<S_SceneResult> scenes_;
    std::vector<std::string> notes_;
};

void CBench::StartUp() {
    startMs_ = WallMs();
    double mark = startMs_;
    auto step = [&](const char* name) {
        const double now = WallMs();
        startSteps_.push_back({name, now - mark});
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

void CBench::Frame() {
    while (SDL_PollEvent(&event_))
        HandleEvent(event_, &console_);
    g_GameUs += STEP_US;
    Timer.update();
    Draw(Screen, game_, event_, console_);
    SDL_GL_SwapBuffers();
    LoadMedia(game_, Timer);
    Input_EndFrame();
    frameCount_++;
}

void CBench::LoadUntilTheMenu() {
    // The first eleven frames each load one phase; the time of each is the
    // frame's, since the phase runs inside it.
    for (int phase = 0; phase <= 10; phase++) {
        const double start = WallMs();
        Frame();
        phaseMs_.push_back(WallMs() - start);
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
    for (int i = 0; i < options_.frames; i++) {
        timer.FrameStart();
        if (play)
            Autopilot(true);
        Frame();
        timer.FrameEnd();
    }
    scenes_.push_back(timer.End());
    BlurShader_Enable(true);
}

void CBench::PlayScene(const std::string& name, int level, bool blur) {
    if (!Wanted(name))
        return;
    Cvar_Set("r_particles", "1");
    NewGame(level, [this] { Frame(); });
    const int lives = Game_Stats.lives;
    const int startLevel = Game_Stats.level - 1;
    DrawnScene(name, blur, true, true);
    char note[160];
    std::snprintf(note, sizeof note, "%s: level %d to %d, %d of %d bricks broken on the last, %d balls lost, %s",
                  name.c_str(), startLevel, Game_Stats.level - 1, BricksBroken(), CBrick::Count(),
                  lives - Game_Stats.lives, Menu_Visible() ? "a menu showed at the end" : "still playing");
    notes_.push_back(note);
}

void CBench::RulesScene() {
    const std::string name = "rules only (no drawing)";
    if (!Wanted("rules"))
        return;
    Cvar_Set("r_particles", "1");
    NewGame(1, [this] { RulesFrame(); });
    const int lives = Game_Stats.lives;
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
    char note[160];
    std::snprintf(note, sizeof note, "%s: %d frames of game time (%.0f s), %d levels changed, %d balls lost",
                  name.c_str(), options_.rulesFrames, options_.rulesFrames * STEP_US / 1e6, levels,
                  lives - Game_Stats.lives);
    notes_.push_back(note);
}

void CBench::RunScenes() {
    for (const auto& [name, value] : options_.cvars)
        Cvar_Set(name, value);
    if (options_.blurReduction > 0)
        BlurShader_SetReduction(options_.blurReduction);
    // The main menu with its bursts; the splash has just given way to it.
    if (Wanted("menu")) {
        Cvar_Set("r_particles", "1");
        DrawnScene("menu, blur off", false, true, false);
        menuMiB_ = ResidentMiB();
        DrawnScene("menu, blur on", true, true, false);
        DrawnScene("menu, blur on, copies", true, false, false);
        if (!BlurShader_Ready())
            notes_.push_back("the blur's shader path was not used: blur on drew the copies");
    }
    PlayScene("play level 1, blur off", 1, false);
    PlayScene("play level 1, blur on", 1, true);
    PlayScene("play level 10, blur off", 10, false);
    PlayScene("play level 10, blur on", 10, true);
    playMiB_ = ResidentMiB();
    RulesScene();
}

void CBench::Report(double floorMiB) {
    std::printf("bench size %dx%d renderer \"%s\" step_ms %.3f frames %d blur_reduction %d\n", options_.width,
                options_.height, reinterpret_cast<const char*>(glGetString(GL_RENDERER)), STEP_US / 1000.0,
                options_.frames, BlurShader_Reduction());
    // From the process's start: to the first frame on the screen, and to the
    // main menu after the loading and the splash.
    std::printf("startup first_frame_ms %.1f menu_ms %.1f before_startup_ms %.1f", firstFrameMs_, loadedMs_,
                startMs_ - mainMs_);
    for (const auto& [name, ms] : startSteps_)
        std::printf(" %s_ms %.1f", name.c_str(), ms);
    std::printf("\n");
    std::printf("load");
    for (size_t phase = 0; phase < phaseMs_.size(); phase++)
        std::printf(" phase%zu_ms %.1f", phase, phaseMs_[phase]);
    std::printf("\n");
    for (const S_SceneResult& scene : scenes_) {
        std::printf("scene \"%s\" frames %d fps %.1f median_ms %.2f p95_ms %.2f max_ms %.2f cpu_ms_per_frame %.3f\n",
                    scene.name.c_str(), scene.frames, scene.Fps(), scene.medianMs, scene.p95Ms, scene.maxMs,
                    scene.CpuPerFrame());
    }
    std::printf("memory floor_mib %.1f menu_mib %.1f play_mib %.1f\n", floorMiB, menuMiB_, playMiB_);
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
    const double floor = MeasureFloor(options.self, options.width, options.height);
    bench.Report(floor);
    bench.ShutDown();

    std::error_code ignored;
    fs::remove_all(run, ignored);
    // Like the game's own exit: the loop is left, nothing is saved.
    std::exit(0);
}
