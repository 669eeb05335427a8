#include "workers/Worker.h"

#include "browser/BrowserWindow.h"
#include "net/NPHttp.h"

#include <cstdarg>
#include <cstdio>

namespace {

std::string Format(const char* format, va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    std::string text(vsnprintf(nullptr, 0, format, arguments), '\0');
    vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return text;
}

} // namespace

Worker::Worker(std::shared_ptr<WindowLink> window, std::shared_ptr<WorkerControl> control)
    : fWindow(std::move(window)), fControl(std::move(control)) {}

void Worker::ShowProgress(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = Format(format, arguments);
    va_end(arguments);
    _Tell([&](BrowserWindow* window) { window->PostProgressData(text.c_str(), 0); });
}

void Worker::SetTitle(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = Format(format, arguments);
    va_end(arguments);
    _Tell([&](BrowserWindow* window) { window->SetTitle(text.c_str()); });
}

// The window's thread stops workers: with the window locked, the answer holds.
void Worker::_Tell(const WindowLink::Calling& tell) {
    fWindow->Call([&](BrowserWindow* window) {
        if (!fControl->IsStopped())
            tell(window);
    });
}

void Worker::PresentAlert(BAlert* alert) {
    fWindow->Call([alert](BrowserWindow* window) { BindAlert(alert, window); });
    fControl->PresentAlert(alert);
}

void Worker::Complete(BMessage* message) {
    message->AddInt32("port", Request());
    fWindow->Post(message);
}

Progress Worker::Fail(uint32 completion) {
    ClearProgress();
    BMessage message(completion);
    Complete(&message);
    return Progress::kFailed;
}

Progress Worker::Connect(NPHttp* http, uint32 completion) {
    const status_t status = http->Connect();
    if (MustStop())
        return Progress::kStopped;
    if (status == B_OK)
        return Progress::kGoOn;
    ShowAlert("接続エラー: %s", http->ErrorStr());
    return Fail(completion);
}

Progress Worker::Exchange(NPHttp* http, uint32 completion) {
    const bool sent = http->Send() >= 0;
    const bool read = sent && http->ReadHeader() == 0;
    if (MustStop())
        return Progress::kStopped;
    if (read)
        return Progress::kGoOn;
    fprintf(stderr, "ReadHeader()\n");
    return Fail(completion);
}
