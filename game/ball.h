// The ball: one global CBall. While it rests on the paddle the session driver
// draws it there; once launched, Bounce runs one frame of flight (serve, loss,
// paddle catch, walls, paddle response, speed, move, extra life) and draws the
// ball with its particle trail. The bricks read and turn its direction and
// clear its available flag when they are hit.
//
// The rules of a frame live in Step, which needs no window, so a whole level
// can be played with a chosen frame time; Bounce is Step plus the drawing.
#pragma once

// Where Bounce draws the ball model this frame: the position the ball had
// before the frame's move, one frame behind its particle trail.
struct S_BallDraw {
    float x = 0.0f;
    float z = 0.0f;
};

class CBall {
public:
    CBall();  // a random first direction 0 or 1 (rand() % 2)

    void Draw(float x, float y, float z);  // "ball.solid" at (x, y, z)
    void Bounce();                         // Step with the timer's frame time, then the drawing
    // One frame of flight with frame time t (seconds); no drawing.
    S_BallDraw Step(float t);

    void ChangeDirection(int d);  // also makes the ball available
    // The state a frame leaves, read by the bricks, the session and the tests;
    // positions are field units (x across, z along, the paddle at z = 7).
    int GetDirection() const { return direction; }
    float GetX() const { return x; }
    float GetZ() const { return z; }
    // Whether the ball may hit a brick: a hit clears it, the paddle sets it.
    void Available(bool flag) { available = flag; }
    bool IsAvailable() const { return available; }

    int GetAngle() const { return angle; }        // sideways speed from the paddle; -1 after a centre hit
    float GetSpeed() const { return speed; }      // grows while the ball flies
    bool IsOnPaddle() const { return onPaddle; }  // inside the paddle's catch box this frame
    void SetPosition(float newX, float newZ);     // puts the ball somewhere without a serve

private:
    // The steps of Step, in the order it runs them.
    void Serve();             // onto the serving position, speed 0
    void LoseBehindPaddle();  // past the loss line: one life less, back to resting
    void CatchOnPaddle();     // in or out of the paddle's catch box
    void BounceOffWalls();
    void BounceOffPaddle();  // while in the catch box: direction and angle by where it hits
    void Fly(float t);       // speeds up and moves

    int direction;  // 0 (+x, -z), 1 (-x, -z), 2 (+x, +z), 3 (-x, +z); -z is away from the paddle
    int angle = 0;  // sideways speed from the paddle; -1 marks a hit on its centre
    float x = 0.0f;
    float z = 0.0f;
    bool available = false;  // may hit a brick
    bool onPaddle = false;   // inside the paddle's catch box this frame
    float speed = 0.0f;      // grows while the ball flies
};

extern CBall Ball;

// A new ball (the constructor's random direction) and a cleared level speed.
void Ball_Reset();
