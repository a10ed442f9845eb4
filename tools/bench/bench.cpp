#include "bench.h"

#include <GL/gl.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "app/cmdline.h"
#include "app/events.h"
#include "app/frame.h"
#include "app/main.h"
#include "app/reset.h"
#include "app/window.h"
#include "common/appstatus.h"
#include "common/clock.h"
#include "common/cmd.h"
#include "common/config.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/log.h"
#include "common/scores.h"
#include "common/timer.h"
#include "common/utils.h"
#include "game/ball.h"
#include "game/brick.h"
#include "game/world.h"
#include "input/input.h"
#include "measure.h"
#include "menu/menu.h"
#include "particles/particles.h"
#include "render/blur_shader.h"

namespace {

constexpr uint64_t STEP_US = 16667;  // the fixed frame step: 60 frames a second of game time
constexpr unsigned SEED = 20240601;  // in place of the game's time-based seed

uint64_t g_GameUs = 1000000;
void GameClock(UnsignedWide* out) {
    out->lo = uint32_t(g_GameUs & 0xFFFFFFFFu);
    out->hi = uint32_t(g_GameUs >> 32);
}

// SDL_main's guard against a settings file that asks for an absurd window.
int SaneDimension(int value, int fallback) { return value >= 64 && value <= 16384 ? value : fallback; }

}  // namespace

void CBench::CountLosses() {
    if (Game_Stats.lives < lastLives_)
        ballsLost_ += lastLives_ - Game_Stats.lives;
    lastLives_ = Game_Stats.lives;
}

void CBench::StartUp() {
    startMs_ = WallMs();
    double mark = startMs_;
    auto step = [&](const char* name) {
        const double now = WallMs();
        startSteps_.push_back({name, now - mark, ResidentMiB()});
        mark = now;
    };
    // SDL_main's order, with the bench's size and a fixed seed, from the
    // state the process starts in.
    App_ResetAll();
    marking_ = this;
    g_FrameMark = Mark;
    SetMicrosecondsSource(GameClock);
    Timer.start();
    Screen = nullptr;
    InitEndian();
    char name[] = "velthra";
    char* argv[] = {name, nullptr};
    cmdline_.Proccess(1, argv);
    Cvar_Init();
    Cvar_Set(screenwidth, IntToString(options_.width));
    Cvar_Set(screenheight, IntToString(options_.height));
    // No frame-rate limit and no vertical sync: the benchmark measures how
    // fast frames can be drawn (its loop does not pace frames either).
    Cvar_Set(r_maxfps, "0");
    Resolution.width = SaneDimension(Cvar_GetInt(screenwidth), 640);
    Resolution.height = SaneDimension(Cvar_GetInt(screenheight), 480);
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
    if (!options_.sums.empty() && !(sums_ = std::fopen(options_.sums.c_str(), "w"))) {
        std::fprintf(stderr, "velthra-bench: cannot write %s\n", options_.sums.c_str());
        std::exit(1);
    }
}

CBench* CBench::marking_ = nullptr;

void CBench::Mark(E_FramePart part) {
    CBench& bench = *marking_;
    if (bench.timingParts_) {
        // Each part finished before the next begins, so each is timed alone.
        glFinish();
        const double now = WallMs(), cpu = ProcessCpuMs();
        if (part != E_FramePart::Start3d) {
            bench.partMs_[int(bench.part_)] += now - bench.partStart_;
            bench.partCpuMs_[int(bench.part_)] += cpu - bench.partCpuStart_;
        }
        bench.part_ = part;
        bench.partStart_ = now;
        bench.partCpuStart_ = cpu;
    }
    if (part == E_FramePart::Swap && bench.capture_)
        bench.lastFrame_ = ReadBackBuffer();
    if (part == E_FramePart::Swap && bench.sums_) {
        // FNV-1a over the RGB bytes: two runs' lists differ where any frame does.
        uint64_t sum = 14695981039346656037ull;
        for (unsigned char byte : ReadBackBuffer())
            sum = (sum ^ byte) * 1099511628211ull;
        std::fprintf(bench.sums_, "%d %016llx\n", bench.frameCount_, static_cast<unsigned long long>(sum));
    }
}

