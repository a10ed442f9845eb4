// The particle rules, with no window.
#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "common/cvar.h"
#include "common/log.h"
#include "menu/bursts.h"
#include "menu/menu.h"
#include "particles/particles.h"
#include "test_support.h"

namespace {

std::vector<int> RandSequence(unsigned seed, int count) {
    std::srand(seed);
    std::vector<int> values;
    for (int i = 0; i < count; ++i)
        values.push_back(std::rand());
    std::srand(seed);
    return values;
}

std::vector<float> V(const float (&a)[3]) { return {a[0], a[1], a[2]}; }
std::vector<float> Position(const Particle& p) { return {p.x, p.y, p.z}; }
std::vector<float> Velocity(const Particle& p) { return {p.xi, p.yi, p.zi}; }

class ParticlesTest : public CvarTest {
protected:
    void SetUp() override {
        CvarTest::SetUp();
        InitErrorLog();
        AppStatus.verboseLog = true;
        DrivenClock_Start();
    }
    ScratchDir scratch;
};

S_ParticleValues Parse(const std::vector<std::string>& lines) {
    S_ParticleValues values;
    for (const std::string& line : lines)
        Particles_ParseLine(line, values);
    return values;
}

}  // namespace

TEST_F(ParticlesTest, FileKeysAndTheirConversions) {
    S_ParticleValues v = Parse({"texture glow.tga", "life 0.75", "spray 2.9", "color 1;0.5;3", "speed 0.5;-1",
                                "wind 1;2;3;4", "direction ;;-2.5", "Life 9", "lifetime 9", "#life 9"});
    EXPECT_EQ(v.texture, "glow.tga");
    EXPECT_FLOAT_EQ(v.life, 0.75f) << "keys are exact and case-sensitive";
    EXPECT_FLOAT_EQ(v.spray, 2.0f);
    EXPECT_EQ(V(v.color), (std::vector<float>{1, 0, 3})) << "whole numbers, not clamped here";
    EXPECT_EQ(V(v.speed), (std::vector<float>{0.5f, -1, 0})) << "a missing piece reads as 0";
    EXPECT_EQ(V(v.wind), (std::vector<float>{1, 2, 3}));
    EXPECT_EQ(V(v.direction), (std::vector<float>{0, 0, -2.5f}));

    // Empty values are skipped; later lines overwrite earlier ones.
    v = Parse({"spray -1.5", "texture a.tga", "life 0.5", "texture", "texture ", "life", "life ", "spray",
               "color 0;1;1", "color 1;1;0"});
    EXPECT_FLOAT_EQ(v.spray, -1.0f) << "truncated toward zero";
    EXPECT_EQ(v.texture, "a.tga");
    EXPECT_FLOAT_EQ(v.life, 0.5f);
    EXPECT_EQ(V(v.color), (std::vector<float>{1, 1, 0}));

    v = Parse({"spray 1e30", "speed " + std::string(300, '1') + ";7;8"});
    EXPECT_FLOAT_EQ(v.spray, 1e30f) << "huge sprays stay whole without overflowing an int";
    EXPECT_FLOAT_EQ(v.speed[1], 7.0f) << "an over-long piece does not swallow the next";
}

TEST_F(ParticlesTest, LoadFailuresReportAndLeaveTheParticlesInactive) {
    CParticles effect;
    EXPECT_FALSE(effect.Load("missing.txt"));
    WriteFile("data/scripts/bare.txt", "life 0.5\ncolor 1;1;1\n");
    EXPECT_FALSE(effect.Load("bare.txt"));
    EXPECT_NE(LogText().find("ERROR: could not load particles missing.txt\n"), std::string::npos) << LogText();
    EXPECT_FALSE(effect.particle[0].active || effect.particle[0].restart);

    // The missing file's line is tracing, the texture error is not.
    CloseErrorLog();
    InitErrorLog();
    AppStatus.verboseLog = false;
    effect.Load("missing.txt");
    effect.Load("bare.txt");
    EXPECT_EQ(LogText().find("could not load particles"), std::string::npos);
    EXPECT_NE(LogText().find("ERROR: cannot load particle texture: bare.txt\n"), std::string::npos) << LogText();
}

TEST_F(ParticlesTest, RegistrySlotsAndTheLimit) {
    EXPECT_EQ(ParticleLoad("a.txt"), 0) << "a new effect";
    EXPECT_EQ(ParticleLoad("a.txt"), 1) << "the first effect sits in slot 1";
    EXPECT_EQ(ParticleLoad("b.txt"), 0);
    EXPECT_EQ(ParticleLoad("b.txt"), 2) << "a failed load still takes its slot";

    Particles_Reset();
    for (int n = 1; n <= MAX_PARTICLE; ++n)
        ASSERT_EQ(ParticleLoad("fx" + std::to_string(n)), 0) << n;
    EXPECT_EQ(LogText().find("MAX_PARTICLE"), std::string::npos) << "1024 loads fit, slot 1024 included";
    EXPECT_EQ(ParticleLoad("fx1023"), 1023);
    EXPECT_EQ(ParticleLoad("fx1025"), 0);
    EXPECT_NE(LogText().find("ERROR: MAX_PARTICLE was execeded!\n"), std::string::npos);
}

