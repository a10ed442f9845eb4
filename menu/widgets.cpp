// The widgets' rules: construction from the cvars, hit tests, clicks, the
// slider's drag, the list box's stepping and settings, text entry. Drawing
// is in widgets_draw.cpp.
#include "menu/widgets.h"

#include <algorithm>

#include "common/appstatus.h"
#include "common/cvar.h"
#include "common/utils.h"
#include "input/input.h"
#include "menu/menu.h"
#include "render/texture.h"

CCheckBox* CheckBox[MAX_WIDGETS];
CSlider* Slider[MAX_WIDGETS];
CListBox* ListBox[MAX_WIDGETS];
CTextBox* TextBox[MAX_WIDGETS];

int CCheckBox::m_nNumber = 0;
int CSlider::m_nNumber = 0;
int CListBox::m_nNumber = 0;
int CTextBox::m_nNumber = 0;

namespace {
constexpr int ROWS = 32;
constexpr size_t PART_LIMIT = 255;  // longest variable name or value of a list row
constexpr int MOUSE_PRESSED = 1;    // Mouse_GrabInput: left button went down this frame
constexpr int MOUSE_HELD = 4;       // left button held after its first frame

// Where the slider's knob was last dragged to; written, never read back.
float _mp = 0.0f;

bool OnCurrentScreen(const std::string& screen) { return screen == _mtoggle; }

// Text from `pos` up to `stop` (or the end), at most PART_LIMIT characters
// kept; `pos` ends after the stop character. A longer part is cut, and the
// rest up to its stop character skipped, so it cannot spill into the next part.
std::string ReadPart(const std::string& text, size_t& pos, char stop) {
    size_t end = text.find(stop, pos);
    if (end == std::string::npos)
        end = text.size();
    std::string part = text.substr(pos, std::min(end - pos, PART_LIMIT));
    pos = end < text.size() ? end + 1 : end;
    return part;
}
}  // namespace

// ---- Checkbox ----

CCheckBox::CCheckBox(int atX, int atY, const std::string& cvarName, const std::string& onScreen)
    : x(atX), y(atY), variable(cvarName), screen(onScreen) {
    unchecked = FindTexture("box.tga");
    checkedImage = FindTexture("check.tga");
    checked = StringToInt(Cvar_Get(variable)) != 0;
    needsRestart = variable == "m_res" || variable == "fullscreen";
    // The blur still works without framebuffer objects, through the slower copy path.
    if (variable == "r_blur" && !GLext.frameBufferObjects)
        supported = false;
    m_nNumber++;
}

void CCheckBox::ChangeCheck(const std::string& cvarName) {
    if (checked) {
        Cvar_Set(cvarName, "0");
        checked = false;
    } else {
        Cvar_Set(cvarName, "1");
        checked = true;
    }
}

bool CCheckBox::Think() {
    hover = false;
    if (!OnCurrentScreen(screen))
        return false;
    hover = Check_Point(x, y, 32, 32);
    if (hover && Mouse_GrabInput() == MOUSE_PRESSED) {
        ChangeCheck(variable);
        if (needsRestart)
            g_MustResetGame = 1;
        SDL_Mouse.buttonDown = false;  // the press is used once
    }
    return true;
}

// ---- Slider ----

CSlider::CSlider(int atX, int atY, const std::string& cvarName, const std::string& onScreen)
    : x(atX), y(atY), variable(cvarName), screen(onScreen) {
    track = FindTexture("volume.tga");
    knob = FindTexture("dot.tga");
    value = StringToFloat(Cvar_Get(variable));
    leftEnd = x;
    rightEnd = x + 128;
    m_nNumber++;
}

int CSlider::KnobX() const { return int(x + 96 * value); }

void CSlider::Select(int itemX, int itemY, int /*w*/, int /*h*/) {
    // The knob's square, not the whole track: the slider is grabbed by its knob.
    int mx = Keys_GrabMouseX(), my = Keys_GrabMouseY();
    grabbed = mx > itemX + 96 * value && my > itemY && my < itemY + 32 && mx < itemX + 96 * value + 32;
}

void CSlider::MoveSlider(const std::string& cvarName) {
    if (Mouse_GrabInput() != MOUSE_HELD)
        return;
    // 100 pixels per unit here against 96 when drawn, and no clamp until the
    // next draw: the slider's shipped feel.
    _mp = float(Keys_GrabMouseX()) - 16.0f;
    value = float((_mp - leftEnd) * 0.01);
    Cvar_Set(cvarName, FloatToString(value));
}

