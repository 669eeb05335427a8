#pragma once

#include "interface/ControlLook.h"

#include <Control.h>

// What the controls share behind their documented calls.
class BControl::Private {
public:
    static control_look::State StateOf(const BControl* control);
    // Whether the mouse button that is being told of presses the control.
    static bool TakesPress(const BControl* control);
};
