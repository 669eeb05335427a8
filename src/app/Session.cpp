#include "app/Session.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr size_t kMostWindows = 32;
constexpr size_t kMostParts = 8;

std::string Clean(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return text;
}

std::string_view TakePart(std::string_view* text, char end) {
    const std::string_view part = text->substr(0, text->find(end));
    text->remove_prefix(std::min(text->size(), part.size() + 1));
    return part;
}

bool ReadFrame(const std::string& text, BRect* frame) {
    return sscanf(text.c_str(), "%f %f %f %f", &frame->left, &frame->top, &frame->right,
                  &frame->bottom) == 4 &&
           std::isfinite(frame->left) && std::isfinite(frame->top) && std::isfinite(frame->right) &&
           std::isfinite(frame->bottom) && frame->IsValid();
}

} // namespace

std::string WriteSession(const std::vector<OpenWindow>& windows) {
    std::string text;
    for (const OpenWindow& window : windows) {
        char frame[80];
        snprintf(frame, sizeof(frame), "%g %g %g %g", window.frame.left, window.frame.top,
                 window.frame.right, window.frame.bottom);
        text += std::string(frame) + "\t" + (window.isThreadOnly ? "thread" : "browser");
        for (const std::string& part :
             {window.title, window.boardUrl, window.boardName, window.threadUrl, window.threadDat})
            text += "\t" + Clean(part);
        text += "\n";
    }
    return text;
}

std::vector<OpenWindow> ReadSession(std::string_view text) {
    std::vector<OpenWindow> windows;
    while (!text.empty() && windows.size() < kMostWindows) {
        std::string_view line = TakePart(&text, '\n');
        std::vector<std::string> parts;
        while (!line.empty() && parts.size() < kMostParts)
            parts.emplace_back(TakePart(&line, '\t'));
        parts.resize(kMostParts);
        OpenWindow window;
        window.isThreadOnly = parts[1] == "thread";
        if (!ReadFrame(parts[0], &window.frame) || (!window.isThreadOnly && parts[1] != "browser"))
            continue;
        window.title = parts[2];
        window.boardUrl = parts[3];
        window.boardName = parts[4];
        window.threadUrl = parts[5];
        window.threadDat = parts[6];
        windows.push_back(window);
    }
    return windows;
}
