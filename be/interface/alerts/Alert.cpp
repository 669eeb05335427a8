#include <Alert.h>

#include "app/ApplicationPrivate.h"
#include "interface/alerts/AlertBody.h"
#include "interface/alerts/AlertPrivate.h"
#include "interface/windows/WindowPrivate.h"
#include "server/Screens.h"
#include "server/WindowLink.h"

#include <Button.h>
#include <InterfaceDefs.h>
#include <Invoker.h>
#include <Message.h>
#include <Screen.h>
#include <TextView.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <optional>
#include <vector>

namespace {

constexpr uint32 kMsgAlertButton = '_ALB'; // from a button: "which" (int32) is its index
const auto kRedrawPause = std::chrono::milliseconds(50);

// What the alert is answered with; outlives it.
class Answer {
public:
    void Give(int32 button) {
        std::lock_guard lock(fLock);
        if (!fButton)
            fButton = button;
        fGiven.notify_all();
    }

    int32 Wait() {
        std::unique_lock lock(fLock);
        fGiven.wait(lock, [this] { return fButton.has_value(); });
        return *fButton;
    }

    // A window that waits goes on following its size and drawing.
    int32 Wait(BWindow* caller) {
        std::unique_lock lock(fLock);
        while (!fGiven.wait_for(lock, kRedrawPause, [this] { return fButton.has_value(); })) {
            lock.unlock();
            BWindow::Private::Of(caller).FollowSize();
            lock.lock();
        }
        return *fButton;
    }

private:
    std::mutex fLock;
    std::condition_variable fGiven;
    std::optional<int32> fButton; // guarded by fLock
};

// Over the window that it comes for, and on one screen as far as it fits.
BPoint PlaceOver(BRect owner, BRect alert) {
    const BPoint middle(std::floor((owner.left + owner.right) / 2),
                        std::floor((owner.top + owner.bottom) / 2));
    const BRect screen = server::ScreenAt(middle).available;
    const float left = owner.left + std::floor((owner.Width() - alert.Width()) / 2);
    const float top = owner.top + std::floor((owner.Height() - alert.Height()) / 3);
    return BPoint(
        std::clamp(left, screen.left, std::max(screen.left, screen.right - alert.Width())),
        std::clamp(top, screen.top, std::max(screen.top, screen.bottom - alert.Height())));
}

} // namespace

class BAlert::Private {
public:
    std::shared_ptr<Answer> answer = std::make_shared<Answer>();
    AlertBody* body = nullptr; // a child view
    std::vector<BButton*> buttons;
    std::vector<char> shortcuts;
    std::optional<BMessage> message; // of the invoker
    BMessenger target;
    BMessenger self;

    void Press(int32 which);
};

BAlert::BAlert(const char* title, const char* text, const char* button1, const char* button2,
               const char* button3, button_width width, alert_type type)
    : BAlert(title, text, button1, button2, button3, width, B_EVEN_SPACING, type) {}

BAlert::BAlert(const char* title, const char* text, const char* button1, const char* button2,
               const char* button3, button_width width, button_spacing, alert_type type)
    : BWindow(BRect(0, 0, 299, 99), title, B_MODAL_WINDOW,
              B_NOT_CLOSABLE | B_NOT_RESIZABLE | B_NOT_MINIMIZABLE | B_NOT_ZOOMABLE |
                  B_ASYNCHRONOUS_CONTROLS),
      fPrivate(std::make_unique<Private>()) {
    fPrivate->self = BMessenger(this);
    fPrivate->body = new AlertBody(type, text != nullptr ? text : "");
    for (const char* label : {button1, button2, button3}) {
        if (label == nullptr)
            continue;
        auto* message = new BMessage(kMsgAlertButton);
        message->AddInt32("which", static_cast<int32>(fPrivate->buttons.size()));
        fPrivate->buttons.push_back(new BButton(BRect(0, 0, 79, 25), "button", label, message));
        fPrivate->shortcuts.push_back(0);
    }
    AddChild(fPrivate->body);
    const BPoint size = fPrivate->body->Arrange(fPrivate->buttons, width);
    ResizeTo(size.x, size.y);
    for (BButton* button : fPrivate->buttons)
        button->SetTarget(this);
    if (!fPrivate->buttons.empty())
        fPrivate->buttons.back()->MakeDefault(true);
}

BAlert::~BAlert() {
    AlertCloses(fPrivate->self);
    fPrivate->answer->Give(-1);
}

