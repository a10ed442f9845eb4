// The brick field: up to 32 CBrick objects in the table Brick, built from the
// level's world list (game/world.h). Each frame every brick tests whether the
// ball touches it, turns the ball, scores the hit and draws itself; a broken
// brick fades away and stays in the table until the level's clean-up.
//
// The rules of a brick's frame live in Update, which needs no window; Draw
// runs Update and then draws exactly what the record says.
#pragma once

constexpr int MAX_BRICKS = 32;  // places in the brick table

// What a brick's frame draws. The fading copies are decided before the hit
// and the whole brick after it, so a brick that breaks this frame is drawn
// neither way.
struct S_BrickFrame {
    bool fading = false;              // two copies, displaced by +fade and -fade
    float fade = 0.0f;                // displacement of the copies; their alpha is 0.7 - fade
    bool whole = false;               // the unbroken brick
    float alpha = 1.0f;               // of the unbroken brick: 0.7 under "r_blur", else 1.0
    const char* model = "box.solid";  // by hit points, after this frame's hit
};

class CBrick {
public:
    // Kind 0 becomes 3 in the second round; raises the brick count.
    CBrick(float x, float z, int type);

    static int Count() { return m_nNumBricks; }  // bricks created since the last Reset
    static void Reset() { m_nNumBricks = 0; }    // deletes nothing

    bool Alive() const { return broken; }  // the name is the game's own: true means broken
    void Draw();                           // Update with the timer's frame time, then the drawing
    // One frame of this brick with frame time t (seconds); no drawing.
    S_BrickFrame Update(float t);

    // The state a frame leaves, read by the tests: the centre in field units,
    // the hits left, how far a broken brick's copies have drifted apart, and
    // whether the ball is in its touch box this frame.
    float GetX() const { return x; }
    float GetZ() const { return z; }
    int GetHitPoints() const { return hitPoints; }
    float GetFade() const { return fade; }
    bool IsTouched() const { return touched; }

    static int m_nNumBricks;  // bricks created since the last Reset

private:
    // The steps of Update.
    S_BrickFrame FadeOut(float t);  // the fading copies of a broken brick, or a whole one's alpha
    void TakeHit();                 // turns the ball, scores, breaks or weakens the brick

    float x;
    float z;
    bool broken = false;   // never cleared
    bool touched = false;  // the ball is inside the touch box this frame
    int hitPoints;         // 0 to 3; also picks the model
    float fade = 0.0f;     // grows once broken
};

// Owned by the table: created by World_Setup, deleted by World_Cleanup.
extern CBrick* Brick[MAX_BRICKS];

// True when no brick was created or every brick in the table is broken.
bool Level_Finished();

// Start-up state: deletes every brick still in the table, empties it and
// sets the count to 0.
void Brick_Reset();
