#pragma once

#include <GraphicsDefs.h>
#include <InterfaceDefs.h>
#include <Rect.h>

class BView;

// How controls look: flat, hairline borders, corners of radius 3, one accent for the focus. Each
// draws with the view's colours and font as they stand and leaves them as they were.
namespace control_look {

struct State {
    bool enabled = true;
    bool hovered = false;
    bool pressed = false;
    bool focused = false;
    bool isDefault = false;
};

const float kRadius = 3;
const float kFieldHeight = 24; // of a control, in pixels

// Text may be null. Cut with an ellipsis where it does not fit; centred between top and bottom.
void DrawLabel(BView* view, const char* text, BRect frame, alignment align, bool enabled);
// In the view's high colour.
void DrawPlainLabel(BView* view, const char* text, BRect frame, alignment align);
float LabelWidth(const BView* view, const char* text);
float LineHeight(const BView* view);
rgb_color LabelColor(bool enabled);

void DrawButton(BView* view, BRect frame, const State& state);
// A field of text or of a choice.
void DrawField(BView* view, BRect frame, const State& state);
void DrawCheckBox(BView* view, BRect box, bool on, const State& state);
void DrawRadioButton(BView* view, BRect box, bool on, const State& state);
// Around a label, for what has no border of its own.
void DrawFocusRing(BView* view, BRect frame);
// A small triangle that points down.
void DrawDropArrow(BView* view, BPoint center, bool enabled);
// The square for a check box or a radio button at the left of a control.
BRect MarkFrame(BRect bounds);

} // namespace control_look
