#include <OS.h>

#include <time.h>

#include <chrono>
#include <thread>

using std::chrono::duration_cast;
using std::chrono::microseconds;

bigtime_t system_time() {
    auto now = std::chrono::steady_clock::now().time_since_epoch();
    return duration_cast<microseconds>(now).count();
}

uint32 real_time_clock() {
    return static_cast<uint32>(time(nullptr));
}

bigtime_t real_time_clock_usecs() {
    auto now = std::chrono::system_clock::now().time_since_epoch();
    return duration_cast<microseconds>(now).count();
}

status_t snooze(bigtime_t duration) {
    if (duration > 0)
        std::this_thread::sleep_for(microseconds(duration));
    return B_OK;
}

status_t snooze_until(bigtime_t moment, int timeBase) {
    if (timeBase != B_SYSTEM_TIMEBASE)
        return B_ERROR;
    return snooze(moment - system_time());
}
