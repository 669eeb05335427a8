#pragma once

#include "interface/controls/ControlLook.h"

#include <Control.h>

// What the controls share behind their documented calls.
class BControl::Private {
public:
    static control_look::State StateOf(const BControl* control);
    // Whether the mouse button that is being told of presses the control.
    static bool TakesPress(const BControl* control);

    // For controls that are a mark with a label behind it, pressed by the pointer: check boxes and
    // radio buttons.
    using MarkDrawer = void (*)(BView* view, BRect mark, bool on, const control_look::State& state);
    static void DrawMarked(BControl* control, bool pressed, MarkDrawer draw);
    static void GetMarkedSize(BControl* control, float* width, float* height);
    static void BeginPress(BControl* control, bool* pressed);
    static void MovePress(BControl* control, BPoint where, bool* pressed);
    // Whether the press ended on the control.
    static bool EndPress(BControl* control, BPoint where, bool* pressed);
};