void CBench::Frame(bool capture) {
    while (Window_PollEvent(event_))
        HandleEvent(event_, &console_);
    g_GameUs += STEP_US;
    capture_ = capture;
    Frame_Run(game_, console_, event_);
    capture_ = false;
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
            if (Cvar_GetInt(r_particles) != 0) {
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
    Cvar_Set(r_blur, blur ? "1" : "0");
    BlurShader_Enable(shaders);
    for (int i = 0; i < options_.warmup; i++) {
        if (play)
            Autopilot(true);
        Frame();
    }
    CSceneTimer timer;
    timer.Begin(name);
    for (int i = 0; i < PARTS; i++)
        partMs_[i] = partCpuMs_[i] = 0.0;
    timingParts_ = options_.parts;
    for (int i = 0; i < options_.frames; i++) {
        timer.FrameStart();
        if (play)
            Autopilot(true);
        Frame();
        timer.FrameEnd();
    }
    timingParts_ = false;
    scenes_.push_back(timer.End());
    if (!options_.shots.empty() || !options_.compare.empty())
        LastFrame(name, play);
    if (options_.parts) {
        std::string line = "parts \"" + name + "\"";
        char text[64];
        for (int i = 0; i < PARTS; i++) {
            std::snprintf(text, sizeof text, " %s_ms %.3f", PART_NAMES[i], partMs_[i] / options_.frames);
            line += text;
        }
        for (int i = 0; i < PARTS; i++) {
            std::snprintf(text, sizeof text, " %s_cpu_ms %.3f", PART_NAMES[i], partCpuMs_[i] / options_.frames);
            line += text;
        }
        partLines_.push_back(line);
    }
    BlurShader_Enable(true);
}

void CBench::LastFrame(const std::string& name, bool play) {
    std::string file = name;
    for (char& c : file)
        if (!std::isalnum(static_cast<unsigned char>(c)))
            c = '_';
    file += ".ppm";
    if (play)
        Autopilot(true);
    Frame(true);
    const int width = Resolution.width, height = Resolution.height;
    if (!options_.shots.empty() && !SavePicture(options_.shots + "/" + file, width, height, lastFrame_))
        std::fprintf(stderr, "velthra-bench: cannot write %s/%s\n", options_.shots.c_str(), file.c_str());
    if (options_.compare.empty())
        return;
    std::string line = "picture \"" + name + "\" ";
    int referenceWidth = 0, referenceHeight = 0;
    std::vector<unsigned char> reference;
    if (!LoadPicture(options_.compare + "/" + file, referenceWidth, referenceHeight, reference)) {
        line += "no_reference " + options_.compare + "/" + file;
    } else if (referenceWidth != width || referenceHeight != height) {
        line += "other_size " + std::to_string(referenceWidth) + "x" + std::to_string(referenceHeight);
    } else {
        const long differing = DifferingPixels(lastFrame_, reference);
        line += differing == 0 ? "identical"
                               : "differing_pixels " + std::to_string(differing) + " of " +
                                     std::to_string(long(width) * long(height));
    }
    pictureLines_.push_back(line);
}

void CBench::PlayScene(const std::string& name, int level, bool blur) {
    if (!Wanted(name))
        return;
    Cvar_Set(r_particles, "1");
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
    Cvar_Set(r_particles, "1");
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
    Cvar_Set(r_particles, "1");
    struct S_MenuScene {
        const char* name;
        bool blur, shaders;
    };
    for (const S_MenuScene& scene :
         {S_MenuScene{"menu, blur off", false, true}, S_MenuScene{"menu, blur on", true, true},
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
    // The yardstick, just before the scenes it is compared with.
    fill_ = MeasureFill(options_.self, options_.width, options_.height, options_.frames);
    if (fill_.frames == 0)
        notes_.push_back("the screen fill could not be measured");
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
    auto print = [](const char* kind, const S_SceneResult& scene) {
        std::printf("%s \"%s\" frames %d fps %.1f median_ms %.2f p95_ms %.2f max_ms %.2f cpu_ms_per_frame %.3f", kind,
                    scene.name.c_str(), scene.frames, scene.Fps(), scene.medianMs, scene.p95Ms, scene.maxMs,
                    scene.CpuPerFrame());
    };
    if (fill_.frames > 0) {
        print("fill", fill_);
        std::printf("\n");
    }
    for (const S_SceneResult& scene : scenes_) {
        print("scene", scene);
        // How many screen fills' time the frame takes, as a rate: 1 is a
        // frame as cheap as covering the screen once.
        if (fill_.frames > 0 && scene.name.find("rules") == std::string::npos)
            std::printf(" of_fill %.3f", scene.Fps() / fill_.Fps());
        std::printf("\n");
    }
    for (const std::string& line : pictureLines_)
        std::printf("%s\n", line.c_str());
    for (const std::string& line : partLines_)
        std::printf("%s\n", line.c_str());
    std::printf("memory floor_mib %.1f window_only_mib %.1f menu_mib %.1f play_mib %.1f menu_heap_free_mib %.1f\n",
                floor.drawn, floor.open, menuMiB_, playMiB_, menuHeapFreeMiB_);
    for (const std::string& note : notes_)
        std::printf("note %s\n", note.c_str());
    std::fflush(stdout);
}

void CBench::ShutDown() {
    if (sums_)
        std::fclose(sums_);
    // The game's shutdown less the saving: the run folder is thrown away.
    FrameMark_Reset();
    Deinitialize(game_);
    CloseErrorLog();
    deinitOpenAL(device_, context_);
}
