#pragma once

#include "post/PostForm.h"
#include "post/PostTarget.h"
#include "workers/Jobs.h"

#include <Messenger.h>
#include <SupportDefs.h>

#include <memory>

// What the write window hands to the thread that sends a post. The thread owns it and frees it as
// it exits.
struct PostJob {
    PostTarget target;
    PostForm form;
    ProxySetting proxy;
    BMessenger window;
    std::shared_ptr<WorkerControl> control; // its port is "post_port"
};

// The body of that thread, named "postMessage": sends the form, judges the answer and tells the
// window with kMsgPostProgress, kMsgPostFailed or kMsgPostDone; the server's own words are shown in
// an alert. 0, or −1 when it failed; the argument is the PostJob.
int32 postMessage(void* job);
