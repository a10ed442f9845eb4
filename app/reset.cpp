#include "app/reset.h"

#include <cstdlib>

#include "app/frame.h"
#include "app/quit.h"
#include "app/window.h"
#include "common/appstatus.h"
#include "common/cmd.h"
#include "common/cvar.h"
#include "common/framemark.h"
#include "common/gamestats.h"
#include "common/log.h"
#include "common/savefile.h"
#include "common/scores.h"
#include "common/timer.h"
#include "console/cconsole.h"
#include "game/ball.h"
#include "game/game.h"
#include "game/world.h"
#include "input/input.h"
#include "menu/menu.h"
#include "menu/widgets.h"
#include "particles/particles.h"
#include "render/blur.h"
#include "render/blur_shader.h"
#include "render/font.h"
#include "render/glext.h"
#include "render/glstate.h"
#include "render/texture.h"
#include "scene/camera.h"
#include "scene/objects.h"
#include "scene/skybox.h"
#include "sound/sound.h"

void App_ResetAll() {
    CloseErrorLog();
    AppStatus_Reset();
    GameStats_Reset();
    Timer_Reset();
    Cvar_Clear();
    Input_Reset();
    Frame_Reset();
    Game_Reset();
    Cmd_Reset();
    Console_Reset();
    Menu_Reset();  // the menu's bursts too
    Widgets_Reset();
    Scores_Reset();
    SaveFile_Reset();
    Quit_Reset();
    Particles_Reset();
    Sound_Reset();  // deletes its sources and buffers while its context is current
    // The C library's random numbers as the process starts them: unseeded
    // (seed 1) until SDL_main seeds them, with one already drawn by the
    // ball's constructor, which Ball_Reset draws again.
    std::srand(1);
    Ball_Reset();
    World_Reset();  // the brick table too
    BlurShader_Reset();
    Blur_Reset();
    ObjectReset();  // before GLext_Reset: a model's vertex buffers are deleted through it
    Skybox_Reset();
    Camera_Reset();
    Texture_Reset();
    Font_Reset();
    GLext_Reset();
    FrameMark_Reset();
    GLState_Reset();
    Window_Reset();
}
