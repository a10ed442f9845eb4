// Keyboard and mouse state. The main loop copies each key and mouse event
// into these records; menus, widgets, the console and the game read them
// through the query functions and never poll SDL themselves.
//
// Presses that come and go between two frames. The records alone forget a
// press whose release arrives before the next frame is drawn (a touchpad tap)
// and a key typed before the previous one was read (a fast typist). So:
// - a button released before any frame saw its press keeps "a button is down"
//   and its click flag until the end of the next frame: that frame, and only
//   that one, sees code 1 (or 2);
// - every key-down also goes into a small queue (KEY_QUEUE_SIZE) that
//   Key_Input empties one key per call, so each key is typed by exactly one
//   call even when it was already released. SD_Keys still holds the last
//   key-down for Keys_GrabInput's level semantics.
#pragma once

#include <SDL.h>

#include <string>

struct S_KeyFlags {
    bool keyReleased = false;  // set by key-up and by text entry once it took a key
};

struct S_MouseFlags {
    bool rightPressedLast = false;  // cleared after every frame
    bool leftPressedLast = false;   // cleared after every frame
    bool buttonDown = false;
    bool rightClick = false;
    bool leftClick = false;
};

extern SDL_KeyboardEvent SD_Keys;  // last key-down event
extern S_KeyFlags SDL_Keys;
extern SDL_MouseMotionEvent SD_Mouse;  // last mouse-motion event
extern S_MouseFlags SDL_Mouse;

const SDL_Event& Keys_GetInput(const SDL_Event& event);  // the event itself, unchanged
// The pointer in window pixels from the top-left corner, as of the last
// motion event (0, 0 before any); presses do not move it.
int Keys_GrabMouseX();
int Keys_GrabMouseY();
bool Keys_GrabInput(int key);  // level semantics: true until another key is pressed
// The arrow keys held for the paddle: -1 Left alone, 1 Right alone, 0 neither
// or both. Unlike Keys_GrabInput this follows the key-ups.
int Keys_ArrowDirection();

// 1 left went down this frame, 2 right went down this frame, 3 both (not
// reachable), 4 left held after its first frame, 5 right held, 0 nothing.
int Mouse_GrabInput();

// Keys typed but not yet taken by text entry, at most. A queue that no text
// entry read during a frame is emptied when the frame ends, so keys typed
// during play or on a screen without a text box are never typed later.
constexpr int KEY_QUEUE_SIZE = 16;

// Text entry, once per key press; the text may reach maxLength + 1 characters.
std::string Key_Input(const std::string& text, size_t maxLength);
// The key's Unicode value as a character: 0 for none, '?' beyond ASCII.
// SDL's Unicode translation must be on: the process aborts otherwise.
char getCharValue(const SDL_KeyboardEvent& keyRecord);
bool SDL_checkKeys(const std::string& keyName);  // false for the non-character keys
// SDL's name of a key symbol ("a", "page up", "`"); "" for none.
std::string Keys_KeyName(int sym);

// Event handlers of the main loop (the rest of the event table lives in app/events.cpp).
void Input_KeyDown(const SDL_Event& event);
void Input_KeyUp(const SDL_Event& event);
void Input_MouseMotion(const SDL_Event& event);
void Input_MouseButtonDown(const SDL_Event& event);
void Input_MouseButtonUp();
void Input_EndFrame();  // a click lasts one frame; applies a release held back for it
void Input_Reset();     // records zeroed, key queue empty, no release held back

// Moves the system pointer (and so the next motion event) to (x, y).
void Mouse_Warp(int x, int y);
// Moves the pointer Keys_GrabMouseX reads by dx pixels, kept within 0 to
// width - 1; fractions add up over calls, so small steps of fast frames are
// not lost. The system pointer is warped along, or the mouse's next motion
// event would snap back to where it was left.
void Mouse_MoveX(double dx, int width);

// The drawn cursor, while a menu shows; its top-left corner is the hot spot.
void Mouse_Draw();
