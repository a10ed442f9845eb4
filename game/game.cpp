#include "game/game.h"

#include "common/appstatus.h"
#include "common/cvar.h"
#include "common/framemark.h"
#include "common/gamestats.h"
#include "common/log.h"
#include "common/scores.h"
#include "common/timer.h"
#include "common/utils.h"
#include "console/cconsole.h"
#include "game/ball.h"
#include "game/brick.h"
#include "game/world.h"
#include "input/input.h"
#include "menu/menu.h"
#include "particles/particles.h"
#include "render/font.h"
#include "render/glstate.h"
#include "render/texture.h"
#include "scene/camera.h"
#include "scene/objects.h"
#include "scene/skybox.h"
#include "sound/sound.h"

float ncatch = 0.0f;

namespace {
// Load order is also cleanup order.
const char* const MODELS[] = {"barr.solid", "ball.solid", "box.solid",   "box2.solid",
                              "box3.solid", "box4.solid", "bumper.solid"};

// CGame::Init runs once per process; Game_Reset allows it again.
bool g_GameInitialised = false;
// The music marks. The names are swapped on purpose: _GamePlaying marks the
// MENU music as playing and _MenuPlaying the GAME music
// (GameSession.MusicSwitchesOncePerChangeOfMode).
bool _GamePlaying = false;
bool _MenuPlaying = false;

// Paddle factors by screen height; the width plays no part.
struct S_PaddleFactor {
    int height;
    double factor;
};
const S_PaddleFactor PADDLE_FACTORS[] = {{480, 0.0255}, {600, 0.0205},  {768, 0.016}, {800, 0.0125},
                                         {900, 0.011},  {1050, 0.0095}, {1600, 0.011}};

// On the disk at once: a crash later in the session must not take the score with it.
void RecordScore() {
    SetScore();
    Scores_Save();
}
}  // namespace

double PaddleFactor(int screenHeight) {
    for (const S_PaddleFactor& row : PADDLE_FACTORS)
        if (row.height == screenHeight)
            return row.factor;
    return 0.0;
}

double PaddleKeyStep(int direction, double seconds, int screenHeight) {
    const double factor = PaddleFactor(screenHeight);
    if (factor == 0.0)
        return 0.0;
    // The walls are at x = -8 and 8, so 16 / factor pointer pixels apart.
    return direction * (16.0 / factor) * seconds;
}

MusicSwitch Game_MusicSwitch(bool menuShowing) {
    if (menuShowing && !_GamePlaying) {
        _MenuPlaying = false;
        _GamePlaying = true;
        return MusicSwitch::ToMenu;
    }
    if (!menuShowing && !_MenuPlaying) {
        _GamePlaying = false;
        _MenuPlaying = true;
        return MusicSwitch::ToGame;
    }
    return MusicSwitch::None;
}

void DisplayVersion() { glPrint(Resolution.width - 80, 25, 0, 0, "v%s", AppStatus.version.c_str()); }
void PreCacheData(int phase) {
    switch (phase) {
    case 1:
        FontLoad("Font.tga");
        PreCacheImage("cursor.tga", 1);
        PreCacheImage("splashscreen.tga", 1);
        g_PreLoadingStuff = 2;
        break;
    case 2:
        for (const char* model : MODELS)
            ObjectLoad(model);
        g_PreLoadingStuff = 4;
        break;
    case 3:
        Skybox.Load("sky/stars_", ".tga");
        g_PreLoadingStuff = 5;
        break;
    case 4:
        DefaultTexture();
        g_PreLoadingStuff = 6;
        break;
    case 5:
        for (const char* effect : {"particles1.txt", "particles2.txt", "particles3.txt", "particles4.txt"})
            ParticleLoad(effect);
        g_PreLoadingStuff = 8;
        break;
    case 6:
        SoundSystem.SetupSound();
        // The songs are streamed; the jingle is short enough to hold whole.
        snd_Menu = SoundSystem.OpenStream("data/sound/menu.ogg");
        snd_Game = SoundSystem.OpenStream("data/sound/game.ogg");
        snd_SplashScreen = SoundSystem.Load("data/sound/splashscreen.ogg");
        g_PreLoadingStuff = 9;
        break;
    case 7:
        Menu_Init();
        g_PreLoadingStuff = 10;
        break;
    default:
        break;
    }
}

