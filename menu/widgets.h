// The four widgets of the menus: each shows and edits one console variable
// (the list box one or more per row). Menu_Setup builds one object per
// widget item; Menu_Show calls every object's Draw once per menu item per
// frame, and each object decides whether it belongs to the current screen.
//
// Each Draw first runs the widget's rules (Think: hit tests, clicks, drag,
// text entry and cvar writes, no drawing) and then draws what they decided;
// Think can be run alone, without a window. A widget that acts on a press
// clears SDL_Mouse.buttonDown, so that widgets polled later in the same
// frame no longer see the click.
#pragma once

#include <SDL.h>

#include <string>

constexpr int MAX_WIDGETS = 64;  // per class: the size of each table below

class CCheckBox {
public:
    // At (x, y) in screen pixels on menu screen `screen`, checked when the
    // cvar `variable` reads as a non-zero integer; "m_res" and "fullscreen"
    // need a restart.
    CCheckBox(int x, int y, const std::string& variable, const std::string& screen);
    // Think, then the 32 x 32 box, blue while hovered; an unsupported box
    // prints " slower" in red beside it (twice over when hovered and checked).
    void Draw();
    void ChangeCheck(const std::string& variable);  // flips the box and writes "1" or "0"
    // Objects made since ResetCount, the next free place in the table;
    // ResetCount deletes nothing.
    static int Count() { return m_nNumber; }
    static void ResetCount() { m_nNumber = 0; }

    // Hover and click of one draw; false (and nothing done) when the box's
    // screen is not the current one.
    bool Think();

    unsigned int unchecked = 0, checkedImage = 0;
    bool checked = false;
    bool needsRestart = false;
    bool supported = true;  // false: "r_blur" without framebuffer objects, drawn with " slower"
    int x = 0, y = 0;
    std::string variable;
    std::string screen;
    bool hover = false;  // set by Think for the draw that follows

private:
    static int m_nNumber;
};

class CSlider {
public:
    // At (x, y) on `screen`: a 128 x 32 track showing `variable` as 0 to 1,
    // its value read once, here.
    CSlider(int x, int y, const std::string& variable, const std::string& screen);
    void Draw();  // Think, then the track and the knob at KnobX
    // grabbed: the pointer is inside the knob's 32 x 32 square on the track
    // at (x, y); w and h are not used.
    void Select(int x, int y, int w, int h);
    // While the left button is held: value = (pointer x - 16 - left end) / 100,
    // written to `variable` as it is; Think clamps the value, not the cvar.
    void MoveSlider(const std::string& variable);
    // Objects made since ResetCount, the next free place in the table;
    // ResetCount deletes nothing.
    static int Count() { return m_nNumber; }
    static void ResetCount() { m_nNumber = 0; }

    // Clamp, grab and drag of one draw; false when the screen is not current.
    bool Think();
    // Left edge of the knob: 96 pixels per unit of value, although a drag
    // moves it 100 pixels per unit.
    int KnobX() const;

    unsigned int track = 0, knob = 0;
    bool grabbed = false;
    float value = 0.0f;
    int leftEnd = 0, rightEnd = 0;
    int x = 0, y = 0;
    std::string variable;
    std::string screen;

private:
    static int m_nNumber;
};

class CListBox {
public:
    // At (x, y) on `screen`, 32 rows of names and settings. The selection is
    // the integer value, minus 1, of the cvar named first in row 0's setting:
    // the variable counts rows from 1.
    CListBox(int x, int y, const std::string names[32], const std::string values[32], const std::string& screen);
    // Think, then the left arrow at x, the selected name at x + 32 and the
    // right arrow at x + 160; an arrow hit this frame is blue.
    void Draw();
    // On a press this frame: leftHit inside the w x h square at (x, y),
    // rightHit inside the one at x + 160.
    void Select(int x, int y, int w, int h);
    // Steps the selection (left one row back, wrapping from the first row to
    // the last named one; right one on, wrapping past the last named row to
    // row 0), then applies the selected row's setting from `values`.
    void ToggleList(const std::string values[32]);
    // Objects made since ResetCount, the next free place in the table;
    // ResetCount deletes nothing.
    static int Count() { return m_nNumber; }
    static void ResetCount() { m_nNumber = 0; }

    // Arrow hits and the step of one draw; false when the screen is not current.
    bool Think();
    // The selected row's name, or "" when the selection is outside the rows
    // (a variable whose value names no row).
    const std::string& SelectedName() const;

    unsigned int leftArrow = 0, rightArrow = 0;
    int selected = 0;
    bool leftHit = false, rightHit = false, textHit = false;
    bool needsRestart = true;
    int x = 0, y = 0;
    std::string names[32];
    std::string values[32];
    std::string screen;

private:
    static int m_nNumber;
};

class CTextBox {
public:
    // At (x, y) on `screen`, writing `variable`; it starts empty and never
    // reads the variable.
    CTextBox(int x, int y, const std::string& variable, const std::string& screen);
    // Think, then a 160 x 32 box with the text. The "|" caret shows every
    // other call, and the menu calls once per item, so its blink follows the
    // item count. The event is not read.
    void Draw(const SDL_Event& event);
    void Update(const std::string& variable, const std::string& text);  // Cvar_Set, even with ""
    // Objects made since ResetCount, the next free place in the table;
    // ResetCount deletes nothing.
    static int Count() { return m_nNumber; }
    static void ResetCount() { m_nNumber = 0; }

    // Text entry and the write of one draw; when the screen is not current
    // the text is emptied and false returned.
    bool Think();

    int x = 0, y = 0;
    std::string variable;
    std::string screen;
    std::string text;
    bool caret = true;

private:
    static int m_nNumber;
};

extern CCheckBox* CheckBox[MAX_WIDGETS];
extern CSlider* Slider[MAX_WIDGETS];
extern CListBox* ListBox[MAX_WIDGETS];
extern CTextBox* TextBox[MAX_WIDGETS];

// Applies one list row's value: settings "name value", several joined by a
// double quote ("r_blur 1\"r_fbo 0"), set in order.
void Widgets_ApplySettings(const std::string& settings);

// Start-up state: counters zero, tables empty. Deletes nothing: the objects
// belong to the menu module (Menu_Cleanup).
void Widgets_Reset();
