// The four widgets of the menus: each shows and edits one console variable
// (the list box one or more per row). Menu_Setup builds one object per
// widget item; Menu_Show calls every object's Draw once per menu item per
// frame, and each object decides whether it belongs to the current screen.
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

    unsigned int unchecked = 0, checkedImage = 0;
    bool checked = false;
    bool needsRestart = false;
    bool supported = true;
    int x = 0, y = 0;
    std::string variable;
    std::string screen;

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
