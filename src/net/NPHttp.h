#pragma once

#include "net/LineReader.h"
#include "net/ResponseHead.h"

#include <NetEndpoint.h>
#include <String.h>
#include <SupportDefs.h>

#include <memory>
#include <string>

// One HTTP exchange over one TCP connection, directly or through a proxy: no redirects, no chunked
// decoding, no keep-alive, no compression. Callers ask for "Connection: close", so the end of the
// stream is the end of the body.
//
// Order of use: construct; SetProxy; `method` and `version`; SetPath; AddHeader; AddBody; Connect;
// Send; ReadHeader; Status and FindHeader; ReadLine or Read until 0 or less. Every wait is bounded
// by 30 seconds. Used by the one thread that made it. A carriage return, line feed or NUL in a
// host, path or header is refused: Connect and Send then return B_BAD_VALUE and nothing goes out.
class NPHttp {
public:
    enum { kGet = 0, kHead = 1, kPost = 2 };
    enum { kHttp10 = 0, kHttp11 = 1 };

    using StatusRecord = ResponseHead::StatusRecord;

    // Copies both; the port is decimal text.
    NPHttp(const char* host, const char* port);
    ~NPHttp();
    NPHttp(const NPHttp&) = delete;
    NPHttp& operator=(const NPHttp&) = delete;

    void SetProxy(const char* host, const char* port);
    bool Proxy() const { return fHasProxyHost; }
    void SetPath(const char* path);
    void AddHeader(const char* name, const char* value);
    // A whole line, without its end.
    void AddHeader(const char* line);
    // Removes from the first hit of `name` anywhere in the header text to the end of that line.
    void RemoveHeader(const char* name);
    void AddBody(const char* text);

    // 0, or the endpoint's error. Forgets an earlier connection.
    status_t Connect();
    // What is wrong with the connection, for the user. Valid until the next call.
    const char* ErrorStr() const;
    // The number of bytes sent, or a negative error. Connects when that has not been done.
    int32 Send();
    // 0, or −1 on any failure of reading the status line and the headers.
    int32 ReadHeader();

    // These read the headers first when that has not been done.
    const StatusRecord* Status(); // null when the headers can't be read
    int32 Read(void* buffer, size_t size);
    int32 ReadLine(char* buffer, size_t size);
    // A line, or a part of one that is longer: see LineReader.
    int32 ReadPart(char* buffer, size_t size);
    // Whether the body, as far as it has come, ends inside a line.
    bool IsInsideLine() const { return fReader.IsInsideLine(); }
    // Body bytes that have been received already, such as an unfinished last line's; never waits.
    int32 ReadReceived(void* buffer, size_t size);

    // The value of the last header of that name, ignoring case; null when there is none.
    const char* FindHeader(const char* name) const { return fHead.Find(name); }
    // Writes the response headers to standard error.
    void PrintAllHeader() const { fHead.Print(); }

    // Ends the connection and forgets the response; the request stays.
    void Close();

    int32 method = kGet;
    int32 version = kHttp11;

private:
    bool _UsesProxy() const { return fHasProxyHost && fHasProxyPort; }
    std::string _Request() const;
    int32 _readLine(char* buffer, size_t size);
    int32 _read(void* buffer, size_t size);
    int32 _Receive(void* buffer, size_t size);
    void _Check(const char* text);

    // The request
    std::string fHost;
    std::string fPort;
    std::string fProxyHost;
    std::string fProxyPort;
    bool fHasProxyHost = false;
    bool fHasProxyPort = false;
    bool fRefused = false; // something of it would break a line of the request
    std::string fPath;
    BString fHeader;
    BString fBody;

    // The connection and its response
    std::unique_ptr<BNetEndpoint> fEndpoint;
    ResponseHead fHead;
    LineReader fReader;
};

// The process's user agent: "Monazilla/1.00 (system release; machine; Itamori-20020123)". Any
// thread.
const char* get_user_agent();
