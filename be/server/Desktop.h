#pragma once

#include <SupportDefs.h>

#include <optional>
#include <string>
#include <vector>

// What the desktop does for a program: clipboard, opening, fonts and colours.
namespace server {

// Any thread. The clipboard's text, of whichever program put it there; not known without a server.
struct ClipboardText {
    bool known = false;
    std::string utf8;
};
ClipboardText ReadClipboard();
void SetClipboardText(const std::string& utf8);

// The primary selection: what is selected, for the middle mouse button. Any thread.
void OfferPrimarySelection(const std::string& utf8);
std::string PrimarySelection();

// Opens a URL in the desktop's program for it, as it stands: an error when nobody takes it so. Any
// thread but the server's; may take a few seconds.
status_t OpenUrl(const std::string& url);
// An absolute path opens a file or folder. Any thread; returns at once.
void OpenPath(const std::string& path);
void RecordLaunches();
std::vector<std::string> RecordedLaunches();

// Server thread, once connected: be_plain_font and its like become the desktop's.
void ReadSystemFonts();

// Server thread, before connecting: the platform without a display gets a screen that windows fit
// on.
void PrepareOffscreen();
// After connecting: its file and setting are gone again, so that children start as this program
// did.
void OffscreenIsPrepared();

} // namespace server
