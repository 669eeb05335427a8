#pragma once

#include <GraphicsDefs.h>
#include <InterfaceDefs.h>
#include <Rect.h>
#include <SupportDefs.h>

#include <functional>
#include <string>
#include <vector>

class BWindow;

// What tests and the screenshot driver do to a program from outside: look at windows, send input,
// drive menus. Called from a thread that is neither the server nor a window's, with no looper
// locked.
namespace server::testing {

// The pixels of a window as they would be on the screen, in device pixels.
struct Picture {
    int32 width = 0;
    int32 height = 0;
    std::vector<rgb_color> pixels;

    rgb_color At(int32 x, int32 y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

// Waits until the window has handled what was sent and drawn what was invalid, and the server has
// shown it. False after a minute, or if the window has gone.
bool WaitUntilIdle(BWindow* window);
// Polls in the window's idle moments, without the lock; false after a minute.
bool WaitUntil(const std::function<bool()>& condition);

Picture Snapshot(BWindow* window);
bool SavePicture(BWindow* window, const std::string& pngPath);
// With native decorations and open menus left out: one picture of several windows is not possible
// here.

// Input, as if the desktop had sent it to the window; points are in the window's coordinates.
void MouseDown(BWindow* window, BPoint where, uint32 button = 1, uint32 modifiers = 0,
               int32 clicks = 1);
void MouseUp(BWindow* window, BPoint where, uint32 button = 1, uint32 modifiers = 0);
void MouseMove(BWindow* window, BPoint where, uint32 buttons = 0, uint32 modifiers = 0);
void MouseLeave(BWindow* window);
void Click(BWindow* window, BPoint where, uint32 button = 1, uint32 modifiers = 0,
           int32 clicks = 1);
// Steps of a wheel: positive y scrolls down.
void Wheel(BWindow* window, BPoint where, float deltaX, float deltaY);
// A key by its byte (B_LEFT_ARROW, 'a', B_ENTER …) or, for a function key, by B_FUNCTION_KEY and
// its key code.
void Key(BWindow* window, char byte, uint32 modifiers = 0, uint32 functionKey = 0);
void MenuKey(BWindow* window);
void Type(BWindow* window, const char* utf8);
// An input method's composition (empty ends it without text), perhaps with a clause that is being
// converted, and its result, which may replace some of the text: a range in UTF-16 units from the
// caret.
void Compose(BWindow* window, const char* utf8, int32 cursorByte, int32 clauseStart = 0,
             int32 clauseEnd = 0);
void CommitComposition(BWindow* window, const char* utf8, int32 replaceStart = 0,
                       int32 replaceLength = 0);
// How often the input method was told of a change meanwhile.
int32 InputNoticesDuring(const std::function<void()>& work);
// The pointer's shape over the window, by the cursors that the tests ask for: the link's, the
// text's, or any other.
enum class PointerShape { kLink, kText, kOther };
PointerShape ShapeOf(BWindow* window);
void Activate(BWindow* window, bool active);
// The title that the desktop shows.
std::string TitleOf(BWindow* window);
// Whether a modal window keeps the user's input from it; what is sent here comes all the same.
bool IsBlocked(BWindow* window);
// As if the user had resized it or pressed its close button.
void ResizeByUser(BWindow* window, float width, float height);
void CloseByUser(BWindow* window);

// The open native menu: its lines' labels, separators as "-", the submenu's after a "/":
// "File/Open".
bool MenuIsOpen();
std::vector<std::string> MenuLabels();
BRect MenuFrame(); // on the screen
bool MenuLineIsMarked(const std::string& path);
bool MenuLineIsEnabled(const std::string& path);
bool ChooseMenuLine(const std::string& path); // false if there is no such line or it is disabled
void DismissMenu();
void PointAtTitle(int32 index);
// A key pressed in the open menu, by its byte.
void KeyInMenu(char byte);

// From now on URLs and folders are noted here instead of being opened.
void RecordLaunches();
std::vector<std::string> Launches();
// What the primary selection (middle-button paste) offers.
std::string PrimarySelection();

// How many native windows there are.
int32 CountServerWindows();

} // namespace server::testing