void BAlert::SetType(alert_type type) {
    fPrivate->body->SetType(type);
}
alert_type BAlert::Type() const {
    return fPrivate->body->Type();
}

void BAlert::SetText(const char* text) {
    TextView()->SetText(text != nullptr ? text : "");
    const BPoint size = fPrivate->body->Arrange(fPrivate->buttons, B_WIDTH_AS_USUAL);
    ResizeTo(size.x, size.y);
}

void BAlert::SetShortcut(int32 index, char key) {
    if (index >= 0 && static_cast<size_t>(index) < fPrivate->shortcuts.size())
        fPrivate->shortcuts[static_cast<size_t>(index)] = key;
}

char BAlert::Shortcut(int32 index) const {
    return index >= 0 && static_cast<size_t>(index) < fPrivate->shortcuts.size()
               ? fPrivate->shortcuts[static_cast<size_t>(index)]
               : '\0';
}

BButton* BAlert::ButtonAt(int32 index) const {
    return index >= 0 && static_cast<size_t>(index) < fPrivate->buttons.size()
               ? fPrivate->buttons[static_cast<size_t>(index)]
               : nullptr;
}

BTextView* BAlert::TextView() const {
    return fPrivate->body->Text();
}

// A program that ends shows nothing any more. Known first, then asked: whichever comes first, one
// of the two ends the alert.
bool BAlert::_Open(BWindow* caller) {
    AlertOpens(fPrivate->self);
    if (IsProgramEnding()) {
        Quit();
        return false;
    }
    const BRect owner =
        caller != nullptr ? caller->Frame() : BWindow::Private::Of(this).link->OwnerFrame();
    MoveTo(owner.IsValid() ? PlaceOver(owner, Bounds())
                           : AlertPosition(Bounds().Width(), Bounds().Height()));
    Show();
    return true;
}

int32 BAlert::Go() {
    const std::shared_ptr<Answer> answer = fPrivate->answer;
    auto* caller = dynamic_cast<BWindow*>(LooperForThread(find_thread(nullptr)));
    if (!_Open(caller))
        return -1;
    return caller != nullptr ? answer->Wait(caller) : answer->Wait();
}

status_t BAlert::Go(BInvoker* invoker) {
    if (invoker != nullptr && invoker->Message() != nullptr) {
        fPrivate->message = *invoker->Message();
        fPrivate->target = invoker->Messenger();
    }
    return _Open(nullptr) ? B_OK : B_ERROR;
}

void BAlert::Private::Press(int32 which) {
    answer->Give(which);
    if (message) {
        message->RemoveName("which");
        message->AddInt32("which", which);
        target.SendMessage(&*message);
    }
}

void BAlert::MessageReceived(BMessage* message) {
    int32 which = -1;
    switch (message->what) {
    case kMsgAlertButton:
        if (message->FindInt32("which", &which) == B_OK) {
            fPrivate->Press(which);
            PostMessage(B_QUIT_REQUESTED);
        }
        break;
    case kMsgAlertDismissed: PostMessage(B_QUIT_REQUESTED); break;
    default: BWindow::MessageReceived(message);
    }
}

// A shortcut is the key alone; with a single button Escape presses it.
void BAlert::DispatchMessage(BMessage* message, BHandler* handler) {
    const char* bytes = nullptr;
    if (message->what != B_KEY_DOWN || message->FindString("bytes", &bytes) != B_OK ||
        strlen(bytes) != 1)
        return BWindow::DispatchMessage(message, handler);
    for (size_t i = 0; i < fPrivate->buttons.size(); i++) {
        const bool isOnly = fPrivate->buttons.size() == 1 && bytes[0] == B_ESCAPE;
        if (fPrivate->shortcuts[i] == bytes[0] || isOnly) {
            fPrivate->buttons[i]->Invoke();
            return;
        }
    }
    BWindow::DispatchMessage(message, handler);
}

void BAlert::FrameResized(float newWidth, float newHeight) {
    BWindow::FrameResized(newWidth, newHeight);
}

bool BAlert::QuitRequested() {
    return true;
}
void BAlert::Quit() {
    BWindow::Quit();
}

BPoint BAlert::AlertPosition(float width, float height) {
    const BRect screen = BScreen().Frame();
    return BPoint(screen.left + std::floor((screen.Width() - width) / 2),
                  screen.top + std::floor((screen.Height() - height) / 3));
}
