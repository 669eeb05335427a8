#pragma once

#include "origin/Origin.h"

#include <curl/curl.h>

#include <array>
#include <functional>
#include <string>

namespace gate {

// One request and its answer on a handle. Lives on the stack of the thread that runs it.
class Exchange {
public:
    Exchange(const Settings& settings, const OriginRequest& request, Transfer* transfer,
             std::function<bool()> mustStop);
    ~Exchange();
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    // Receives the answer, but does not end the transfer. What went wrong, for the user; empty:
    // nothing.
    std::string Run(CURL* handle);

private:
    void _SetUp(CURL* handle);
    void _SetUpWay(CURL* handle);
    void _SetUpCertificates(CURL* handle);
    void _SetUpAnswer(CURL* handle);
    long _MillisecondsLeft() const;
    void _AddHeader(const std::string& line);
    void _TakeHeaderLine(std::string_view line);
    void _FinishHead();
    std::string _FailureText(CURLcode code) const;
    void _TellWay(CURL* handle, CURLcode code) const;

    static size_t _OnHeader(char* bytes, size_t size, size_t count, void* self);
    static size_t _OnBody(char* bytes, size_t size, size_t count, void* self);
    static int _OnProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t);
    static curl_socket_t _OnSocket(void* self, curlsocktype purpose, curl_sockaddr* address);

    const Settings& fSettings;
    const OriginRequest& fRequest;
    Transfer* const fTransfer;
    const std::function<bool()> fMustStop;
    std::vector<std::string> fAllowed;
    curl_slist* fHeaders = nullptr;
    curl_slist* fConnectTo = nullptr;
    OriginHead fHead;
    size_t fHeadSize = 0;
    bool fWasKeptAway = false;
    bool fWasTooLong = false;
    std::array<char, CURL_ERROR_SIZE> fProblem = {};
};

} // namespace gate
