#pragma once

#include "net/ResponseHead.h"
#include "widgets/Alerts.h"
#include "workers/Jobs.h"

#include <Message.h>
#include <SupportDefs.h>

#include <string>

class NPHttp;

// How far a worker got.
enum class Progress { kGoOn, kStopped, kFailed };

// What the bodies of all workers share: they report to the window through its link, look whether
// they must stop, and say when they are done. What one says after it was stopped is dropped, and
// its alerts go with it. Lives on the worker's stack.
class Worker : public AlertOwner {
public:
    Worker(std::shared_ptr<WindowLink> window, std::shared_ptr<WorkerControl> control);

protected:
    bool MustStop() { return fControl->MustStop(); }
    // The request id under which this worker adds items.
    port_id Request() const { return fControl->Port(); }
    WindowLink& Window() { return *fWindow; }

    // The window's status line.
    void ShowProgress(const std::string& text);
    void ClearProgress() { ShowProgress(""); }
    void SetTitle(const std::string& title);
    // Posts the completion message, naming this worker by its port.
    void Complete(BMessage* message);
    // The ending of every failure: an empty status line, but for what a job has to say in it, and a
    // completion without fields.
    virtual Progress Fail(uint32 completion);

    // Shared by the downloads: what their requests begin with.
    static void BeginReading(NPHttp* http, const ProxySetting& proxy, const char* host);
    // Connects, sends and reads the head, with the alert that tells the user why there is no
    // connection.
    Progress Ask(NPHttp* http, const char* host, uint32 completion);
    // Tells the user the status that a server refused with.
    void ShowRefusal(const ResponseHead::StatusRecord& status);

private:
    void PresentAlert(BAlert* alert) override;
    void _Tell(const WindowLink::Calling& tell);

    std::shared_ptr<WindowLink> fWindow;
    std::shared_ptr<WorkerControl> fControl;
};
