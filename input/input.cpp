#include "input/input.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "common/cvar.h"
#include "common/log.h"
#include "common/utils.h"
#include "render/draw2d.h"
#include "render/texture.h"

SDL_KeyboardEvent SD_Keys;
S_KeyFlags SDL_Keys;
SDL_MouseMotionEvent SD_Mouse;
S_MouseFlags SDL_Mouse;

namespace {
// Key-downs not yet taken by Key_Input, oldest first, in a ring.
SDL_KeyboardEvent g_keyQueue[KEY_QUEUE_SIZE];
int g_keyFirst = 0;
int g_keyCount = 0;
bool g_keyAskedThisFrame = false;  // some text entry read the queue during this frame
bool g_keyOverflowLogged = false;  // one log line per overflow, not one per key

// A button-up that came before any frame saw its press: applied by Input_EndFrame.
bool g_releaseHeld = false;

bool g_leftHeld = false;  // the arrow keys, from their own downs and ups
bool g_rightHeld = false;
// The part of a pixel that Mouse_MoveX has moved the pointer beyond SD_Mouse.x.
double g_pointerFraction = 0.0;

// The pointer's picture, found in the texture cache at its first draw.
bool g_cursorLooked = false;
unsigned int g_cursor = 0;

void KeyQueue_Push(const SDL_KeyboardEvent& key) {
    if (g_keyCount == KEY_QUEUE_SIZE) {
        // Only reachable when frames stop while keys keep coming; the newest
        // keys are the ones refused, so what was typed keeps its order.
        if (!g_keyOverflowLogged)
            Log(" -- WARNING: key queue full, extra keys dropped\n");
        g_keyOverflowLogged = true;
        return;
    }
    g_keyQueue[(g_keyFirst + g_keyCount) % KEY_QUEUE_SIZE] = key;
    g_keyCount++;
}

bool KeyQueue_Pop(SDL_KeyboardEvent& key) {
    if (g_keyCount == 0)
        return false;
    key = g_keyQueue[g_keyFirst];
    g_keyFirst = (g_keyFirst + 1) % KEY_QUEUE_SIZE;
    g_keyCount--;
    if (g_keyCount == 0)
        g_keyOverflowLogged = false;
    return true;
}

void KeyQueue_Clear() {
    g_keyFirst = 0;
    g_keyCount = 0;
    g_keyOverflowLogged = false;
}
}  // namespace

const SDL_Event& Keys_GetInput(const SDL_Event& event) { return event; }

int Keys_GrabMouseX() { return SD_Mouse.x; }
int Keys_GrabMouseY() { return SD_Mouse.y; }

bool Keys_GrabInput(int key) { return int(SD_Keys.keysym.sym) == key; }

int Keys_ArrowDirection() { return int(g_rightHeld) - int(g_leftHeld); }

int Mouse_GrabInput() {
    if (SDL_Mouse.leftPressedLast && SDL_Mouse.buttonDown)
        return 1;
    if (SDL_Mouse.rightPressedLast && SDL_Mouse.buttonDown)
        return 2;
    if (SDL_Mouse.leftPressedLast && SDL_Mouse.rightPressedLast)
        return 3;
    if (SDL_Mouse.leftClick)
        return 4;
    if (SDL_Mouse.rightClick)
        return 5;
    return 0;
}

char getCharValue(const SDL_KeyboardEvent& keyRecord) {
    if (SDL_EnableUNICODE(-1) != 1) {
        std::fprintf(stderr, "%s:%u: failed assertion `%s'\n", "error", 210u,
                     "SDL_EnableUNICODE(SDL_QUERY) == SDL_ENABLE");
        std::abort();
    }
    Uint16 ch = keyRecord.keysym.unicode;
    if (ch == 0)
        return 0;
    if (ch < 128)
        return char(ch);
    return '?';
}

bool SDL_checkKeys(const std::string& keyName) {
    static const char* const NON_CHARACTER_KEYS[] = {
        "backspace", "return", "up",         "down",        "numlock",    "left",      "right",
        "escape",    "tab",    "insert",     "home",        "end",        "page up",   "`",
        "page down", "delete", "left shift", "right shift", "right ctrl", "left ctrl", "right alt",
        "left alt",  "space",  "caps lock",  "left meta",   "right meta", "f1",        "f2",
        "f3",        "f4",     "f5",         "f6",          "f7",         "f8",        "f9",
        "f10",       "f11",    "f12",        "f13",         "f14",        "f15",
    };
    for (const char* name : NON_CHARACTER_KEYS)
        if (keyName == name)
            return false;
    return true;
}

std::string Keys_KeyName(int sym) {
    const char* name = SDL_GetKeyName(SDLKey(sym));
    return name ? name : "";
}

