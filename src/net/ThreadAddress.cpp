#include "net/ThreadAddress.h"

#include "net/NPUrl.h"
#include "text/PathNames.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string_view>

namespace {

constexpr std::string_view kScript = "read.cgi";

struct Parts {
    std::string host;
    std::string board;
    std::string key;
};

bool SameLetter(char a, char b) {
    return tolower(static_cast<unsigned char>(a)) == tolower(static_cast<unsigned char>(b));
}

// The value of a query's parameter, up to the next "&".
bool FindValue(std::string_view query, std::string_view name, std::string* value) {
    const auto found =
        std::search(query.begin(), query.end(), name.begin(), name.end(), SameLetter);
    if (found == query.end())
        return false;
    query.remove_prefix(static_cast<size_t>(found - query.begin()) + name.size());
    *value = query.substr(0, query.find('&'));
    return true;
}

// "/BOARD/KEY", and whatever follows after another "/".
bool DividePath(std::string_view path, Parts* parts) {
    const size_t first = path.find('/');
    const size_t second = first == path.npos ? path.npos : path.find('/', first + 1);
    if (second == path.npos)
        return false;
    parts->board = path.substr(first + 1, second - first - 1);
    path.remove_prefix(second + 1);
    parts->key = path.substr(0, path.find('/'));
    return true;
}

bool Divide(std::string_view url, Parts* parts) {
    const size_t slashes = url.find("//");
    if (slashes == url.npos)
        return false;
    url.remove_prefix(slashes + 2);
    const size_t hostEnd = url.find('/');
    const size_t script = hostEnd == url.npos ? url.npos : url.find(kScript, hostEnd);
    if (script == url.npos)
        return false;
    parts->host = url.substr(0, hostEnd);
    url.remove_prefix(script + kScript.size());
    const size_t question = url.find('?');
    if (question == url.npos)
        return DividePath(url, parts);
    url.remove_prefix(question);
    return FindValue(url, "bbs=", &parts->board) && FindValue(url, "key=", &parts->key);
}

bool IsPlain(const std::string& name, int32 maxLen) {
    const auto isControl = [](char c) { return iscntrl(static_cast<unsigned char>(c)) != 0; };
    return static_cast<int64>(name.size()) < maxLen &&
           std::none_of(name.begin(), name.end(), isControl);
}

} // namespace

std::string MakeThreadAddress(const char* url, const char* dat) {
    const NPUrl parsed(url);
    const std::string name = dat;
    const size_t dot = name.find('.');
    if (parsed.Status() != 0 || dot == name.npos)
        return "";
    const std::string key = name.substr(0, dot);
    const std::string start = std::string("http://") + parsed.Host();
    if (name.find("cgi") == name.npos)
        return start + "/test/read.cgi?bbs=" + parsed.Board() + "&key=" + key;
    return start + MakeReadCgiPath(parsed.Board(), key);
}

BoardParts SplitBoard(const std::string& board) {
    const size_t slash = board.find('/');
    if (slash == board.npos)
        return {"", board};
    return {board.substr(0, slash), board.substr(slash + 1)};
}

std::string MakeReadCgiPath(const std::string& board, const std::string& key) {
    const BoardParts parts = SplitBoard(board);
    const std::string start = parts.prefix.empty() ? "" : "/" + parts.prefix;
    return start + "/bbs/read.cgi?BBS=" + parts.folder + "&KEY=" + key;
}

bool Is2ch(const char* url, char* host, char* board, char* key, int32 maxLen) {
    Parts parts;
    if (url == nullptr || !Divide(url, &parts))
        return false;
    for (const std::string* part : {&parts.host, &parts.board, &parts.key}) {
        if (!IsPlain(*part, maxLen))
            return false;
    }
    if (!IsGoodComponent(parts.host.c_str()) || !IsGoodBoardFolder(parts.board.c_str()) ||
        !IsGoodComponent(parts.key.c_str()))
        return false;
    memcpy(host, parts.host.c_str(), parts.host.size() + 1);
    memcpy(board, parts.board.c_str(), parts.board.size() + 1);
    memcpy(key, parts.key.c_str(), parts.key.size() + 1);
    return true;
}
