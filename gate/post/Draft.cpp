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
    return family.form.value_or(DefaultShape(family.Post()));
}

std::string ScriptPath(const ThreadAddress& thread) {
    return FillIn(ShapeOf(*thread.family).path, thread);
}

std::string ThreadPagePath(const ThreadAddress& thread) {
    return FillIn(ShapeOf(*thread.family).page, thread);
}

std::string SchemeOf(const Family& family) {
    return family.usesTls ? "https://" : "http://";
}

} // namespace gate
