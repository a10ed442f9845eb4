// The shipped data as the game's own loaders read it, without a complaint.
#include <vorbis/vorbisfile.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "common/config.h"
#include "game/brick.h"
#include "game/world.h"
#include "gl_test_env.h"
#include "menu/menu.h"
#include "particles/particles.h"
#include "render/texture.h"
#include "render/tga.h"
#include "scene/solid.h"

namespace {

class GLGameData : public GLTest {
protected:
    void SetUp() override {
        GLTest::SetUp();
        GLTest_LinkGameData();
        DefaultTexture();  // so that a picture that fails is told, not taken for an empty one
    }
    void TearDown() override {
        for (const std::string& line : AppStatus.consoleLines)
            for (const char* complaint : {"WARNING", "ERROR", "FAILURE"})
                EXPECT_EQ(line.find(complaint), std::string::npos) << line;
        GLTest::TearDown();
    }
};

}  // namespace

TEST_F(GLGameData, EveryPictureModelAndParticleFileLoads) {
    const std::vector<std::string> pictures = ListFiles(GameData("textures"));
    for (const char* name : {"Font.tga", "cursor.tga", "splashscreen.tga", "conback.tga", "sky/stars_b.tga",
                             "volume.tga", "dot.tga", "check.tga", "box.tga", "arrowrt.tga", "arrowlt.tga"})
        EXPECT_EQ(std::count(pictures.begin(), pictures.end(), name), 1) << name << " is loaded by name";
    for (const std::string& name : pictures) {
        S_TgaImage t;
        EXPECT_TRUE(TGA_Read(GameData("textures/" + name), t)) << name;
        // Drivers without non-power-of-two textures refuse the others.
        EXPECT_TRUE((t.width & (t.width - 1)) == 0 && (t.height & (t.height - 1)) == 0) << name;
    }
    for (const std::string& name : ListFiles(GameData("models"))) {
        CSolid model;
        EXPECT_TRUE(model.Load(name) && model.numTriangles > 0) << name;
        EXPECT_TRUE(model.texture != 0 && model.texture != g_DefaultTex) << name;
        model.Cleanup();
    }
    for (int i = 1; i <= 4; i++)
        EXPECT_TRUE(CParticles().Load("particles" + std::to_string(i) + ".txt")) << i;
}

TEST_F(GLGameData, TenLevelsOfAtMost32BricksWithinTheBallsReach) {
    for (int level = 1; level <= 10; level++) {
        const std::string name = "lvl" + std::to_string(level) + ".xml";
        GameWorld.clear();
        World_Load(name);
        EXPECT_TRUE(!GameWorld.empty() && GameWorld.size() <= size_t(MAX_BRICKS)) << name;
        // A brick beyond the walls (x +-8) or the far wall (z -16) is never hit: its level never ends.
        for (const S_GameWorld& b : GameWorld)
            EXPECT_TRUE(b.type >= 0 && b.type <= 3 && std::abs(b.x) <= 8 && b.z >= -16 && b.z <= -2)
                << name << ": " << b.type << " at " << b.x << ", " << b.z;
    }
}

TEST_F(GLGameData, MenuScreensHoldTheirActionsAndEveryGotoAndPictureExists) {
    Menu_Load();
    std::set<std::string> screens, present;
    const char* const kinds[6] = {"button", "label", "checkbox", "slider", "Listbox", "textbox"};
    for (const S_GameMenu& i : GameMenu)  // a label carries the button's func before it: it is known by its picture
        screens.insert(i.menu),
            present.insert(i.menu + " " + kinds[i.type] + " " + (i.func.empty() || i.type == 1 ? i.name : i.func));
    for (const char* want :
         {"main label title.tga", "main button restart", "main button goto options", "main button goto scores",
          "main button cmd quit", "options checkbox fullscreen", "options checkbox r_blur", "options checkbox showfps",
          "options checkbox r_particles", "options slider volume", "options slider brightness",
          "options button goto main", "scores button goto main", "pause button cvar m_menu 0", "pause button goto main",
          "gameover textbox r_highscore", "gameover label lbl_returnhint.tga", "gameover button goto main"})
        EXPECT_TRUE(present.count(want)) << want;
    int lists = 0;
    for (const S_GameMenu& i : GameMenu) {
        EXPECT_TRUE(i.type > 1 || i.func.rfind("goto ", 0) != 0 || screens.count(i.func.substr(5))) << i.func;
        EXPECT_TRUE(i.type > 1 || std::filesystem::is_regular_file(GameData("textures/" + i.name))) << i.name;
        if (i.type != 4)
            continue;
        lists++;  // the resolution list of the options sets the six presets the settings know, and nothing more
        EXPECT_EQ(i.menu, "options");
        for (int r = 0; r < MENU_LIST_ROWS; r++)
            EXPECT_EQ(i.listValues[r], r >= 6 ? ""
                                              : "m_res " + std::to_string(r + 1) + "\"screenwidth " +
                                                    std::to_string(RESOLUTION_PRESETS[r].width) + "\"screenheight " +
                                                    std::to_string(RESOLUTION_PRESETS[r].height));
    }
    EXPECT_EQ(lists, 1);
}

TEST(GameData, EveryPieceOfMusicDecodesWholeInStereoAt44100) {
    for (const std::string& name : ListFiles(GameData("sound"))) {
        OggVorbis_File vf;
        ASSERT_EQ(ov_fopen(GameData("sound/" + name).c_str(), &vf), 0) << name;
        EXPECT_EQ(std::make_pair(ov_info(&vf, -1)->channels, ov_info(&vf, -1)->rate), std::make_pair(2, 44100L));
        long long frames = 0;
        char buf[8192];
        for (int section = 0, n; (n = ov_read(&vf, buf, sizeof buf, 0, 2, 1, &section)) > 0;)
            frames += n / 4;
        EXPECT_TRUE(frames > 0 && frames == ov_pcm_total(&vf, -1)) << name << ": " << frames << " frames decoded";
        ov_clear(&vf);
    }
}
