#include "post/Draft.h"

namespace gate {

namespace {

// "PREFIX/" when the path is "/PREFIX" and the script; nothing when it is no script of posting.
std::optional<std::string> PrefixOf(std::string_view path) {
    path = path.substr(0, path.find('?'));
    for (const std::string_view script : {"/test/bbs.cgi", "/bbs/write.cgi"}) {
        if (!path.ends_with(script))
            continue;
        path.remove_suffix(script.size());
        return path.empty() ? "" : std::string(path.substr(1)) + "/";
    }
    return std::nullopt;
}

bool UsesBbsCgi(const Family& family) {
    return family.Post() == PostKind::kBbs || family.Post() == PostKind::kUtf8;
}

// "/PREFIX" of a board "PREFIX/NAME".
std::string FolderOf(const std::string& board) {
    const size_t slash = board.rfind('/');
    return slash == board.npos ? "" : "/" + board.substr(0, slash);
}

std::string NameOf(const std::string& board) {
    return board.substr(board.rfind('/') + 1); // npos + 1 is 0
}

} // namespace

std::optional<Draft> ReadDraft(const Settings& settings, const Request& request) {
    const std::optional<std::string> prefix = PrefixOf(request.path);
    const std::optional<ProgramPost> post = ParseProgramPost(request.body);
    Draft draft;
    draft.thread.family = settings.FindFamily(request.host);
    if (!prefix || !post || draft.thread.family == nullptr)
        return std::nullopt;
    draft.post = *post;
    if (post->board.find('/') == post->board.npos)
        draft.post.board = *prefix + post->board;
    ThreadAddress& thread = draft.thread;
    thread.asked = LowerCase(request.host);
    thread.host = thread.family->PresentHost(request.host);
    thread.server = thread.host;
    thread.board = draft.post.board;
    thread.key = post->key;
    const bool isGood = IsBoard(thread.board) && IsKey(thread.key);
    return isGood ? std::optional(draft) : std::nullopt;
}

FormShape ShapeOf(const Family& family) {
    switch (family.Post()) {
    case PostKind::kUtf8: return Utf8Shape();
    case PostKind::kRawmode: return RawmodeShape();
    case PostKind::kOfflaw: return OfflawShape();
    case PostKind::kBbs: break;
    }
    return BbsCgiShape();
}

std::string ScriptPath(const ThreadAddress& thread) {
    if (UsesBbsCgi(*thread.family))
        return FolderOf(thread.board) + "/test/bbs.cgi";
    if (thread.family->Post() == PostKind::kRawmode)
        return "/bbs/write.cgi/" + thread.board + "/" + thread.key + "/";
    return "/bbs/write.cgi";
}

std::string ThreadPagePath(const ThreadAddress& thread) {
    if (UsesBbsCgi(*thread.family))
        return FolderOf(thread.board) + "/test/read.cgi/" + NameOf(thread.board) + "/" +
               thread.key + "/";
    return "/bbs/read.cgi/" + thread.board + "/" + thread.key + "/";
}

std::string SchemeOf(const Family& family) {
    return family.usesTls ? "https://" : "http://";
}

} // namespace gate
