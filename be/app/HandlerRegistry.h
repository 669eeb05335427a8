#pragma once

#include <memory>
#include <mutex>
#include <unordered_map>

#include <Handler.h>
#include <Looper.h>

#include "app/LooperCore.h"

// Every handler and looper of the process that is alive. A handler is known by a number that is
// never used again, so that whoever keeps the number learns that it has gone; a looper by its
// address too. No call looks into a handler, which may be going away on another thread. Never
// destroyed.
class HandlerRegistry {
public:
    struct Target {
        BHandler* handler = nullptr;
        BLooper* looper = nullptr; // null while the handler belongs to none
    };

    static HandlerRegistry& Instance();

    int32 AddHandler(BHandler* handler);
    void RemoveHandler(int32 token);
    void SetLooper(int32 handlerToken, BLooper* looper);
    Target Find(int32 token); // all null when it has gone

    void AddLooper(BLooper* looper, int32 token, const std::shared_ptr<LooperCore>& core);
    void RemoveLooper(BLooper* looper);
    // Null when it has gone.
    std::shared_ptr<LooperCore> CoreOf(const BLooper* looper);
    std::shared_ptr<LooperCore> CoreWithToken(int32 looperToken);
    int32 TokenOf(const BLooper* looper); // -1 when it has gone
    BLooper* LooperForThread(thread_id thread);

private:
    struct LooperEntry {
        int32 token;
        std::shared_ptr<LooperCore> core;
    };

    std::mutex fMutex;
    // Guarded by fMutex
    int32 fLastToken = 0;
    std::unordered_map<int32, Target> fHandlers;
    std::unordered_map<const BLooper*, LooperEntry> fLoopers;
};
