#pragma once

#include "workers/WorkerControl.h"

#include <Messenger.h>
#include <SupportDefs.h>

#include <memory>
#include <string>

// What the cache-search window hands to its worker, which owns it and frees it as its thread exits.
struct CacheSearchJob {
    std::string wanted; // UTF-8
    BMessenger window;
    std::shared_ptr<WorkerControl> control; // its port is "search_port"
};

// The body of that thread: looks through the titles of all cached threads, then through their
// posts, and tells the window what is found with kMsgCacheMatches and the end with
// kMsgCacheSearched. 0; the argument is the CacheSearchJob.
int32 searchCache(void* job);