TEST_F(ParticlesTest, DrawIsRefusedWhenSwitchedOffOrMissing) {
    Particles[1].Apply(Parse({"life 1", "color 1;1;1", "speed 1;1;1"}), 5);
    ParticleName[1] = "fx.txt";
    ASSERT_EQ(Cvar_Get("r_particles"), "0");
    EXPECT_FALSE(ParticleDraw("fx.txt", 1, 2, 3, true));
    EXPECT_FALSE(ParticleDraw("fx.txt", 1, 2, 3, false));
    Cvar_Set("r_particles", "1");
    EXPECT_FALSE(ParticleDraw("other.txt", 1, 2, 3, false));
    EXPECT_TRUE(Particles[1].particle[0].restart) << "not drawn, not moved";
    const std::string log = LogText(), fx = "WARNING: could not find fx.txt in particle stack!\n";
    EXPECT_NE(log.find(fx, log.find(fx) + 1), std::string::npos) << "on every call: " << log;
    EXPECT_NE(log.find("WARNING: could not find other.txt in particle stack!\n"), std::string::npos);
}

TEST_F(ParticlesTest, FirstStepMovesFromTheOriginThenRespawnsWithTheSameVelocityAlways) {
    CParticles effect;
    effect.Apply(Parse({"life 0.5", "spray 2", "speed 5;10;-5", "wind 1;0;4", "direction 1;-1;0.5"}), 9);
    const std::vector<int> rands = RandSequence(77, 4);
    DrivenClock_Frame(0.125);
    EXPECT_EQ(effect.Step(0, 4, 5, 6, true), E_ParticleStep::Respawned);
    EXPECT_EQ(std::rand(), rands[3]) << "three unused draws";
    const Particle& p = effect.particle[0];
    EXPECT_EQ(Position(p), (std::vector<float>{4, 5, 6}));
    EXPECT_EQ(Velocity(p), (std::vector<float>{3, 1, 2.5f})) << "spray + direction";
    EXPECT_FLOAT_EQ(p.fade, 1.0f) << "the file's life becomes the lifetime";
    EXPECT_TRUE(effect.particle[1].restart) << "one particle per call";

    // Position by the old velocity, then the velocity by the wind, then life.
    EXPECT_EQ(effect.Step(0, 0, 0, 0, true), E_ParticleStep::Moved);
    EXPECT_EQ(Position(p), (std::vector<float>{4 + 3.0f / 5 * 0.125f, 5 + 1.0f / 5 * 0.125f, 6 + 2.5f / 5 * 0.125f}));
    EXPECT_EQ(Velocity(p), (std::vector<float>{3.125f, 1, 3}));
    EXPECT_FLOAT_EQ(p.life, 0.375f);

    for (int frame = 0; frame < 3; ++frame)
        EXPECT_EQ(effect.Step(0, 7, 8, 9, true), E_ParticleStep::Moved);
    EXPECT_EQ(effect.Step(0, 7, 8, 9, true), E_ParticleStep::Respawned) << "life below zero";
    EXPECT_EQ(Position(p), (std::vector<float>{7, 8, 9}));
    EXPECT_EQ(Velocity(p), (std::vector<float>{3, 1, 2.5f})) << "the same velocity at every respawn";

    EXPECT_EQ(effect.Step(-1, 0, 0, 0, true), E_ParticleStep::Idle);
    EXPECT_EQ(effect.Step(PARTICLES_PER_EFFECT, 0, 0, 0, true), E_ParticleStep::Idle);
    EXPECT_EQ(CParticles().Step(0, 0, 0, 0, true), E_ParticleStep::Idle);
}

TEST_F(ParticlesTest, OneShotEndsOnTheFrameLifeGoesBelowZero) {
    CParticles effect;
    effect.Apply(Parse({"life 0.25"}), 9);
    DrivenClock_Frame(0.125);
    using E = E_ParticleStep;
    for (E expected : {E::Respawned, E::Moved, E::Moved, E::Ended, E::Ended})  // life 0.125, 0 (not over), -0.125
        EXPECT_EQ(effect.Step(0, 0, 0, 0, false), expected) << "a spent particle stays spent";

    // A file life below zero ends the effect on its very first draw.
    effect.Apply(Parse({"life -1"}), 9);
    EXPECT_EQ(effect.Step(0, 0, 0, 0, false), E_ParticleStep::Ended);
}

TEST_F(ParticlesTest, MenuBurstsStartOneAtATimeAtARandomPlace) {
    Resolution.width = 640, Resolution.height = 480;
    const std::vector<int> rands = RandSequence(1234, 400);
    size_t start = 0;
    while (rands[start] % 10 != 1)
        ++start;
    ASSERT_LT(start, 250u);
    for (size_t call = 0; call < start; ++call)
        DrawRandomParticles("none.txt");
    EXPECT_FALSE(g_MenuBurst.running);
    DrawRandomParticles("none.txt");
    ASSERT_TRUE(g_MenuBurst.running);
    EXPECT_EQ(g_MenuBurst.x, rands[start + 1] % 640);
    EXPECT_EQ(g_MenuBurst.y, rands[start + 2] % 480);

    // A running burst keeps its place and rolls once per call; a missing effect never ends it.
    for (int call = 0; call < 100; ++call)
        DrawRandomParticles("none.txt");
    EXPECT_EQ(g_MenuBurst.x, rands[start + 1] % 640);
    EXPECT_EQ(std::rand(), rands[start + 3 + 100]);

    // Menu_Draw offers the three effects in order to the one burst.
    const std::string before = LogText();
    Menu_Draw();
    EXPECT_EQ(LogText().substr(before.size()), "WARNING: could not find particles1.txt in particle stack!\n"
                                               "WARNING: could not find particles2.txt in particle stack!\n"
                                               "WARNING: could not find particles3.txt in particle stack!\n");
    Menu_Reset();
    ASSERT_FALSE(g_MenuBurst.running);

    Resolution.width = Resolution.height = 0;
    for (int call = 0; call < 1000 && !g_MenuBurst.running; ++call)
        DrawRandomParticles("none.txt");
    EXPECT_TRUE(g_MenuBurst.running) << "no screen yet: a burst starts without dividing by zero";
}
