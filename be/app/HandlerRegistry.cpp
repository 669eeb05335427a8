#include "app/HandlerRegistry.h"

HandlerRegistry& HandlerRegistry::Instance() {
    static HandlerRegistry& instance = *new HandlerRegistry;
    return instance;
}

int32 HandlerRegistry::AddHandler(BHandler* handler) {
    std::lock_guard guard(fMutex);
    fHandlers[++fLastToken] = {handler, nullptr};
    return fLastToken;
}

void HandlerRegistry::RemoveHandler(int32 token) {
    std::lock_guard guard(fMutex);
    fHandlers.erase(token);
}

void HandlerRegistry::SetLooper(int32 handlerToken, BLooper* looper) {
    std::lock_guard guard(fMutex);
    auto found = fHandlers.find(handlerToken);
    if (found != fHandlers.end())
        found->second.looper = looper;
}

HandlerRegistry::Target HandlerRegistry::Find(int32 token) {
    std::lock_guard guard(fMutex);
    auto found = fHandlers.find(token);
    return found == fHandlers.end() ? Target() : found->second;
}

void HandlerRegistry::AddLooper(BLooper* looper, int32 token,
                                const std::shared_ptr<LooperCore>& core) {
    std::lock_guard guard(fMutex);
    fLoopers[looper] = {token, core};
}

void HandlerRegistry::RemoveLooper(BLooper* looper) {
    std::lock_guard guard(fMutex);
    fLoopers.erase(looper);
}

std::shared_ptr<LooperCore> HandlerRegistry::CoreOf(const BLooper* looper) {
    std::lock_guard guard(fMutex);
    auto found = fLoopers.find(looper);
    return found == fLoopers.end() ? nullptr : found->second.core;
}

std::shared_ptr<LooperCore> HandlerRegistry::CoreWithToken(int32 looperToken) {
    std::lock_guard guard(fMutex);
    auto handler = fHandlers.find(looperToken);
    if (handler == fHandlers.end())
        return nullptr;
    auto found = fLoopers.find(handler->second.looper);
    return found == fLoopers.end() ? nullptr : found->second.core;
}

int32 HandlerRegistry::TokenOf(const BLooper* looper) {
    std::lock_guard guard(fMutex);
    auto found = fLoopers.find(looper);
    return found == fLoopers.end() ? -1 : found->second.token;
}

BLooper* HandlerRegistry::LooperForThread(thread_id thread) {
    std::lock_guard guard(fMutex);
    for (const auto& [looper, entry] : fLoopers) {
        if (entry.core->fThread == thread)
            return const_cast<BLooper*>(looper);
    }
    return nullptr;
}
