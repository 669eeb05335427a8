#include "windows/NPPatrolWindow.h"

#include "messages/Messages.h"

#include <AppDefs.h>
#include <Message.h>

namespace {
constexpr float kWidth = 420;
} // namespace

NPPatrolWindow::NPPatrolWindow(const BMessenger& browser, BRect browserFrame)
    : StopWindow("ブックマークの巡回中…", kWidth), fBrowser(browser) {
    CenterIn(browserFrame);
}

void NPPatrolWindow::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgStepEnded: _AskForNext(); break;
    case kMsgVisiting: _ShowVisit(message); break;
    default: StopWindow::MessageReceived(message);
    }
}

void NPPatrolWindow::_AskForNext() {
    BMessage request(kMsgVisitNext);
    request.AddInt32("index", fVisits);
    fBrowser.SendMessage(&request);
}

// The row is the browser's: only what it sends of it is shown.
void NPPatrolWindow::_ShowVisit(const BMessage* message) {
    void* item = nullptr;
    const char* title = nullptr;
    if (message->FindPointer("item", &item) == B_OK && item != nullptr &&
        message->FindString("title", &title) == B_OK)
        ShowStatus(title);
    fVisits++;
}

bool NPPatrolWindow::QuitRequested() {
    fBrowser.SendMessage(kMsgPatrolEnded);
    return true;
}