std::string Key_Input(const std::string& text, size_t maxLength) {
    std::string out = text;
    g_keyAskedThisFrame = true;
    // A queued key is a press nobody has typed yet, released or not; with
    // the queue empty the key-released flag decides as it always did (it is
    // set by every key taken here, so a held key is not typed twice).
    SDL_KeyboardEvent key;
    if (!KeyQueue_Pop(key)) {
        if (SDL_Keys.keyReleased)
            return out;
        key = SD_Keys;
    }
    // The zeroed start-up record is no key: without this, a player who has
    // only clicked so far would get a zero byte typed into the first text box.
    if (key.keysym.sym == SDLK_UNKNOWN && key.keysym.unicode == 0) {
        SDL_Keys.keyReleased = true;
        return out;
    }
    std::string name = Keys_KeyName(key.keysym.sym);
    char ch = getCharValue(key);
    if (name == "space")
        out += ' ';
    if (name == "backspace" && !out.empty())
        out.pop_back();
    // Cut before the new character goes on: the text may end one longer.
    if (out.size() > maxLength)
        out.pop_back();
    if (SDL_checkKeys(name))
        out += ch;
    SDL_Keys.keyReleased = true;
    return out;
}

namespace {
void SetArrow(SDLKey sym, bool held) {
    if (sym == SDLK_LEFT)
        g_leftHeld = held;
    if (sym == SDLK_RIGHT)
        g_rightHeld = held;
}
}  // namespace

void Input_KeyDown(const SDL_Event& event) {
    std::memcpy(&SD_Keys, &Keys_GetInput(event).key, sizeof SD_Keys);
    KeyQueue_Push(SD_Keys);
    SetArrow(event.key.keysym.sym, true);
}

void Input_KeyUp(const SDL_Event& event) {
    SDL_Keys.keyReleased = true;
    SetArrow(event.key.keysym.sym, false);
}

void Input_MouseMotion(const SDL_Event& event) {
    // The mouse has the last word: a real move drops what the keys left over.
    if (event.motion.x != SD_Mouse.x)
        g_pointerFraction = 0.0;
    std::memcpy(&SD_Mouse, &Keys_GetInput(event).motion, sizeof SD_Mouse);
}

void Input_MouseButtonDown(const SDL_Event& event) {
    if (g_releaseHeld) {
        // A tap followed by another press before the frame: the tap's release
        // happens now, and the two presses show as one click.
        SDL_Mouse.rightClick = false;
        SDL_Mouse.leftClick = false;
        g_releaseHeld = false;
    }
    switch (event.button.button) {
    case SDL_BUTTON_LEFT:
        SDL_Mouse.leftPressedLast = true;
        SDL_Mouse.leftClick = true;
        SDL_Mouse.rightPressedLast = false;
        break;
    case SDL_BUTTON_RIGHT:
        SDL_Mouse.rightPressedLast = true;
        SDL_Mouse.rightClick = true;
        SDL_Mouse.leftPressedLast = false;
        break;
    default:
        SDL_Mouse.leftPressedLast = false;
        SDL_Mouse.rightPressedLast = false;
        break;
    }
    SDL_Mouse.buttonDown = true;
}

namespace {
void ReleaseButtons() {
    SDL_Mouse.buttonDown = false;
    SDL_Mouse.rightClick = false;
    SDL_Mouse.leftClick = false;
}
}  // namespace

void Input_MouseButtonUp() {
    // A pressed-last flag still set means no frame has ended since the press:
    // releasing now would hide the click from every frame (a tap). Hold the
    // release back until the end of the next frame, which then sees code 1
    // or 2 exactly once; a widget that takes the press still clears
    // buttonDown as usual.
    if (SDL_Mouse.leftPressedLast || SDL_Mouse.rightPressedLast) {
        g_releaseHeld = true;
        return;
    }
    ReleaseButtons();
}

void Input_EndFrame() {
    SDL_Mouse.leftPressedLast = false;
    SDL_Mouse.rightPressedLast = false;
    if (g_releaseHeld)
        ReleaseButtons();
    g_releaseHeld = false;
    // Keys nobody asked for during this frame would otherwise be typed into
    // the next text box that shows, maybe minutes later.
    if (!g_keyAskedThisFrame)
        KeyQueue_Clear();
    g_keyAskedThisFrame = false;
}

void Input_Reset() {
    std::memset(&SD_Keys, 0, sizeof SD_Keys);
    std::memset(&SD_Mouse, 0, sizeof SD_Mouse);
    SDL_Keys = S_KeyFlags();
    SDL_Mouse = S_MouseFlags();
    KeyQueue_Clear();
    g_keyAskedThisFrame = false;
    g_releaseHeld = false;
    g_leftHeld = g_rightHeld = false;
    g_pointerFraction = 0.0;
    g_cursorLooked = false;
    g_cursor = 0;
}

void Mouse_Warp(int x, int y) { SDL_WarpMouse(Uint16(x), Uint16(y)); }

void Mouse_MoveX(double dx, int width) {
    const double right = width > 0 ? double(width - 1) : 0.0;
    double x = double(SD_Mouse.x) + g_pointerFraction + dx;
    x = x < 0.0 ? 0.0 : (x > right ? right : x);
    const int whole = int(x);
    g_pointerFraction = x - whole;
    if (whole == SD_Mouse.x)
        return;
    SD_Mouse.x = Uint16(whole);
    // The warp's own motion event comes back with this very x, so it changes nothing.
    Mouse_Warp(whole, SD_Mouse.y);
}

void Mouse_Draw() {
    if (!Menu_Visible())
        return;             // no cursor during play
    if (!g_cursorLooked) {  // looked up once per run
        g_cursorLooked = true;
        g_cursor = FindTexture("cursor.tga");
    }
    DisplayImageBlend(SD_Mouse.x, SD_Mouse.y, 32, 32, g_cursor);
}
