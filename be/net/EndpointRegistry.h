#pragma once

#include <atomic>
#include <mutex>
#include <set>

// The sockets that are open in the process, so that its end can shut them: a thread that waits at
// one then returns from its call with an error. Never destroyed.
class EndpointRegistry {
public:
    static EndpointRegistry& Instance();

    void Add(int socket);
    // Closes it. Done here, so that ShutDownAll never meets a number that means something else by
    // now.
    void Close(int socket);
    // For the end of the process: from now on every socket is shut as soon as it is added.
    void ShutDownAll();
    bool IsShutDown() const { return fIsShutDown; }

private:
    std::atomic<bool> fIsShutDown{false};
    std::mutex fMutex;
    // Guarded by fMutex
    std::set<int> fSockets;
};
