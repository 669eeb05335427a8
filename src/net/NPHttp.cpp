#include "net/NPHttp.h"

#include <Errors.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {
constexpr bigtime_t kTimeout = 30000000; // microseconds

bool BreaksLine(const char* text) {
    return strpbrk(text, "\r\n") != nullptr;
}
} // namespace

NPHttp::NPHttp(const char* host, const char* port) : fHost(host), fPort(port) {
    _Check(host);
}

NPHttp::~NPHttp() {
    Close();
}

void NPHttp::_Check(const char* text) {
    fRefused = fRefused || BreaksLine(text);
}

void NPHttp::SetProxy(const char* host, const char* port) {
    _Check(host);
    fProxyHost = host;
    fProxyPort = port;
    fHasProxyHost = true;
    fHasProxyPort = *port != '\0';
}

void NPHttp::SetPath(const char* path) {
    _Check(path);
    fPath = path;
}

void NPHttp::AddHeader(const char* name, const char* value) {
    AddHeader((std::string(name) + ": " + value).c_str());
}

void NPHttp::AddHeader(const char* line) {
    _Check(line);
    fHeader << line << "\r\n";
}

void NPHttp::RemoveHeader(const char* name) {
    const int32 start = fHeader.FindFirst(name);
    const int32 end = start < 0 ? -1 : fHeader.FindFirst("\n", start);
    if (end >= 0)
        fHeader.Remove(start, end + 1 - start);
}

void NPHttp::AddBody(const char* text) {
    fBody << text;
}

status_t NPHttp::Connect() {
    Close();
    fEndpoint = std::make_unique<BNetEndpoint>();
    fEndpoint->SetTimeout(kTimeout);
    if (fRefused)
        return B_BAD_VALUE;
    if (!fReader.Reset())
        return B_NO_MEMORY;
    const std::string& host = _UsesProxy() ? fProxyHost : fHost;
    const std::string& port = _UsesProxy() ? fProxyPort : fPort;
    const status_t status =
        fEndpoint->Connect(host.c_str(), static_cast<int>(strtol(port.c_str(), nullptr, 10)));
    if (status != B_OK)
        return status;
    fprintf(stderr, "Connect: %s:%s\n", host.c_str(), port.c_str());
    return B_OK;
}

const char* NPHttp::ErrorStr() const {
    if (fRefused)
        return "the address holds a line break";
    return fEndpoint != nullptr ? fEndpoint->ErrorStr() : "";
}

std::string NPHttp::_Request() const {
    static constexpr const char* kMethods[] = {"GET ", "HEAD ", "POST "};
    std::string request = kMethods[method == kHead || method == kPost ? method : kGet];
    if (_UsesProxy())
        request += "http://" + fHost;
    request += fPath;
    request += version == kHttp10 ? " HTTP/1.0\r\n" : " HTTP/1.1\r\n";
    request.append(fHeader.String(), fHeader.Length());
    request += "\r\n";
    request.append(fBody.String(), fBody.Length());
    return request;
}

int32 NPHttp::Send() {
    if (fRefused)
        return B_BAD_VALUE;
    if (fEndpoint == nullptr) {
        const status_t status = Connect();
        if (status != B_OK)
            return status;
    }
    const std::string request = _Request();
    fprintf(stderr, "%s", request.c_str());
    return fEndpoint->Send(request.data(), request.size(), 0);
}

int32 NPHttp::_Receive(void* buffer, size_t size) {
    return fEndpoint != nullptr ? fEndpoint->Receive(buffer, size, 0) : B_ERROR;
}

int32 NPHttp::_readLine(char* buffer, size_t size) {
    return fReader.ReadLine(buffer, size, [this](void* to, size_t n) { return _Receive(to, n); });
}

int32 NPHttp::_read(void* buffer, size_t size) {
    return fReader.Read(buffer, size, [this](void* to, size_t n) { return _Receive(to, n); });
}

int32 NPHttp::ReadHeader() {
    if (fHead.Status() != nullptr)
        return 0;
    if (fEndpoint == nullptr) {
        const status_t status = Connect();
        if (status != B_OK)
            return status;
    }
    return fHead.Read([this](char* to, size_t n) { return _readLine(to, n); }) ? 0 : -1;
}

const NPHttp::StatusRecord* NPHttp::Status() {
    return ReadHeader() == 0 ? fHead.Status() : nullptr;
}

int32 NPHttp::Read(void* buffer, size_t size) {
    const int32 status = ReadHeader();
    return status == 0 ? _read(buffer, size) : status;
}

int32 NPHttp::ReadLine(char* buffer, size_t size) {
    const int32 status = ReadHeader();
    return status == 0 ? _readLine(buffer, size) : status;
}

int32 NPHttp::ReadPart(char* buffer, size_t size) {
    const int32 status = ReadHeader();
    if (status != 0)
        return status;
    return fReader.ReadPart(buffer, size, [this](void* to, size_t n) { return _Receive(to, n); });
}

int32 NPHttp::ReadReceived(void* buffer, size_t size) {
    return fReader.Read(buffer, size, [](void*, size_t) { return 0; });
}

void NPHttp::Close() {
    if (fEndpoint != nullptr) {
        fEndpoint->Close();
        fEndpoint.reset();
    }
    fHead.Clear();
    fReader.Clear();
}
