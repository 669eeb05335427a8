#include "front/Doorkeeper.h"

#include <algorithm>

namespace gate {

namespace {

int Refuse(int status, const char* why, std::string* reason) {
    *reason = why;
    return status;
}

// What web browsers add to the requests of pages, and the program never does.
bool ComesFromPage(const Request& request) {
    return std::any_of(request.headers.begin(), request.headers.end(), [](const auto& header) {
        return header.first == "origin" || header.first.starts_with("sec-fetch-");
    });
}

int JudgeProxied(const Request& request, const Settings& settings, std::string* reason) {
    const std::string named = LowerCase(*request.Find("host"));
    if (named != request.host && named != request.host + ":80")
        return Refuse(400, "Host とアドレスが違います", reason);
    if (ComesFromPage(request))
        return Refuse(403, "ウェブページからは使えません", reason);
    if (settings.FindFamily(request.host) == nullptr && !settings.IsPortal(request.host))
        return Refuse(403, "設定にないホストです", reason);
    return 0;
}

// A page of another name could lead its name to this address: only the machine's own names count.
int JudgeOwn(const Request& request, int port, std::string* reason) {
    const std::string& named = *request.Find("host");
    for (const char* name : {"localhost", "127.0.0.1", "[::1]"}) {
        if (named == std::string(name) + ":" + std::to_string(port) ||
            (port == 80 && named == name))
            return 0;
    }
    return Refuse(403, "この名前では使えません", reason);
}

} // namespace

int JudgeRequest(const Request& request, const Settings& settings, int port, std::string* reason) {
    return request.isAbsolute ? JudgeProxied(request, settings, reason)
                              : JudgeOwn(request, port, reason);
}

bool ComesFromOwnPage(const Request& request) {
    const std::string* site = request.Find("sec-fetch-site");
    if (site != nullptr && *site != "same-origin" && *site != "none")
        return false;
    const std::string* origin = request.Find("origin");
    return origin == nullptr || *origin == "http://" + *request.Find("host");
}

} // namespace gate
