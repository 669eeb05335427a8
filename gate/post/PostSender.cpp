#include "post/PostSender.h"

#include "origin/Location.h"

#include <algorithm>

namespace gate {

namespace {

// What is left for showing the answer when the server took all its time.
constexpr std::chrono::seconds kReserve{3};

Deadline::duration ReserveOf(Deadline deadline) {
    return std::min<Deadline::duration>(kReserve,
                                        (deadline - std::chrono::steady_clock::now()) / 4);
}

std::string ValueIn(const OriginHead& head, std::string_view name) {
    const std::string* value = head.Find(name);
    return value == nullptr ? "" : *value;
}

PostAnswer Judge(const OriginHead& head, const std::string& body, const AnswerMarks& marks) {
    const std::string code = ValueIn(head, marks.codeHeader);
    const std::string number = ValueIn(head, marks.numberHeader);
    return JudgeAnswer({static_cast<int>(head.status), body, code, number}, marks);
}

std::string WhyUnclear(const OutgoingPost& post, const OriginHead& head, const Transfer& transfer) {
    if (IsRedirect(head.status))
        return post.host + " は結果を書かずに別の場所を示しました: " + ValueIn(head, "location");
    return transfer.Failure(post.host + " の応答からは結果がわかりません");
}

} // namespace

OriginRequest PostSender::_MakeRequest(const OutgoingPost& post, Deadline deadline) {
    OriginRequest request;
    request.family = post.family;
    request.host = post.host;
    request.path = post.path;
    request.takesCompressed = true;
    request.isPost = true;
    request.body = post.body;
    request.endsBy = deadline;
    request.headers = {std::string("Content-Type: application/x-www-form-urlencoded") +
                           (post.isUtf8 ? "; charset=UTF-8" : ""),
                       "Referer: " + post.referer};
    const std::string cookies =
        fCookies->HeaderFor(*post.family, {post.host, post.path, post.family->usesTls});
    if (!cookies.empty())
        request.headers.push_back("Cookie: " + cookies);
    return request;
}

// An answer that calls a cookie broken may bring the new one along.
void PostSender::_TakeCookies(const OutgoingPost& post, const OriginHead& head, SentPost* sent) {
    std::vector<std::string> lines;
    for (const auto& [name, value] : head.headers) {
        if (name == "set-cookie")
            lines.push_back(value);
    }
    sent->goneCookies = fCookies->Take(*post.family, {post.host, post.path, post.family->usesTls},
                                       sent->answer.brokenCookies, lines);
}

SentPost PostSender::Send(const OutgoingPost& post, Deadline deadline) {
    const Deadline::duration reserve = ReserveOf(deadline);
    const std::shared_ptr<Transfer> transfer =
        fShop.origin.Start(_MakeRequest(post, deadline - reserve));
    const Transfer::State state = transfer->WaitForEnd(deadline - reserve / 2);
    const OriginHead head = transfer->Head();
    SentPost sent;
    if (state == Transfer::State::kFailed && !transfer->MayHaveBeenSent()) {
        sent.fate = SentPost::Fate::kNeverSent;
        sent.failure = transfer->Failure();
        return sent;
    }
    if (head.status != 0)
        sent.answer = Judge(head, transfer->Body(), fShop.settings.answerMarks);
    _TakeCookies(post, head, &sent);
    // Of a cut answer only the good news counts.
    const bool isPosted = sent.answer.outcome == PostAnswer::Outcome::kPosted;
    const bool isWhole = state == Transfer::State::kWhole && !IsRedirect(head.status);
    const bool isClear = sent.answer.outcome != PostAnswer::Outcome::kUnclear;
    if ((isWhole && isClear) || (isPosted && !IsRedirect(head.status)))
        sent.fate = SentPost::Fate::kAnswered;
    else
        sent.failure = WhyUnclear(post, head, *transfer);
    return sent;
}

} // namespace gate
