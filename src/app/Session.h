#pragma once

#include <Rect.h>

#include <string>
#include <string_view>
#include <vector>

// A browser window as it can be opened again: where it stood and what it showed. Texts may be
// empty: nothing was shown.
struct OpenWindow {
    BRect frame;
    bool isThreadOnly = false;
    std::string title; // of a window for one thread
    std::string boardUrl, boardName;
    std::string threadUrl, threadDat;
};

// As a text with a line for each window, its parts between tabs. What can't be read is passed over;
// of more than 32 windows the rest is.
std::string WriteSession(const std::vector<OpenWindow>& windows);
std::vector<OpenWindow> ReadSession(std::string_view text);
