#include "boards/CgiThreads.h"

#include "boards/Archives.h"
#include "boards/CgiPages.h"
#include "convert/Encodings.h"
#include "convert/OfflawLines.h"
#include "convert/RawmodeLines.h"
#include "convert/SameLength.h"
#include "origin/Location.h"

#include <algorithm>

namespace gate {

namespace {

constexpr const char* kCgiSource = "cgi"; // what was made line by line from a server's interface

std::string PathOf(const ThreadAddress& thread, long first) {
    const Family& family = *thread.family;
    std::string path = FillIn(first == 1 ? family.wholePath : family.restPath, thread);
    constexpr std::string_view kMark = "{first}";
    if (const size_t at = path.find(kMark); at != std::string::npos)
        path.replace(at, kMark.size(), std::to_string(first));
    return path;
}

// What the rawmode interface says in a header of its own when it has no posts to give.
bool HasLeft(const Family& family, const std::string& error) {
    return std::ranges::any_of(family.droppedErrors,
                               [&](const std::string& end) { return error.ends_with(end); });
}

} // namespace

void CgiThreads::AnswerDat(const ThreadAddress& thread, const Wanted& wanted,
                           Responder* responder) {
    News news;
    const std::optional<KeptThread> log = _BringUpToDate(thread, &news);
    if (!log || (!news.failure.empty() && wanted.start >= 0))
        return _RefuseFor(news, responder);
    AnswerFromLog(&fShop.store, thread, *log, wanted, responder);
}

void CgiThreads::AnswerPage(const ThreadAddress& thread, long start, Responder* responder) {
    News news;
    const std::optional<KeptThread> log = _BringUpToDate(thread, &news);
    if (!log)
        return _RefuseFor(news, responder);
    AnswerHead head;
    head.type = "text/html; charset=Shift_JIS";
    head.lastModified = log->date;
    responder->Reply(head, MakeCgiPage(log->bytes, start));
}

void CgiThreads::_RefuseFor(const News& news, Responder* responder) {
    responder->Refuse(news.hasLeft ? 404 : 502,
                      news.failure.empty() ? "スレッドに投稿がありません" : news.failure);
}

// A thread that the gate has read before stays readable when its server has nothing to say; `news`
// tells then why nothing new came.
std::optional<KeptThread> CgiThreads::_BringUpToDate(const ThreadAddress& thread, News* news) {
    const Deadline deadline = fShop.AnswerDeadline();
    std::optional<KeptThread> kept = fShop.store.FindKept(thread.KeptName());
    if (kept && kept->source != kCgiSource)
        return kept; // an archive's, which is whole
    *news = _Ask(thread, kept ? static_cast<long>(kept->lines) + 1 : 1, deadline);
    if (news->hasLeft) {
        std::string failure;
        if (std::optional<KeptThread> found = Archives(fShop).Find(thread, deadline, &failure)) {
            news->failure.clear();
            return found;
        }
        if (kept)
            news->failure.clear();
        else if (!failure.empty())
            news->failure += "。過去ログ: " + failure;
    }
    if (news->posts.empty())
        return kept;
    return _Append(thread, *news);
}

CgiThreads::News CgiThreads::_Ask(const ThreadAddress& thread, long first,
                                  Deadline deadline) const {
    OriginRequest request;
    request.family = thread.family;
    request.host = thread.server;
    request.path = PathOf(thread, first);
    request.takesCompressed = true;
    const Fetched fetched = FetchFollowing(&fShop.origin, request, deadline);
    News news;
    news.failure = fetched.failure;
    if (!news.failure.empty())
        return news;
    const std::string* error = fetched.head.Find("error");
    const long status = fetched.head.status;
    news.hasLeft =
        status == 404 || status == 410 || (error != nullptr && HasLeft(*thread.family, *error));
    if (status != 200 || news.hasLeft || error != nullptr) {
        news.failure = error != nullptr && !error->empty() ? request.host + ": " + *error
                                                           : StatusText(request.host, status);
        return news;
    }
    if (fetched.transfer->WaitForEnd(deadline) != Transfer::State::kWhole) {
        news.failure = fetched.transfer->Failure(request.host + " の応答が終わりません");
        return news;
    }
    const std::string body = fetched.transfer->Body();
    if (thread.family->kind == FamilyKind::kRawmode) {
        news.posts = ParseRawmode(body);
    } else {
        OfflawAnswer answer = ParseOfflaw(body);
        news.posts = std::move(answer.posts);
        news.failure = std::move(answer.error);
    }
    std::erase_if(news.posts, [&](const PostLine& post) { return post.number < first; });
    if (news.posts.empty() && LooksLikePage(body) && news.failure.empty())
        news.failure = request.host + " がスレッドではなくページを返しました";
    const std::string* date = fetched.head.Find("last-modified");
    news.date = date != nullptr ? ParseHttpDate(*date) : -1;
    return news;
}

// Another request may have brought some of the posts meanwhile: only what is behind the last line
// counts.
KeptThread CgiThreads::_Append(const ThreadAddress& thread, const News& news) {
    std::lock_guard guard(fMutex);
    KeptThread kept = fShop.store.FindKept(thread.KeptName()).value_or(KeptThread{});
    const long last =
        std::max_element(news.posts.begin(), news.posts.end(),
                         [](const PostLine& a, const PostLine& b) { return a.number < b.number; })
            ->number;
    if (last <= kept.lines)
        return kept;
    kept.bytes +=
        SameLengthRewritten(LinesOfPosts(news.posts, static_cast<long>(kept.lines) + 1, last));
    kept.source = kCgiSource;
    kept.lines = CountLines(kept.bytes);
    kept.date = news.date > 0 ? news.date : time(nullptr);
    fShop.store.Keep(thread.KeptName(), kept);
    return kept;
}

} // namespace gate
