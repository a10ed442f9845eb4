// Drawing of the widgets: each Draw runs the widget's rules (widgets.cpp)
// and then shows the result with the 2D helpers and the font.
#include "menu/widgets.h"
#include "render/draw2d.h"
#include "render/font.h"

namespace {
// The blue of a hovered or hit part, white otherwise.
void HighlightColor(bool highlighted) {
    if (highlighted)
        SetDrawColor(0.2f, 0.2f, 0.8f, 1.0f);
    else
        SetDrawColor(1.0f, 1.0f, 1.0f, 1.0f);
}

void PrintSlower(int x, int y) {
    glPrint(x + 34, y, 0, 3, " slower");
    SetDrawColor(1.0f, 1.0f, 1.0f, 1.0f);
}
}  // namespace

void CCheckBox::Draw() {
    if (!Think())
        return;
    HighlightColor(hover);
    DisplayImage(x, y, 32, 32, checked ? checkedImage : unchecked);
    // Once for the hover and once more for the checked state: a hovered,
    // checked box prints the note twice over itself.
    if (!supported && hover)
        PrintSlower(x, y);
    if (!supported && checked)
        PrintSlower(x, y);
}

void CSlider::Draw() {
    if (!Think())
        return;
    DisplayImage(x, y, 128, 32, track);
    SetDrawColor(1.0f, 1.0f, 1.0f, 1.0f);
    DisplayImageBlend(KnobX(), y, 32, 32, knob);
}

void CListBox::Draw() {
    if (!Think())
        return;
    HighlightColor(leftHit);
    DisplayImage(x, y, 32, 32, leftArrow);
    HighlightColor(rightHit);
    DisplayImage(x + 160, y, 32, 32, rightArrow);
    HighlightColor(textHit);
    glPrint(x + 32, y, 0, 2, "%s", SelectedName().c_str());
    leftHit = rightHit = textHit = false;
}

void CTextBox::Draw(const SDL_Event& /*event*/) {
    if (!Think())
        return;
    SetDrawColor(0.2f, 0.2f, 0.4f, 1.0f);
    DisplayBlank(x, y, 160, 32);
    // The caret flips on every call, and the menu calls once per item: its
    // blinking follows the number of items on the screen.
    if (caret)
        glPrint(x + 2, y + 2, 0, 0, "%s", text.c_str());
    else
        glPrint(x + 2, y + 2, 0, 0, "%s|", text.c_str());
    caret = !caret;
}
