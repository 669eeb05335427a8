#include "net/NameLookup.h"

#include <netdb.h>

#include <algorithm>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <thread>

#include "net/EndpointRegistry.h"

namespace {

// How long a look-up is waited for before it is seen that the process ends.
constexpr bigtime_t kLookInterval = 50000;

struct Answer {
    int code = 0;
    std::vector<HostAddress> addresses;
};

// Shared by who asks and the thread that asks the system, whichever lives longer.
struct Lookup {
    std::mutex mutex;
    std::condition_variable finished;
    // Guarded by mutex
    bool isFinished = false;
    Answer answer;
};

Answer askSystem(const std::string& host, const std::string& port, int flags) {
    addrinfo hints = {};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = flags | AI_NUMERICSERV;
    addrinfo* found = nullptr;
    Answer answer;
    answer.code = getaddrinfo(host.c_str(), port.c_str(), &hints, &found);
    if (answer.code != 0)
        return answer;
    for (const addrinfo* each = found; each; each = each->ai_next) {
        HostAddress address = {};
        memcpy(&address.address, each->ai_addr, each->ai_addrlen);
        address.length = each->ai_addrlen;
        address.family = each->ai_family;
        answer.addresses.push_back(address);
    }
    freeaddrinfo(found);
    return answer;
}

// The system's look-up can neither be bounded nor be stopped: a thread of its own does it.
status_t askInTime(const std::string& host, const std::string& port, const Deadline& deadline,
                   Answer* answer) {
    auto lookup = std::make_shared<Lookup>();
    std::thread([lookup, host, port] {
        Answer found = askSystem(host, port, 0);
        std::lock_guard guard(lookup->mutex);
        lookup->answer = std::move(found);
        lookup->isFinished = true;
        lookup->finished.notify_all();
    }).detach();
    std::unique_lock guard(lookup->mutex);
    auto isFinished = [&] { return lookup->isFinished; };
    while (!isFinished()) {
        if (EndpointRegistry::Instance().IsShutDown())
            return B_CANCELED;
        if (deadline.HasPassed())
            return B_TIMED_OUT;
        bigtime_t wait = std::min(kLookInterval, deadline.Left());
        Deadline::After(wait).Wait(lookup->finished, guard, isFinished);
    }
    *answer = lookup->answer;
    return B_OK;
}

std::string explain(const std::string& host, const char* reason) {
    return "The name \"" + host + "\" could not be looked up: " + reason;
}

} // namespace

status_t lookUpHost(const std::string& host, int port, const Deadline& deadline,
                    std::vector<HostAddress>* result, std::string* error) {
    std::string portText = std::to_string(port);
    Answer answer = askSystem(host, portText, AI_NUMERICHOST);
    status_t status = B_OK;
    if (answer.code != 0)
        status = askInTime(host, portText, deadline, &answer);
    if (status == B_TIMED_OUT)
        *error = explain(host, "Timed out");
    else if (status == B_CANCELED)
        *error = explain(host, "Canceled");
    else if (answer.code != 0)
        *error = explain(host, gai_strerror(answer.code));
    if (status == B_OK && answer.code != 0)
        status = B_NAME_NOT_FOUND;
    *result = std::move(answer.addresses);
    return status;
}
