#include "post/PostRecord.h"

#include "convert/HtmlTree.h"

#include <algorithm>

namespace gate {

namespace {

Draft DraftOf(const Settings& settings, const KeptPost& kept) {
    Draft draft;
    draft.thread.family = settings.FindFamily(kept.host);
    draft.thread.asked = kept.asked;
    draft.thread.host = kept.host;
    draft.thread.server = kept.server;
    draft.thread.board = kept.board;
    draft.thread.key = kept.key;
    draft.post = {kept.name, kept.mail, kept.message, kept.board, kept.key};
    return draft;
}

std::optional<ConfirmationPage> PageOf(const Draft& draft, const KeptPost& kept) {
    if (kept.charset < 0 || kept.charset > static_cast<int64_t>(Charset::kUtf8))
        return std::nullopt;
    const auto charset = static_cast<Charset>(kept.charset);
    const std::optional<PageForm> form =
        FormToSend(ParseForms(HtmlTree(ToUtf8(kept.page, charset))));
    if (!form || kept.secret.empty())
        return std::nullopt;
    return ConfirmationPage{kept.secret,
                            kept.page,
                            charset,
                            *form,
                            {kept.actionHost, kept.actionPath},
                            {kept.answeredHost, kept.answeredPath},
                            draft};
}

} // namespace

KeptPost MakeKept(const PostRecord& record) {
    const ThreadAddress& thread = record.draft.thread;
    KeptPost kept;
    kept.asked = thread.asked;
    kept.host = thread.host;
    kept.server = thread.server;
    kept.board = thread.board;
    kept.key = thread.key;
    kept.name = record.draft.post.name;
    kept.mail = record.draft.post.mail;
    kept.message = record.draft.post.message;
    kept.state = static_cast<int64_t>(record.state);
    kept.changed = record.changed;
    kept.firstSent = record.firstSent;
    if (record.state != PostState::kAwaiting)
        return kept;
    const ConfirmationPage& page = record.page;
    kept.secret = page.secret;
    kept.page = page.bytes;
    kept.charset = static_cast<int64_t>(page.charset);
    kept.actionHost = page.action.host;
    kept.actionPath = page.action.path;
    kept.answeredHost = page.answered.host;
    kept.answeredPath = page.answered.path;
    return kept;
}

// A clock that was ahead then must not make a post younger than its trace in a thread.
std::optional<PostRecord> RecordOf(const Settings& settings, const KeptPost& kept) {
    const time_t now = time(nullptr);
    PostRecord record;
    record.draft = DraftOf(settings, kept);
    record.state = static_cast<PostState>(kept.state);
    record.changed = std::min<time_t>(kept.changed, now);
    record.firstSent = std::min<time_t>(kept.firstSent, now);
    if (record.draft.thread.family == nullptr)
        return std::nullopt;
    switch (record.state) {
    case PostState::kAwaiting:
        if (auto page = PageOf(record.draft, kept)) {
            record.page = std::move(*page);
            return record;
        }
        return std::nullopt;
    case PostState::kSending: record.state = PostState::kUnclear; return record;
    case PostState::kPosted:
    case PostState::kUnclear: return record;
    case PostState::kNew: break;
    }
    return std::nullopt;
}

} // namespace gate
