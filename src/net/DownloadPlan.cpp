#include "net/DownloadPlan.h"

#include <charconv>
#include <cstdlib>
#include <string>
#include <string_view>
#include <strings.h>

namespace {

// A copy without a time may be whole: its last download was cut just at its end, or the server
// names no times. The server says so by having no byte behind it (RFC 9110, 14.4: "bytes
// */length").
bool HoldsAll(const DownloadAnswer& answer) {
    return answer.namesEpoch && answer.contentRange != nullptr &&
           "bytes */" + std::to_string(answer.cachedSize) == answer.contentRange;
}

bool TakeNumber(std::string_view* text, char end, int64* number) {
    const char* last = text->data() + text->size();
    const auto [rest, error] = std::from_chars(text->data(), last, *number);
    if (error != std::errc() || (end == '\0' ? rest != last : rest == last || *rest != end))
        return false;
    text->remove_prefix(static_cast<size_t>(rest - text->data()) + (end == '\0' ? 0 : 1));
    return true;
}

// "bytes FIRST-LAST/TOTAL"; a total that is not known is "*".
bool FillsItsRange(std::string_view range, int64 received) {
    constexpr std::string_view kUnit = "bytes ";
    int64 first = 0;
    int64 last = 0;
    int64 total = 0;
    if (!range.starts_with(kUnit))
        return true;
    range.remove_prefix(kUnit.size());
    if (!TakeNumber(&range, '-', &first) || !TakeNumber(&range, '/', &last))
        return true;
    return received > last - first && (!TakeNumber(&range, '\0', &total) || last + 1 >= total);
}

bool HasLength(const DownloadBody& body) {
    const int64 announced =
        body.contentLength != nullptr ? strtoll(body.contentLength, nullptr, 10) : body.received;
    return body.mayExceed ? body.received >= announced : body.received == announced;
}

bool HasPlainCoding(const DownloadBody& body) {
    return body.transferCoding == nullptr || strcasecmp(body.transferCoding, "identity") == 0;
}

} // namespace

AnswerKind JudgeAnswer(const DownloadAnswer& answer) {
    if (!answer.namesSize)
        return answer.status == 200 ? AnswerKind::kBody : AnswerKind::kRefusal;
    switch (answer.status) {
    case 200:
    case 206: return AnswerKind::kBody;
    case 304: return AnswerKind::kUnchanged;
    case 416: return HoldsAll(answer) ? AnswerKind::kFoundWhole : AnswerKind::kRefusal;
    default: return AnswerKind::kRefusal;
    }
}

bool IsWholeBody(const DownloadBody& body) {
    if (body.lastResult != 0 || body.endsInsideLine)
        return false;
    if (!HasLength(body) || !HasPlainCoding(body))
        return false;
    return body.status != 206 || body.contentRange == nullptr ||
           FillsItsRange(body.contentRange, body.received);
}