void Game_Reset() {
    g_GameInitialised = false;
    _GamePlaying = false;
    _MenuPlaying = false;
    ncatch = 0.0f;
}

void CGame::LoadMedia(int phase) { PreCacheData(phase); }

void CGame::Init() {
    if (g_GameInitialised)
        return;
    VerboseLog(" -- attempting to INIT GAME\n");
    Menu_Setup();
    Game_Stats.playerName.clear();
    Game_Stats.restart = false;
    Game_Stats.newGame = false;
    Game_Stats.extraLifePoints = 0;
    Game_Stats.score = 0;
    Game_Stats.lives = 3;
    Camera.SetCamera(0, 0, 0, 0, 150, -149, 0, 1, 0);
    Reset("lvl1.xml");
    // The splash gives way to the main menu.
    if (AppStatus.startWithMenu)
        Menu_Screen("main");
    VerboseLog(" -- GAME INIT! entering GAME!\n");
    g_GameInitialised = true;
}

void CGame::Reset(const std::string& world) {
    paddle[0] = 0.0f;
    paddle[1] = 0.0f;
    paddle[2] = 7.0f;
    if (Game_Stats.level > 10) {  // after level 10 the second round starts at level 1
        Game_Stats.secondRound = true;
        Game_Stats.restart = true;
        Game_Stats.level = 1;
    }
    Game_Stats.ballLaunched = false;
    if (!Cvar_GetString(r_highscore).empty() || Game_Stats.newGame) {
        if (!Game_Stats.newGame)
            RecordScore();
        Game_Stats.playerName.clear();
        Game_Stats.score = 0;
        Game_Stats.extraLifePoints = 0;
        Cvar_Set(r_highscore, "");
        Game_Stats.newGame = false;
    }
    if (Game_Stats.restart) {
        World_Load("lvl1.xml");
        Game_Stats.restart = false;
    } else {
        World_Load(world);
    }
    World_Setup();
    Game_Stats.level++;
    Game_Stats.skipLevel = false;
}

void CGame::UpdateSession() {
    if (Level_Finished() || Game_Stats.skipLevel || Game_Stats.restart) {
        World_Cleanup();
        CBrick::Reset();
        // The level number is already one ahead: this loads the next level.
        Reset("lvl" + IntToString(Game_Stats.level) + ".xml");
    }
    // The name typed on "gameover" is recorded once the player leaves it.
    if (Menu_Screen_Get() != "gameover" && !Cvar_GetString(r_highscore).empty()) {
        RecordScore();
        Game_Stats.secondRound = false;
        Cvar_Set(r_highscore, "");
    }
    if (Game_Stats.lives < 1) {
        Menu_Screen("gameover");
        Game_Stats.newGame = true;
        Game_Stats.level = 1;
        Game_Stats.lives = 3;
        Game_Stats.secondRound = false;
    }
    if (Menu_Visible() && Menu_Screen_Get() == "main") {
        Game_Stats.playerName.clear();
        Game_Stats.restart = false;
        Game_Stats.secondRound = false;
        Game_Stats.newGame = true;
        Game_Stats.extraLifePoints = 0;
        Game_Stats.score = 0;
        Game_Stats.lives = 3;
        Game_Stats.level = 1;
    }
}

void CGame::Run3d() {
    UpdateSession();
    FrameMark(E_FramePart::Field);
    if (!Menu_Visible()) {
        // The opaque field before the sky, not after: the sky is then drawn
        // only where the field left the depth buffer clear, instead of over
        // the whole screen and half of it again. The picture is the same,
        // since the field lies inside the sky box and nothing is blended
        // with the sky before the bricks, which still come after it.
        World_DrawField();
        FrameMark(E_FramePart::Sky);
        Skybox.Draw_Skybox(Camera.getPosX(), Camera.getPosY(), Camera.getPosZ(), 100, 100, 100);
        FrameMark(E_FramePart::Bricks);
        World_DrawBricks();
    }
}

