#pragma once

#include "app/Instance.h"

#include <Application.h>
#include <OS.h>

#include <atomic>
#include <memory>
#include <string>

class BApplication::Private {
public:
    explicit Private(BApplication* self) : app(self) {}

    status_t Connect(const char* appSignature);
    void ListenToDesktop() const;
    void SendLaunchMessages() const;
    // Asks each window, or not, and ends it. False as soon as one refuses.
    bool QuitWindows(bool ask) const;
    bigtime_t TimeToPulse() const;
    void TearDown(); // main thread, after serving

    BApplication* const app;
    // Constant after construction
    std::string signature;
    status_t status = B_NO_INIT;
    std::unique_ptr<Instance> instance;

    // The looper's lock
    bool launching = true;
    bigtime_t pulseRate = 0;
    bigtime_t nextPulse = 0;
    int32 cursorHidden = 0;
    std::atomic<bool> threadsRemain{false};
};

// Whether the program has agreed to end: alerts are refused from then on. Any thread.
bool IsProgramEnding();
