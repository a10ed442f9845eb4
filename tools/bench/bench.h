// The benchmark's run of the game: start-up in SDL_main's order, loading
// to the main menu, the scenes, and the report (see main.cpp).
#pragma once

#include <SDL.h>

#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/cmdline.h"
#include "common/framemark.h"
#include "console/cconsole.h"
#include "environment.h"
#include "game/game.h"
#include "measure.h"
#include "sound/openal.h"

struct S_Options {
    int width = 800, height = 600;
    int frames = 300;         // timed frames of each drawn scene
    int warmup = 30;          // untimed frames before each
    int rulesFrames = 20000;  // simulated frames of the rules-only scene
    std::string only;         // run only scenes whose name contains this
    std::string game = VELTHRA_GAME_DIR;
    std::vector<std::pair<std::string, std::string>> cvars;  // set once the menu shows
    int blurReduction = 0;                                   // 0: the game's own
    bool parts = false;                                      // time the parts of each drawn frame
    std::string shots;                                       // a folder for a picture of each drawn scene's last frame
    std::string compare;  // a folder of such pictures to compare the last frames with
    std::string sums;     // a file for a checksum of every drawn frame
    std::string self;     // this executable, for the floor measurement
};

class CBench {
public:
    CBench(const S_Options& options, double mainMs) : options_(options), mainMs_(mainMs) {}

    void StartUp();
    void LoadUntilTheMenu();
    void RunScenes();
    void Report(const S_Floor& floor);
    void ShutDown();

private:
    // The pending events, then one pass of the main loop that draws
    // (Frame_Run). `capture`: the back buffer is kept in lastFrame_ before
    // the swap.
    void Frame(bool capture = false);
    // The frame's marks (g_FrameMark) land here. With --parts, during a
    // scene's timed frames, each part is finished (glFinish) before the next
    // begins, to see what costs what; such a frame is slower than one whose
    // parts the driver overlaps.
    static void Mark(E_FramePart part);
    static CBench* marking_;
    bool timingParts_ = false;
    E_FramePart part_ = E_FramePart::Start3d;  // the part being timed
    double partStart_ = 0.0, partCpuStart_ = 0.0;
    FILE* sums_ = nullptr;                  // --frame-sums: one line per drawn frame
    bool capture_ = false;                  // Mark keeps the back buffer ...
    std::vector<unsigned char> lastFrame_;  // ... here (RGB, top row first)
    // One more frame of a scene, captured, saved under --shots and compared
    // with the picture under --compare.
    void LastFrame(const std::string& name, bool play);
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
    void CountLosses();

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
    S_SceneResult fill_;  // one screen fill in a window of the same size
    std::vector<std::string> pictureLines_;
    static constexpr int PARTS = FRAME_PARTS;  // named in E_FramePart's order
    static constexpr const char* PART_NAMES[PARTS] = {"start_3d",    "field", "sky", "bricks",
                                                      "paddle_ball", "blur",  "2d",  "swap"};
    double partMs_[PARTS] = {}, partCpuMs_[PARTS] = {};  // wall and processor time of each part
    std::vector<std::string> partLines_;
    std::vector<std::string> notes_;
};
