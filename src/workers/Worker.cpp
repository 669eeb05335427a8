#include "workers/Worker.h"

#include "browser/BrowserWindow.h"
#include "net/NPHttp.h"
#include "workers/Exchange.h"

#include <cstdio>

Worker::Worker(std::shared_ptr<WindowLink> window, std::shared_ptr<WorkerControl> control)
    : fWindow(std::move(window)), fControl(std::move(control)) {}

void Worker::ShowProgress(const std::string& text) {
    _Tell([&](BrowserWindow* window) { window->PostProgressData(text.c_str(), 0); });
}

void Worker::SetTitle(const std::string& title) {
    _Tell([&](BrowserWindow* window) { window->SetTitle(title.c_str()); });
}

// The window's thread stops workers: with the window locked, the answer holds.
void Worker::_Tell(const WindowLink::Calling& tell) {
    fWindow->Call([&](BrowserWindow* window) {
        if (!fControl->IsStopped())
            tell(window);
    });
}

void Worker::PresentAlert(BAlert* alert) {
    fControl->PresentAlert(alert, fWindow->Messenger());
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

void Worker::BeginReading(NPHttp* http, const ProxySetting& proxy, const char* host) {
    BeginRequest(http, proxy, host);
    http->AddHeader("User-Agent", get_user_agent());
    http->AddHeader("Connection: close");
}

Progress Worker::Ask(NPHttp* http, const char* host, uint32 completion) {
    const auto tell = [&](ExchangeStep step) {
        if (step == ExchangeStep::kConnect)
            ShowProgress(std::string(host) + "へ接続中");
    };
    switch (Exchange(http, fControl.get(), tell)) {
    case ExchangeEnd::kHead: return Progress::kGoOn;
    case ExchangeEnd::kStopped: return Progress::kStopped;
    case ExchangeEnd::kNotConnected:
        ShowAlert(this, std::string("接続エラー: ") + http->ErrorStr());
        break;
    case ExchangeEnd::kNotSent:
    case ExchangeEnd::kNoHead: fprintf(stderr, "ReadHeader()\n"); break;
    }
    return Fail(completion);
}

void Worker::ShowRefusal(const ResponseHead::StatusRecord& status) {
    ShowAlert(this, std::to_string(status.code) + " " + status.reason);
}