void CGame::MovePaddle() {
    // Keys typed into the console are the console's.
    const int direction = AppStatus.consoleVisible ? 0 : Keys_ArrowDirection();
    if (direction != 0)
        Mouse_MoveX(PaddleKeyStep(direction, Timer.get_ticks(), Resolution.height), Resolution.width);
    const double factor = PaddleFactor(Resolution.height);
    if (factor != 0.0)
        paddle[0] = float(double(Keys_GrabMouseX()) * factor - 8.0);
    paddle[1] = 0.0f;
    paddle[2] = 7.0f;
    Game_Stats.paddleX = paddle[0];
    Game_Stats.paddleZ = paddle[2];
    if (!Game_Stats.ballLaunched) {
        Game_Stats.ballStartX = paddle[0];
        Game_Stats.ballStartZ = paddle[2];
    }
}

void CGame::ProcessGame() {
    SoundSystem.SetVolume();
    SoundSystem.CheckForActiveSource(snd_Game);
    SoundSystem.CheckForActiveSource(snd_Menu);
    SoundSystem.CheckForActiveSource(snd_SplashScreen);
    if (Menu_Visible())
        return;
    MovePaddle();
    S_Pos position, rotation, size, colour;
    position.x = paddle[0];
    position.y = 0.0f;
    position.z = 7.0f;
    size.x = 0.5f;
    size.y = 0.8f;
    size.z = 0.5f;
    colour.red = colour.green = colour.blue = colour.alpha = 1.0f;
    ObjectDraw("bumper.solid", position, rotation, size, colour);
    if (!Game_Stats.ballLaunched)
        Ball.Draw(paddle[0], 0.0f, 7.0f - 1.0f);  // resting on the paddle, one unit toward the far wall
    else
        Ball.Bounce();
}

void CGame::setCamera() {
    if (Menu_Visible())
        Camera.SetCamera(0, 0, 0, 0, 150, -149, 0, 1, 0);  // up into the sky behind the menus
    else
        Camera.SetCamera(0.3f, 10.0f, 19.7f, -1.0f, -80.0f, -174.0f, 0, 1, 0);  // behind the paddle
}

void CGame::controlCamera() { Camera.ControlCamera(); }

void CGame::Run2d(const SDL_Event& event) {
    const bool menu = Menu_Visible();
    // Music starts from its beginning on every change between menu and play.
    switch (Game_MusicSwitch(menu)) {
    case MusicSwitch::ToMenu:
        SoundSystem.Stop(snd_Game);
        SoundSystem.Play(snd_Menu, true);
        break;
    case MusicSwitch::ToGame:
        SoundSystem.Stop(snd_Menu);
        SoundSystem.Play(snd_Game, true);
        break;
    case MusicSwitch::None:
        break;
    }
    if (menu) {
        Menu_Draw();  // behind the menu's pictures
        DisplayVersion();
    } else {
        Game_HUD();
    }
    Menu_Show(event);
    Mouse_Draw();
    DisplayFPS();
}

void CGame::DisplayFPS() {
    if (Cvar_GetInt(showfps) < 1)
        return;
    glPrint(10, 10, 1, 0, "Frame Rate  %i", GetFPS());
}

void CGame::UpdateCvars(CConsole& console) {
    float gamma = Cvar_GetFloat(brightness);
    if (gamma < 0.3f)
        gamma = 0.3f;
    Resolution.gammaRed = Resolution.gammaGreen = Resolution.gammaBlue = gamma;
    SetGamma(gamma);
    console.SetColor(float(Cvar_GetInt(con_red)), float(Cvar_GetInt(con_green)), float(Cvar_GetInt(con_blue)),
                     float(Cvar_GetInt(con_alpha)));
    SetWireframe(Cvar_GetInt(wireframe) != 0);
}

void CGame::Cleanup() {
    for (const char* model : MODELS)
        ObjectCleanup(model);
    SoundSystem.Remove(snd_Menu);
    SoundSystem.Remove(snd_Game);
    SoundSystem.Remove(snd_SplashScreen);
    SoundSystem.CleanupSound();
    CleanupTextures();
    Menu_Cleanup();
    World_Cleanup();
    KillFont();
}

void CGame::MouseInput() {
    if (Menu_Visible())
        return;
    Camera.RotateByMouse(Keys_GrabMouseX(), Keys_GrabMouseY(), Resolution.width / 2, Resolution.height / 2);
    Mouse_Warp(Resolution.width / 2, Resolution.height / 2);
}

void CGame::KeyUp() { ncatch += 0.0005f; }
void CGame::KeyDown() { ncatch -= 0.0005f; }
void CGame::KeyLeft() {}
void CGame::KeyRight() {}
