#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace gate {

// What a client asks.
struct Request {
    std::string method;
    bool isAbsolute = false; // "GET http://host/path"; else "GET /path"
    std::string host;        // of an absolute address, in lower case
    std::string path;        // begins with "/", with its query
    std::vector<std::pair<std::string, std::string>> headers; // names in lower case
    std::string body;

    const std::string* Find(std::string_view name) const; // the first of that name; null without
    size_t Count(std::string_view name) const;
};

// Takes a head apart, without the empty line that ends it. 0, or the status that refuses it with
// its reason. Whatever is set is printable.
int ParseRequestHead(std::string_view head, Request* request, std::string* reason);

// How long the body is to be; −1 when that can't be told.
long BodyLength(const Request& request);

} // namespace gate
