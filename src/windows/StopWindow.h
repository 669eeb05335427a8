#pragma once

#include "windows/OnceWindow.h"

class BStringView;

// A small window that tells how a longer piece of work gets on: a status line, and a button that
// asks it to close. It can be closed in no other way but those its flags add.
class StopWindow : public OnceWindow {
protected:
    StopWindow(const char* title, float width, uint32 moreFlags = 0);

    void ShowStatus(const char* text);

private:
    BStringView* fStatus; // window thread only
};
