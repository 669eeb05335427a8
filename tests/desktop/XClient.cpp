#include "desktop/XClient.h"

#include "desktop/Process.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace {

Display* Of(void* display) {
    return static_cast<Display*>(display);
}

// A window may go while it is looked at.
int Ignore(Display*, XErrorEvent*) {
    return 0;
}

} // namespace

XClient::XClient(const std::string& display) : fDisplay(XOpenDisplay(display.c_str())) {
    XSetErrorHandler(Ignore);
}

XClient::~XClient() {
    if (fDisplay != nullptr)
        XCloseDisplay(Of(fDisplay));
}

XClient::Window XClient::Root() {
    return DefaultRootWindow(Of(fDisplay));
}

std::vector<XClient::Window> XClient::_Windows(Window window, const char* property) {
    Display* display = Of(fDisplay);
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    const Atom name = XInternAtom(display, property, False);
    XGetWindowProperty(display, window, name, 0, 1024, False, XA_WINDOW, &type, &format, &count,
                       &rest, &data);
    std::vector<Window> windows;
    if (data != nullptr && format == 32) {
        const auto* found = reinterpret_cast<const unsigned long*>(data);
        windows.assign(found, found + count);
    }
    XFree(data);
    return windows;
}

std::vector<XClient::Window> XClient::Managed() {
    return _Windows(Root(), "_NET_CLIENT_LIST");
}

bool XClient::HasManager() {
    return !_Windows(Root(), "_NET_SUPPORTING_WM_CHECK").empty();
}

XClient::Window XClient::Active() {
    const auto active = _Windows(Root(), "_NET_ACTIVE_WINDOW");
    return active.empty() ? 0 : active.front();
}

std::vector<XClient::Window> XClient::PopUps() {
    Display* display = Of(fDisplay);
    ::Window root = 0;
    ::Window parent = 0;
    ::Window* children = nullptr;
    unsigned count = 0;
    XQueryTree(display, Root(), &root, &parent, &children, &count);
    std::vector<Window> found;
    for (unsigned i = 0; i < count; i++) {
        XWindowAttributes attributes = {};
        const bool isThere = XGetWindowAttributes(display, children[i], &attributes) != 0;
        // The manager's own helpers are as small as a pixel, or off the screen.
        if (isThere && attributes.override_redirect && attributes.map_state == IsViewable &&
            attributes.c_class == InputOutput && attributes.width > 16 && attributes.x >= 0 &&
            !_Windows(children[i], "WM_CLIENT_LEADER").empty())
            found.push_back(children[i]);
    }
    XFree(children);
    return found;
}

XClient::Frame XClient::FrameOf(Window window) {
    Display* display = Of(fDisplay);
    XWindowAttributes attributes = {};
    if (XGetWindowAttributes(display, window, &attributes) == 0)
        return {};
    ::Window child = 0;
    int x = 0;
    int y = 0;
    XTranslateCoordinates(display, window, attributes.root, 0, 0, &x, &y, &child);
    return {x, y, attributes.width, attributes.height};
}

std::string XClient::TitleOf(Window window) {
    Display* display = Of(fDisplay);
    XTextProperty text = {};
    const Atom name = XInternAtom(display, "_NET_WM_NAME", False);
    if (XGetTextProperty(display, window, &text, name) == 0)
        return {};
    const std::string title(reinterpret_cast<const char*>(text.value), text.nitems);
    XFree(text.value);
    return title;
}

XClient::Picture XClient::PictureOf(Window window) {
    Display* display = Of(fDisplay);
    const Frame frame = FrameOf(window);
    if (frame.width <= 0 || frame.height <= 0)
        return {};
    XImage* image = XGetImage(display, window, 0, 0, static_cast<unsigned>(frame.width),
                              static_cast<unsigned>(frame.height), AllPlanes, ZPixmap);
    if (image == nullptr)
        return {};
    Picture picture{frame.width, frame.height, {}};
    picture.pixels.reserve(static_cast<size_t>(frame.width * frame.height));
    for (int y = 0; y < frame.height; y++) {
        const auto* line = reinterpret_cast<const uint32_t*>(
            image->data + static_cast<ptrdiff_t>(y) * image->bytes_per_line);
        for (int x = 0; x < frame.width; x++)
            picture.pixels.push_back(line[x] & 0xffffff);
    }
    XDestroyImage(image);
    return picture;
}

void XClient::_Ask(Window window, const char* what, long first, long second, long third) {
    Display* display = Of(fDisplay);
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, what, False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = first;
    event.xclient.data.l[1] = second;
    event.xclient.data.l[2] = third;
    event.xclient.data.l[3] = 2; // on behalf of the user
    XSendEvent(display, Root(), False, SubstructureRedirectMask | SubstructureNotifyMask, &event);
    XFlush(display);
}

void XClient::Resize(Window window, int width, int height) {
    XResizeWindow(Of(fDisplay), window, static_cast<unsigned>(width),
                  static_cast<unsigned>(height));
    XFlush(Of(fDisplay));
}

void XClient::MoveTo(Window window, int x, int y) {
    XMoveWindow(Of(fDisplay), window, x, y);
    XFlush(Of(fDisplay));
}

void XClient::Maximise(Window window, bool maximise) {
    Display* display = Of(fDisplay);
    _Ask(window, "_NET_WM_STATE", maximise ? 1 : 0,
         static_cast<long>(XInternAtom(display, "_NET_WM_STATE_MAXIMIZED_VERT", False)),
         static_cast<long>(XInternAtom(display, "_NET_WM_STATE_MAXIMIZED_HORZ", False)));
}

void XClient::Minimise(Window window) {
    Display* display = Of(fDisplay);
    XIconifyWindow(display, window, DefaultScreen(display));
    XFlush(display);
}

void XClient::Activate(Window window) {
    _Ask(window, "_NET_ACTIVE_WINDOW", 2);
}

void XClient::Close(Window window) {
    _Ask(window, "_NET_CLOSE_WINDOW", 0, 2);
}

void XClient::PointAt(int x, int y) {
    XTestFakeMotionEvent(Of(fDisplay), -1, x, y, CurrentTime);
    XSync(Of(fDisplay), False);
}

// With a hand's pauses: while the manager decides about a press, later events of a faster source
// would happen where the pointer has come to meanwhile.
void XClient::Click(int x, int y, unsigned button, int times) {
    PointAt(x, y);
    for (int i = 0; i < times; i++) {
        for (const Bool isDown : {True, False}) {
            XTestFakeButtonEvent(Of(fDisplay), button, isDown, CurrentTime);
            XSync(Of(fDisplay), False);
            Pause(20);
        }
    }
}

void XClient::Key(const char* name, bool control) {
    Display* display = Of(fDisplay);
    const KeyCode key = XKeysymToKeycode(display, XStringToKeysym(name));
    const KeyCode controlKey = XKeysymToKeycode(display, XK_Control_L);
    if (control)
        XTestFakeKeyEvent(display, controlKey, True, CurrentTime);
    XTestFakeKeyEvent(display, key, True, CurrentTime);
    XTestFakeKeyEvent(display, key, False, CurrentTime);
    if (control)
        XTestFakeKeyEvent(display, controlKey, False, CurrentTime);
    XSync(display, False);
}
