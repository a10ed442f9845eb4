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
    CCheckBox(int x, int y, const std::string& variable, const std::string& screen);
    void Draw();
    void ChangeCheck(const std::string& variable);
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
    CSlider(int x, int y, const std::string& variable, const std::string& screen);
    void Draw();
    void Select(int x, int y, int w, int h);
    void MoveSlider(const std::string& variable);
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
    CListBox(int x, int y, const std::string names[32], const std::string values[32], const std::string& screen);
    void Draw();
    void Select(int x, int y, int w, int h);
    void ToggleList(const std::string values[32]);
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
    CTextBox(int x, int y, const std::string& variable, const std::string& screen);
    void Draw(const SDL_Event& event);
    void Update(const std::string& variable, const std::string& text);
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
