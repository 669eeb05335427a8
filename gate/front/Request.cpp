#include "front/Request.h"

#include "settings/GateSettings.h"

#include <algorithm>
#include <charconv>

namespace gate {

namespace {

constexpr std::string_view kScheme = "http://";
constexpr std::string_view kTokenMarks = "!#$%&'*+-.^_`|~";

bool IsAlphanumeric(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsToken(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return IsAlphanumeric(c) || kTokenMarks.find(c) != std::string_view::npos;
    });
}

bool IsHostName(std::string_view text) {
    return !text.empty() && text.size() <= 253 && text[0] != '.' && text[0] != '-' &&
           std::all_of(text.begin(), text.end(),
                       [](char c) { return IsAlphanumeric(c) || c == '.' || c == '-'; });
}

// Printable, without a blank: nothing in it can end a line or a word of a request.
bool IsPath(std::string_view text) {
    return text.starts_with('/') && text.find('#') == std::string_view::npos &&
           std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c < 0x7F; });
}

int Refuse(int status, const char* why, std::string* reason) {
    *reason = why;
    return status;
}

int ParseTarget(std::string_view target, Request* request, std::string* reason) {
    request->isAbsolute = !target.starts_with('/');
    if (request->isAbsolute) {
        if (LowerCase(target.substr(0, kScheme.size())) != kScheme)
            return Refuse(400, "http:// 以外のアドレスは扱いません", reason);
        target.remove_prefix(kScheme.size());
        std::string_view host = target.substr(0, target.find_first_of("/?"));
        target.remove_prefix(host.size());
        if (host.ends_with(":80"))
            host.remove_suffix(3);
        else if (host.find(':') != std::string_view::npos)
            return Refuse(403, "80 番以外のポートは扱いません", reason);
        if (!IsHostName(host))
            return Refuse(400, "ホスト名が正しくありません", reason);
        request->host = LowerCase(host);
    }
    if (target.empty())
        target = "/";
    if (!IsPath(target))
        return Refuse(400, "アドレスが正しくありません", reason);
    request->path = target;
    return 0;
}

int ParseRequestLine(std::string_view line, Request* request, std::string* reason) {
    const size_t first = line.find(' ');
    const size_t last = line.rfind(' ');
    if (first == std::string_view::npos || first == last)
        return Refuse(400, "HTTP の要求ではありません", reason);
    const std::string_view version = line.substr(last + 1);
    const std::string_view method = line.substr(0, first);
    if (!IsToken(method) || !version.starts_with("HTTP/"))
        return Refuse(400, "HTTP の要求ではありません", reason);
    request->method = method;
    if (version != "HTTP/1.0" && version != "HTTP/1.1")
        return Refuse(505, "HTTP/1.0 か HTTP/1.1 で要求してください", reason);
    if (request->method != "GET" && request->method != "HEAD" && request->method != "POST")
        return Refuse(501, "GET、HEAD、POST 以外は扱いません", reason);
    return ParseTarget(line.substr(first + 1, last - first - 1), request, reason);
}

bool ParseHeaderLine(std::string_view line, Request* request) {
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos || !IsToken(line.substr(0, colon)) ||
        line.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos)
        return false;
    std::string_view value = line.substr(colon + 1);
    while (value.starts_with(' ') || value.starts_with('\t'))
        value.remove_prefix(1);
    while (value.ends_with(' ') || value.ends_with('\t'))
        value.remove_suffix(1);
    request->headers.emplace_back(LowerCase(line.substr(0, colon)), value);
    return true;
}

} // namespace

const std::string* Request::Find(std::string_view name) const {
    auto found = std::find_if(headers.begin(), headers.end(),
                              [&](const auto& header) { return header.first == name; });
    return found == headers.end() ? nullptr : &found->second;
}

size_t Request::Count(std::string_view name) const {
    return static_cast<size_t>(std::count_if(
        headers.begin(), headers.end(), [&](const auto& header) { return header.first == name; }));
}

int ParseRequestHead(std::string_view head, Request* request, std::string* reason) {
    bool isFirst = true;
    while (!head.empty()) {
        const std::string_view line = head.substr(0, head.find("\r\n"));
        head.remove_prefix(std::min(head.size(), line.size() + 2));
        if (isFirst) {
            if (const int status = ParseRequestLine(line, request, reason); status != 0)
                return status;
        } else if (!ParseHeaderLine(line, request)) {
            return Refuse(400, "ヘッダが正しくありません", reason);
        }
        isFirst = false;
    }
    if (isFirst)
        return Refuse(400, "HTTP の要求ではありません", reason);
    if (request->Count("host") != 1 || request->Count("content-length") > 1)
        return Refuse(400, "ヘッダが正しくありません", reason);
    if (request->Find("transfer-encoding") != nullptr)
        return Refuse(501, "長さのわからない要求は扱いません", reason);
    return BodyLength(*request) < 0 ? Refuse(400, "長さが正しくありません", reason) : 0;
}

long BodyLength(const Request& request) {
    const std::string* text = request.Find("content-length");
    if (text == nullptr)
        return 0;
    long length = 0;
    const char* end = text->data() + text->size();
    const auto [rest, error] = std::from_chars(text->data(), end, length);
    const bool isNumber = error == std::errc() && rest == end && (*text)[0] != '-';
    return isNumber ? length : -1;
}

} // namespace gate
