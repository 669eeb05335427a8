#include "origin/EasyHandles.h"

namespace gate {

namespace {
constexpr size_t kMostIdle = 2; // each holds all authorities' certificates
}

EasyHandles::EasyHandles() {
    curl_global_init(CURL_GLOBAL_DEFAULT);
}

EasyHandles::~EasyHandles() {
    for (CURL* handle : fIdle)
        curl_easy_cleanup(handle);
}

CURL* EasyHandles::Take() {
    std::lock_guard guard(fMutex);
    if (fIdle.empty())
        return curl_easy_init();
    CURL* handle = fIdle.back();
    fIdle.pop_back();
    return handle;
}

void EasyHandles::GiveBack(CURL* handle) {
    curl_easy_reset(handle);
    std::lock_guard guard(fMutex);
    if (fIdle.size() < kMostIdle)
        fIdle.push_back(handle);
    else
        curl_easy_cleanup(handle);
}

} // namespace gate
