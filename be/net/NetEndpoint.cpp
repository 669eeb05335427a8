#include <NetEndpoint.h>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <utility>

#include "kernel/Deadline.h"
#include "net/EndpointRegistry.h"
#include "net/NameLookup.h"
#include "support/Errno.h"

namespace {

// 0 when the socket is ready, or an errno.
int waitUntil(int socket, short events, const Deadline& deadline) {
    for (;;) {
        int64 milliseconds = deadline.IsNever() ? -1 : (deadline.Left() + 999) / 1000;
        pollfd wait = {socket, events, 0};
        int64 longest = std::numeric_limits<int>::max();
        int count = poll(&wait, 1, static_cast<int>(std::min(milliseconds, longest)));
        if (count > 0)
            return 0;
        if (count == 0 && deadline.HasPassed())
            return ETIMEDOUT;
        if (count < 0 && errno != EINTR)
            return errno;
    }
}

// A socket that is connected, or -1 and an errno.
int connectTo(const HostAddress& host, const Deadline& deadline, int* error) {
    EndpointRegistry& registry = EndpointRegistry::Instance();
    int handle = socket(host.family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (handle < 0) {
        *error = errno;
        return -1;
    }
    registry.Add(handle);
    // Requests are written whole: waiting for more to send would only cost time.
    int yes = 1;
    setsockopt(handle, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof(yes));
    auto* address = reinterpret_cast<const sockaddr*>(&host.address);
    *error = connect(handle, address, host.length) == 0 ? 0 : errno;
    if (*error == EINPROGRESS)
        *error = waitUntil(handle, POLLOUT, deadline);
    socklen_t size = sizeof(*error);
    if (*error == 0)
        getsockopt(handle, SOL_SOCKET, SO_ERROR, error, &size);
    if (*error == 0)
        return handle;
    registry.Close(handle);
    return -1;
}

// One address that does not answer must not use up the time of the others.
Deadline shareOf(const Deadline& whole, size_t addressesLeft) {
    if (whole.IsNever())
        return whole;
    return Deadline::After(whole.Left() / static_cast<bigtime_t>(addressesLeft));
}

bool wouldBlock(int error) {
    return error == EAGAIN || error == EWOULDBLOCK;
}

} // namespace

BNetEndpoint::BNetEndpoint(int protocol) : fStatus(protocol == SOCK_STREAM ? B_OK : B_BAD_VALUE) {}

BNetEndpoint::~BNetEndpoint() {
    Close();
}

status_t BNetEndpoint::InitCheck() const {
    return fStatus;
}

void BNetEndpoint::Close() {
    if (fSocket >= 0)
        EndpointRegistry::Instance().Close(std::exchange(fSocket, -1));
}

void BNetEndpoint::SetTimeout(bigtime_t timeout) {
    fTimeout = timeout < 0 ? B_INFINITE_TIMEOUT : timeout;
}

status_t BNetEndpoint::Connect(const char* address, int port) {
    Close();
    if (fStatus != B_OK || !address || !*address || port < 1 || port > 65535)
        return _Fail(B_BAD_VALUE, "No valid address to connect to");
    if (EndpointRegistry::Instance().IsShutDown())
        return _FailWithErrno(ECANCELED);
    Deadline deadline = Deadline::After(fTimeout);
    std::vector<HostAddress> hosts;
    std::string text;
    status_t status = lookUpHost(address, port, deadline, &hosts, &text);
    if (status != B_OK)
        return _Fail(status, text);
    int error = 0;
    for (size_t i = 0; i < hosts.size() && fSocket < 0; i++)
        fSocket = connectTo(hosts[i], shareOf(deadline, hosts.size() - i), &error);
    return fSocket >= 0 ? _Succeed() : _FailWithErrno(error);
}

int32 BNetEndpoint::Send(const void* buffer, size_t size, int flags) {
    if (fSocket < 0)
        return _FailWithErrno(ENOTCONN);
    if ((!buffer && size > 0) || size > static_cast<size_t>(std::numeric_limits<int32>::max()))
        return _Fail(B_BAD_VALUE, "Nothing valid to send");
    Deadline deadline = Deadline::After(fTimeout);
    const char* bytes = static_cast<const char*>(buffer);
    for (size_t done = 0; done < size;) {
        ssize_t count = send(fSocket, bytes + done, size - done, flags | MSG_NOSIGNAL);
        int error = count < 0 ? errno : 0;
        if (wouldBlock(error))
            error = waitUntil(fSocket, POLLOUT, deadline);
        if (error != 0 && error != EINTR)
            return _FailWithErrno(error);
        done += count > 0 ? static_cast<size_t>(count) : 0;
    }
    _Succeed();
    return static_cast<int32>(size);
}

int32 BNetEndpoint::Receive(void* buffer, size_t size, int flags) {
    if (fSocket < 0)
        return _FailWithErrno(ENOTCONN);
    if (!buffer && size > 0)
        return _Fail(B_BAD_VALUE, "No buffer to receive into");
    size = std::min(size, static_cast<size_t>(std::numeric_limits<int32>::max()));
    Deadline deadline = Deadline::After(fTimeout);
    for (;;) {
        ssize_t count = recv(fSocket, buffer, size, flags | MSG_NOSIGNAL);
        int error = count < 0 ? errno : 0;
        if (wouldBlock(error) && (error = waitUntil(fSocket, POLLIN, deadline)) == 0)
            continue;
        // What was shut down from here has not come to its end.
        if (count == 0 && size > 0 && EndpointRegistry::Instance().IsShutDown())
            error = ESHUTDOWN;
        if (error == EINTR)
            continue;
        if (error != 0)
            return _FailWithErrno(error);
        _Succeed();
        return static_cast<int32>(count);
    }
}

bool BNetEndpoint::IsDataPending(bigtime_t timeout) {
    return fSocket >= 0 && waitUntil(fSocket, POLLIN, Deadline::After(timeout)) == 0;
}

status_t BNetEndpoint::_Fail(status_t error, std::string text) {
    fErrorText = std::move(text);
    return fError = error;
}

status_t BNetEndpoint::_FailWithErrno(int error) {
    if (EndpointRegistry::Instance().IsShutDown())
        return _Fail(B_CANCELED, strerrordesc_np(ECANCELED));
    return _Fail(errorFromErrno(error), strerrordesc_np(error));
}

status_t BNetEndpoint::_Succeed() {
    fErrorText.clear();
    return fError = B_OK;
}
