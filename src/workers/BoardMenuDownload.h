#pragma once

#include "workers/Jobs.h"

#include <Messenger.h>
#include <SupportDefs.h>

class NPHttp;

// What the update window hands to its worker, which owns it and frees it as its thread exits.
struct BoardMenuJob {
    std::string portal; // the host that publishes the menu
    ProxySetting proxy;
    BMessenger window;
    std::shared_ptr<WorkerControl> control; // its port is "update_port"
};

// Downloads the portal's board menu and posts it, raw, to the window with kMsgUpdateEnded; tells
// the steps, and what went wrong, with kMsgUpdateStatus. Nothing is posted after a stop, and no
// menu when it did not come whole. Lives on the worker's stack.
class BoardMenuDownload {
public:
    explicit BoardMenuDownload(const BoardMenuJob& job) : fJob(job) {}
    int32 Run(); // 0, or −1 when it failed

private:
    bool _Ask(NPHttp* http);
    bool _ReadPage(NPHttp* http);
    bool _Fail(const char* text);
    void _ShowStatus(const char* text);

    const BoardMenuJob& fJob;
    std::string fPage;
    bool fStopped = false;
};
