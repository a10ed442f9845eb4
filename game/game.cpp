#include "game/game.h"

#include <GL/gl.h>

#include "app/appstatus.h"
#include "app/log.h"
#include "app/utils.h"
#include "console/cvar.h"
#include "game/gamestats.h"

void PreCacheData(int phase) {
    switch (phase) {
    // PENDING(rendering, models, particles, sound, menu issues): phases 1-7
    // load the font and images, the models, the skybox, the fallback texture,
    // the particle files, the sounds and the menu images.
    default:
        break;
    }
}

void CGame::LoadMedia(int phase) { PreCacheData(phase); }

void CGame::Init() {
    static bool initialised = false;
    if (initialised)
        return;
    VerboseLog(" -- attempting to INIT GAME\n");
    Game_Stats.playerName.clear();
    Game_Stats.restart = false;
    Game_Stats.newGame = false;
    Game_Stats.extraLifePoints = 0;
    Game_Stats.score = 0;
    Game_Stats.lives = 3;
    Reset("lvl1.xml");
    VerboseLog(" -- GAME INIT! entering GAME!\n");
    initialised = true;
}

void CGame::Reset(const std::string& /*world*/) {
    paddle[0] = 0.0f;
    paddle[1] = 0.0f;
    paddle[2] = 7.0f;
    // PENDING(game session issue): round wrap, score recording, World_Load.
}

void CGame::Run3d() {}
void CGame::ProcessGame() {}
void CGame::setCamera() {}
void CGame::controlCamera() {}
void CGame::Run2d(const SDL_Event& /*event*/) {}
void CGame::DisplayFPS() {}

void CGame::UpdateCvars() {
    float gamma = StringToFloat(Cvar_Get("brightness"));
    if (gamma < 0.3f)
        gamma = 0.3f;
    Resolution.gammaRed = Resolution.gammaGreen = Resolution.gammaBlue = gamma;
    SDL_SetGamma(gamma, gamma, gamma);
    // PENDING(console issue): con_red/green/blue/alpha into CConsole::SetColor.
    glPolygonMode(GL_FRONT_AND_BACK, StringToInt(Cvar_Get("wireframe")) != 0 ? GL_LINE : GL_FILL);
}

void CGame::Cleanup() {}
