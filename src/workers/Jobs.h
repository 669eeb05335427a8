#pragma once

#include "browser/WindowLink.h"
#include "net/ThreadAddress.h"
#include "posts/ThreadTitles.h"
#include "settings/ProxySetting.h"
#include "workers/WorkerControl.h"

#include <SupportDefs.h>

#include <memory>
#include <string>

// What a window hands to a worker. The worker owns it and frees it as its thread exits.

// In bytes.
constexpr size_t kLongestBoardName = 63; // shown only, so it is cut

struct SubjectJob {
    std::string url;
    std::string board; // the board's name
    ProxySetting proxy;
    std::shared_ptr<WindowLink> window;
    std::shared_ptr<WorkerControl> control;
};

// For the threads of its board that may follow this one.
struct NextThreadJob : SubjectJob {
    ListedThread thread;
};

struct ThreadJob {
    std::string url;
    std::string dat;
    ProxySetting proxy;
    bool cacheEnabled = false;
    bool bookmark = false;    // update the cache and the counts, show nothing
    bool fromScratch = false; // ask for the whole thread, whatever is cached
    std::shared_ptr<WindowLink> window;
    std::shared_ptr<WorkerControl> control;
};
