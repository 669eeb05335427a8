#include "app/BookmarkPatrol.h"

#include "messages/Messages.h"
#include "views/NPThreadItem.h"

#include <AppDefs.h>
#include <Message.h>

void BookmarkPatrol::Begin(const BMessenger& window) {
    fWindow = window;
    fState = State::kUnderWay;
}

void BookmarkPatrol::Stop() const {
    if (IsRunning())
        fWindow.SendMessage(B_QUIT_REQUESTED);
}

void BookmarkPatrol::BringToFront() const {
    fWindow.SendMessage(kMsgActivateWindow);
}

void BookmarkPatrol::StepEnded() {
    if (fState != State::kUnderWay)
        return;
    fWindow.SendMessage(kMsgStepEnded);
    fState = State::kAsked;
}

bool BookmarkPatrol::TakeAnswer() {
    if (IsRunning())
        fState = State::kUnderWay;
    return IsRunning();
}

void BookmarkPatrol::Visit(const NPThreadItem& item, const std::shared_ptr<WorkerControl>& worker) {
    fVisit = worker;
    BMessage visiting(kMsgVisiting);
    visiting.AddPointer("item", &item);
    visiting.AddString("title", item.ColumnText(kColumnTitle));
    fWindow.SendMessage(&visiting);
}

bool BookmarkPatrol::End(const std::shared_ptr<WorkerControl>& worker) {
    const bool isVisit = worker != nullptr && worker == fVisit;
    *this = BookmarkPatrol();
    return isVisit;
}
