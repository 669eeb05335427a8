#pragma once

#include <memory>
#include <string>

#include <OS.h>

// One end of a TCP connection. Used by one thread; the process may shut it down from outside as it
// ends, whereupon every call fails with B_CANCELED. The addresses of a host, IPv4 and IPv6, are
// tried in turn. No call raises a signal.
class BNetEndpoint {
public:
    BNetEndpoint(int protocol = 1 /* SOCK_STREAM, the only one here */);
    virtual ~BNetEndpoint();
    BNetEndpoint(const BNetEndpoint&) = delete;
    BNetEndpoint& operator=(const BNetEndpoint&) = delete;

    status_t InitCheck() const;

    // Bounds the whole of Connect, the look-up of the name with it, and each Send and Receive;
    // microseconds. Without it they wait for ever.
    void SetTimeout(bigtime_t timeout);

    // An open connection is closed first.
    status_t Connect(const char* address, int port);
    void Close();

    // All bytes are sent, or the result is negative.
    int32 Send(const void* buffer, size_t size, int flags = 0);
    // The number of bytes received, 0 at the end of the stream, negative on failure (B_TIMED_OUT
    // among others).
    int32 Receive(void* buffer, size_t size, int flags = 0);
    bool IsDataPending(bigtime_t timeout = 0); // true at the end of the stream too

    int Error() const { return fError; } // of the last call, B_OK after success
    const char* ErrorStr() const { return fErrorText.c_str(); } // for people

private:
    status_t _Fail(status_t error, std::string text);
    status_t _FailWithErrno(int error);
    status_t _Succeed();

    status_t fStatus;
    int fSocket = -1;
    bigtime_t fTimeout = B_INFINITE_TIMEOUT;
    status_t fError = B_OK;
    std::string fErrorText;
};
