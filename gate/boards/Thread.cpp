#include "boards/Thread.h"

#include <algorithm>

namespace gate {

namespace {

bool IsNameCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           c == '-' || c == '.';
}

void ReplaceAll(std::string* text, std::string_view mark, std::string_view value) {
    for (size_t at = 0; (at = text->find(mark, at)) != std::string::npos; at += value.size())
        text->replace(at, mark.size(), value);
}

} // namespace

bool IsKey(std::string_view key) {
    return key.size() >= 5 && key.size() <= 20 &&
           std::all_of(key.begin(), key.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool IsBoard(std::string_view board) {
    if (board.empty() || board.size() > 128)
        return false;
    while (!board.empty()) {
        const std::string_view part = board.substr(0, board.find('/'));
        if (part.empty() || part[0] == '.' ||
            !std::all_of(part.begin(), part.end(), IsNameCharacter) || board.ends_with('/'))
            return false;
        board.remove_prefix(std::min(board.size(), part.size() + 1));
    }
    return true;
}

std::optional<ThreadAddress> ParseThreadPath(const Settings& settings, const std::string& host,
                                             std::string_view path) {
    constexpr std::string_view kList = "/subject.txt";
    constexpr std::string_view kFolder = "/dat/";
    constexpr std::string_view kEnd = ".dat";
    ThreadAddress thread;
    thread.family = settings.FindFamily(host);
    if (thread.family == nullptr || !path.starts_with('/'))
        return std::nullopt;
    thread.asked = LowerCase(host);
    thread.host = thread.family->PresentHost(host);
    thread.server = thread.host;
    const size_t folder = path.rfind(kFolder);
    if (path.ends_with(kList)) {
        thread.board = path.substr(0, path.size() - kList.size());
    } else if (folder != std::string_view::npos && path.ends_with(kEnd)) {
        thread.board = path.substr(0, folder);
        thread.key = path.substr(folder + kFolder.size());
        thread.key.resize(thread.key.size() - std::min(thread.key.size(), kEnd.size()));
        if (!IsKey(thread.key))
            return std::nullopt;
    }
    thread.board.erase(0, 1);
    return IsBoard(thread.board) ? std::optional(thread) : std::nullopt;
}

std::string FillIn(std::string pattern, const ThreadAddress& thread) {
    const size_t name = thread.board.rfind('/') + 1; // npos + 1 is 0
    ReplaceAll(&pattern, "{folder}", name == 0 ? "" : "/" + thread.board.substr(0, name - 1));
    ReplaceAll(&pattern, "{name}", thread.board.substr(name));
    ReplaceAll(&pattern, "{host}", thread.server);
    ReplaceAll(&pattern, "{board}", thread.board);
    ReplaceAll(&pattern, "{key}", thread.key);
    ReplaceAll(&pattern, "{key4}", thread.key.substr(0, 4));
    ReplaceAll(&pattern, "{key5}", thread.key.substr(0, 5));
    return pattern;
}

bool LooksLikePage(std::string_view bytes) {
    const size_t first = bytes.find_first_not_of(" \t\r\n");
    const std::string start = LowerCase(bytes.substr(std::min(first, bytes.size())).substr(0, 9));
    return start.starts_with("<!doctype") || start.starts_with("<html") ||
           start.starts_with("<head") || start.starts_with("<?xml");
}

bool LooksLikeDat(std::string_view bytes) {
    return !LooksLikePage(bytes) && bytes.substr(0, bytes.find('\n')).find("<>") != bytes.npos;
}

} // namespace gate
