#include "workers/WorkerControl.h"

#include "messages/Messages.h"
#include "widgets/Alerts.h"

#include <Alert.h>
#include <Application.h>
#include <Autolock.h>
#include <Errors.h>
#include <Message.h>
#include <Window.h>

namespace {
// A read this short only looks: workers look after every line.
constexpr bigtime_t kLook = 10; // microseconds

enum class Word { kNone, kStop, kGone };

Word Look(port_id port) {
    int32 code = 0;
    char body = 0;
    const ssize_t size = read_port_etc(port, &code, &body, sizeof(body), B_RELATIVE_TIMEOUT, kLook);
    if (size == B_BAD_PORT_ID)
        return Word::kGone;
    return size > 0 && code == kStopWorker && body != 0 ? Word::kStop : Word::kNone;
}

void BindToWindow(BAlert* alert, const BMessenger& messenger) {
    BLooper* looper = nullptr;
    if (!messenger.LockTarget())
        return;
    messenger.Target(&looper);
    if (BWindow* window = dynamic_cast<BWindow*>(looper))
        BindAlert(alert, window);
    looper->Unlock();
}

} // namespace

WorkerControl::WorkerControl(const char* portName) : fPort(create_port(1, portName)) {}

WorkerControl::~WorkerControl() {
    DeletePort();
    ReleaseCursor();
}

void WorkerControl::Stop() {
    const char stop = 1;
    write_port_etc(fPort, kStopWorker, &stop, sizeof(stop), B_RELATIVE_TIMEOUT, 0);
    const BAutolock lock(fAlertLock);
    fStopped = true;
    fAlert.SendMessage(B_QUIT_REQUESTED);
    ReleaseCursor();
}

void WorkerControl::PresentAlert(BAlert* alert, const BMessenger& window) {
    BindToWindow(alert, window);
    {
        const BAutolock lock(fAlertLock);
        if (!fStopped)
            fAlert = BMessenger(alert);
    }
    if (fStopped)
        alert->Quit();
    else
        alert->Go();
    const BAutolock lock(fAlertLock);
    fAlert = BMessenger();
}

// A port that was deleted under the worker means that the program is going.
bool WorkerControl::MustStop() {
    const Word word = Look(fPort);
    if (word != Word::kNone) {
        DeletePort();
        ReleaseCursor();
    }
    return word != Word::kNone;
}

void WorkerControl::DeletePort() {
    close_port(fPort);
    delete_port(fPort);
}

void WorkerControl::TakeCursor() {
    if (!fHasCursor.exchange(true))
        PostCursorMessage(true);
}

void WorkerControl::ReleaseCursor() {
    if (fHasCursor.exchange(false))
        PostCursorMessage(false);
}

bool IsToldToStop(port_id port) {
    return Look(port) == Word::kStop;
}

void PostCursorMessage(bool busy) {
    BMessage message(kMsgBusyCursor);
    message.AddBool("cursor", busy);
    be_app_messenger.SendMessage(&message);
}
