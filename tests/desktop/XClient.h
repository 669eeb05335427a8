#pragma once

#include <cstdint>
#include <string>
#include <vector>

// What a user and a window manager do to a desktop, from a client of its own: keys and the pointer
// as the X server's own events, requests to the manager, and looks at the screen. Points are on the
// screen, in pixels.
class XClient {
public:
    using Window = unsigned long;
    struct Point {
        int x;
        int y;
    };
    struct Frame {
        int x;
        int y;
        int width;
        int height;
    };
    // A window's pixels as 0xRRGGBB.
    struct Picture {
        int width = 0;
        int height = 0;
        std::vector<uint32_t> pixels;

        uint32_t At(int x, int y) const { return pixels[static_cast<size_t>(y * width + x)]; }
        bool operator==(const Picture&) const = default;
    };

    explicit XClient(const std::string& display);
    ~XClient();
    bool IsConnected() const { return fDisplay != nullptr; }

    Window Root();
    // The windows that the manager has, in the order in which they came.
    std::vector<Window> Managed();
    // Windows on the screen that no manager decorates: menus and pop-ups.
    std::vector<Window> PopUps();
    bool HasManager();
    Frame FrameOf(Window window);
    std::string TitleOf(Window window);
    // Empty if it is not wholly on the screen.
    Picture PictureOf(Window window);

    void Resize(Window window, int width, int height);
    void MoveTo(Window window, int x, int y);
    void Maximise(Window window, bool maximise);
    void Minimise(Window window);
    void Activate(Window window);
    void Close(Window window);
    Window Active();

    void PointAt(int x, int y);
    void Click(int x, int y, unsigned button = 1, int times = 1);
    // By its keysym's name ("Return", "Down", "a"), with Ctrl or without.
    void Key(const char* name, bool control = false);

private:
    void _Ask(Window window, const char* what, long first, long second = 0, long third = 0);
    std::vector<Window> _Windows(Window window, const char* property);

    void* fDisplay; // X11's Display
};
