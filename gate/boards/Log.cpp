#include "boards/Log.h"

#include "convert/Encodings.h"
#include "convert/SameLength.h"
#include "origin/Location.h"

#include <algorithm>
#include <charconv>

namespace gate {

namespace {

bool IsLineStart(std::string_view bytes, int64_t offset) {
    const auto at = static_cast<size_t>(offset);
    return offset == 0 || (at <= bytes.size() && bytes[at - 1] == '\n');
}

} // namespace

std::optional<Wanted> ParseWanted(const Request& request) {
    constexpr std::string_view kUnit = "bytes=";
    Wanted wanted;
    if (const std::string* range = request.Find("range")) {
        const char* end = range->data() + range->size();
        if (!range->starts_with(kUnit))
            return std::nullopt;
        const auto [rest, error] = std::from_chars(range->data() + kUnit.size(), end, wanted.start);
        if (error != std::errc() || wanted.start < 0 || std::string_view(rest, end) != "-")
            return std::nullopt;
    }
    if (const std::string* since = request.Find("if-modified-since"))
        wanted.since = ParseHttpDate(*since);
    if (wanted.start == 0)
        wanted.start = -1;
    return wanted;
}

Missing FindMissing(Store* store, const ThreadAddress& thread, const KeptThread& log,
                    const Wanted& wanted) {
    const std::string name = thread.GivenName();
    if (wanted.start < 0)
        return {Missing::Kind::kRest, 0, 0};
    std::optional<GivenLength> given = store->FindLength(name, wanted.start);
    // The length of a copy whose download was cut was never noted.
    const bool isPlain = log.source == kDatSource || store->WasEverGiven(name);
    if (!given && isPlain && store->IsPlain(name, log.source))
        given = GivenLength{wanted.start, log.source, wanted.start, -1};
    if (!given || (given->source != log.source && given->lines < 0))
        return {Missing::Kind::kUnknown};
    const bool isSame = given->source == log.source;
    const int64_t offset = isSame ? given->offset : OffsetOfLine(log.bytes, given->lines);
    if (offset < 0 || !IsLineStart(log.bytes, offset))
        return {Missing::Kind::kChanged};
    const std::string_view held =
        std::string_view(log.bytes).substr(0, static_cast<size_t>(offset));
    return {Missing::Kind::kRest, offset, CountLines(held)};
}

void AnswerFromLog(Store* store, const ThreadAddress& thread, const KeptThread& log,
                   const Wanted& wanted, Responder* responder) {
    const Missing missing = FindMissing(store, thread, log, wanted);
    if (missing.kind == Missing::Kind::kChanged)
        return AnswerChanged(responder);
    if (missing.kind == Missing::Kind::kUnknown)
        return AnswerUnknown(responder);
    const std::string_view rest =
        std::string_view(log.bytes).substr(static_cast<size_t>(missing.offset));
    const auto size = static_cast<int64_t>(rest.size());
    store->AddLength(thread.GivenName(), {std::max<int64_t>(wanted.start, 0) + size, log.source,
                                          static_cast<int64_t>(log.bytes.size()), log.lines});
    if (wanted.start >= 0 && rest.empty())
        return AnswerNoNews(wanted, responder);
    responder->Reply(HeadOfRest(wanted, size, 0, log.date), rest);
}

// The program takes 304 for "this copy is whole", which it does not know of an unfinished one: to
// that the whole length is named instead.
void AnswerNoNews(const Wanted& wanted, Responder* responder) {
    AnswerHead head;
    if (wanted.IsOfUnfinishedCopy()) {
        head.status = 416;
        head.reason = "新しい投稿はありません";
        head.contentRange = "bytes */" + std::to_string(wanted.start);
    } else {
        head.status = 304;
        head.reason = "Not Modified";
    }
    responder->Reply(head, "");
}

void AnswerChanged(Responder* responder) {
    responder->Refuse(
        416,
        "サーバーのログが途中で変わりました（あぼーんなど）。ログを削除して読み直してください");
}

void AnswerUnknown(Responder* responder) {
    responder->Refuse(
        416, "スレッドの取得元が変わり、続きがわかりません。ログを削除して読み直してください");
}

AnswerHead HeadOfRest(const Wanted& wanted, int64_t size, int64_t beyond, time_t date) {
    AnswerHead head;
    head.length = size;
    head.lastModified = date >= 0 ? date : time(nullptr);
    if (wanted.start < 0)
        return head;
    head.status = 206;
    head.reason = "Partial Content";
    head.contentRange = "bytes " + std::to_string(wanted.start) + "-" +
                        std::to_string(wanted.start + size - 1) + "/" +
                        std::to_string(wanted.start + size + beyond);
    return head;
}

// In UTF-8 only what ends with its line: the rest may be half a character.
KeptThread LogOfDat(const Family& family, const std::string& dat, time_t date) {
    KeptThread log{kDatSource, dat, 0, date};
    const std::string lines = dat.substr(0, dat.rfind('\n') + 1);
    if (family.charset == Charset::kUtf8 && GuessCharset(lines) == Charset::kUtf8) {
        log.source = kUtf8Source;
        log.bytes = ToCp932(lines, Charset::kUtf8);
    }
    log.bytes = SameLengthRewritten(log.bytes);
    log.lines = CountLines(log.bytes);
    return log;
}

int64_t OffsetOfLine(std::string_view bytes, int64_t count) {
    size_t offset = 0;
    for (; count > 0; count--) {
        offset = bytes.find('\n', offset);
        if (offset == std::string_view::npos)
            return -1;
        offset++;
    }
    return static_cast<int64_t>(offset);
}

int64_t CountLines(std::string_view bytes) {
    return std::count(bytes.begin(), bytes.end(), '\n');
}

} // namespace gate
