#pragma once

#include <curl/curl.h>

#include <mutex>
#include <vector>

namespace gate {

// Handles of the transfer library that wait for their next use with their connections open. Any
// thread may call; one handle is one thread's at a time.
class EasyHandles {
public:
    EasyHandles();
    ~EasyHandles();
    EasyHandles(const EasyHandles&) = delete;
    EasyHandles& operator=(const EasyHandles&) = delete;

    CURL* Take();
    void GiveBack(CURL* handle);

private:
    std::mutex fMutex;
    std::vector<CURL*> fIdle; // guarded by fMutex; the last was used last
};

} // namespace gate