bool CSlider::Think() {
    if (!OnCurrentScreen(screen))
        return false;
    if (value > 1.0f)
        value = 1.0f;
    if (value < 0.0f)
        value = 0.0f;
    Select(x, y, 128, 32);
    if (grabbed)
        MoveSlider(variable);
    return true;
}

// ---- List box ----

CListBox::CListBox(int atX, int atY, const std::string rowNames[32], const std::string rowValues[32],
                   const std::string& onScreen)
    : x(atX), y(atY), screen(onScreen) {
    for (int i = 0; i < ROWS; i++) {
        names[i] = rowNames[i];
        values[i] = rowValues[i];
    }
    leftArrow = FindTexture("arrowlt.tga");
    rightArrow = FindTexture("arrowrt.tga");
    // Rows are numbered from 1 in the variable (a resolution preset, say).
    size_t pos = 0;
    std::string name = ReadPart(values[0], pos, ' ');
    selected = StringToInt(Cvar_Get(name)) - 1;
    m_nNumber++;
}

const std::string& CListBox::SelectedName() const {
    static const std::string none;
    return selected >= 0 && selected < ROWS ? names[selected] : none;
}

void CListBox::Select(int itemX, int itemY, int w, int h) {
    if (Mouse_GrabInput() != MOUSE_PRESSED)
        return;
    int mx = Keys_GrabMouseX(), my = Keys_GrabMouseY();
    bool inRow = my > itemY && my < itemY + h;
    if (inRow && mx > itemX && mx < itemX + w)
        leftHit = true;
    if (inRow && mx > itemX + 160 && mx < itemX + 160 + w)
        rightHit = true;
}

void CListBox::ToggleList(const std::string rowValues[32]) {
    if (leftHit) {
        if (selected > -1)
            selected--;
        // A selection past the last row (from the variable) wraps like one below the first.
        if (selected < 0 || selected >= ROWS)
            selected = ROWS - 1;
        // The search for the last filled row stops at row 0: with every row
        // empty it would otherwise run below the table.
        while (selected > 0 && names[selected].empty())
            selected--;
    }
    if (rightHit) {
        selected++;
        if (selected < 0 || selected >= ROWS || names[selected].empty())
            selected = 0;
    }
    if (selected >= 0 && selected < ROWS)  // neither arrow hit leaves it as the variable said
        Widgets_ApplySettings(rowValues[selected]);
}

bool CListBox::Think() {
    // The hit flags live for one draw; clearing them before the hit test is
    // the same to every reader as clearing them after the draw.
    leftHit = rightHit = textHit = false;
    if (!OnCurrentScreen(screen))
        return false;
    Select(x, y, 32, 32);
    if (Mouse_GrabInput() == MOUSE_PRESSED && (leftHit || rightHit)) {
        g_MustResetGame = 1;  // every list box needs a restart
        ToggleList(values);
        SDL_Mouse.buttonDown = false;
    }
    return true;
}

void Widgets_ApplySettings(const std::string& settings) {
    size_t pos = 0;
    while (pos < settings.size()) {
        std::string name = ReadPart(settings, pos, ' ');
        std::string value = ReadPart(settings, pos, '"');
        Cvar_Set(name, value);
    }
}

// ---- Text box ----

CTextBox::CTextBox(int atX, int atY, const std::string& cvarName, const std::string& onScreen)
    : x(atX), y(atY), variable(cvarName), screen(onScreen) {
    m_nNumber++;
}

void CTextBox::Update(const std::string& cvarName, const std::string& typed) { Cvar_Set(cvarName, typed); }

bool CTextBox::Think() {
    if (!OnCurrentScreen(screen)) {
        text.clear();
        return false;
    }
    // The box never reads its variable: it starts empty and, while shown,
    // writes what it holds every frame, even when that is nothing.
    text = Key_Input(text, 12);
    Update(variable, text);
    return true;
}

void Widgets_Reset() {
    CCheckBox::ResetCount();
    CSlider::ResetCount();
    CListBox::ResetCount();
    CTextBox::ResetCount();
    for (int i = 0; i < MAX_WIDGETS; i++) {
        CheckBox[i] = nullptr;
        Slider[i] = nullptr;
        ListBox[i] = nullptr;
        TextBox[i] = nullptr;
    }
    _mp = 0.0f;
}
