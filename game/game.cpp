#include "game/game.h"

#include "app/appstatus.h"
#include "app/log.h"
#include "app/timer.h"
#include "app/utils.h"
#include "console/cconsole.h"
#include "console/cvar.h"
#include "game/gamestats.h"
#include "game/scores.h"
#include "menu/input.h"
#include "menu/menu.h"
#include "render/font.h"
#include "render/glstate.h"
#include "render/texture.h"
#include "scene/camera.h"
#include "scene/objects.h"
#include "scene/skybox.h"

namespace {
// Load order is also cleanup order.
const char* const MODELS[] = {"barr.solid", "ball.solid", "box.solid", "box2.solid",
                              "box3.solid", "box4.solid", "bumper.solid"};

// CGame::Init runs once per process; Game_Reset allows it again.
bool g_GameInitialised = false;

bool MenuShowing() { return StringToInt(Cvar_Get("m_menu")) != 0; }
} // namespace

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
        // PENDING(particles issue): ParticleLoad of "particles1.txt" to "particles4.txt".
        g_PreLoadingStuff = 8;
        break;
    case 6:
        // PENDING(sound issue): SetupSound and the menu, game and splash music.
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

void Game_Reset() { g_GameInitialised = false; }

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

void CGame::Reset(const std::string& /*world*/) {
    paddle[0] = 0.0f;
    paddle[1] = 0.0f;
    paddle[2] = 7.0f;
    // PENDING(game session issue): round wrap, score recording, World_Load
    // and World_Setup, level advance.
}

void CGame::Run3d() {
    // PENDING(game session issue): level change, game over and the main
    // menu's fresh-game reset.
    if (!MenuShowing()) {
        Skybox.Draw_Skybox(Camera.getPosX(), Camera.getPosY(), Camera.getPosZ(), 100, 100, 100);
        // PENDING(level issue): World_Draw.
    }
}

void CGame::ProcessGame() {
    // PENDING(game session, sound issues): volume, paddle from the mouse,
    // ball rest and bounce.
}

void CGame::setCamera() {
    if (MenuShowing())
        Camera.SetCamera(0, 0, 0, 0, 150, -149, 0, 1, 0);  // up into the sky behind the menus
    else
        Camera.SetCamera(0.3f, 10.0f, 19.7f, -1.0f, -80.0f, -174.0f, 0, 1, 0);  // behind the paddle
}

void CGame::controlCamera() { Camera.ControlCamera(); }

void CGame::Run2d(const SDL_Event& event) {
    if (MenuShowing()) {
        // PENDING(sound issue): switch to the menu music once per change.
        glPrint(Resolution.width - 80, 25, 0, 0, "v%s", AppStatus.version.c_str());
    } else {
        // PENDING(sound issue): switch to the game music once per change.
        Game_HUD();
    }
    Menu_Show(event);
    Mouse_Draw();
    DisplayFPS();
}

void CGame::DisplayFPS() {
    if (StringToInt(Cvar_Get("showfps")) < 1)
        return;
    glPrint(10, 10, 1, 0, "Frame Rate  %i", GetFPS());
}

void CGame::UpdateCvars(CConsole& console) {
    float gamma = StringToFloat(Cvar_Get("brightness"));
    if (gamma < 0.3f)
        gamma = 0.3f;
    Resolution.gammaRed = Resolution.gammaGreen = Resolution.gammaBlue = gamma;
    SetGamma(gamma);
    console.SetColor(float(StringToInt(Cvar_Get("con_red"))), float(StringToInt(Cvar_Get("con_green"))),
                     float(StringToInt(Cvar_Get("con_blue"))), float(StringToInt(Cvar_Get("con_alpha"))));
    SetWireframe(StringToInt(Cvar_Get("wireframe")) != 0);
}

void CGame::Cleanup() {
    for (const char* model : MODELS)
        ObjectCleanup(model);
    // PENDING(sound issue): Remove the three sounds, CleanupSound.
    CleanupTextures();
    Menu_Cleanup();
    // PENDING(level issue): World_Cleanup.
    KillFont();
}
