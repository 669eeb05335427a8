#include "boards/DatAnswer.h"

#include "convert/SameLength.h"

#include <algorithm>
#include <charconv>

namespace gate {

namespace {

constexpr size_t kMostRedirects = 5;
constexpr size_t kLongestLine = 64 << 10; // of those that are looked at before anything is given

// "bytes FIRST-LAST/TOTAL" and "bytes */TOTAL"; −1 for what it does not tell.
struct RangeNumbers {
    int64_t first = -1;
    int64_t total = -1;
};

RangeNumbers ParseContentRange(const std::string* text) {
    constexpr std::string_view kUnit = "bytes ";
    RangeNumbers numbers;
    if (text == nullptr || !text->starts_with(kUnit))
        return numbers;
    const char* end = text->data() + text->size();
    std::from_chars(text->data() + kUnit.size(), end, numbers.first);
    if (const size_t slash = text->find('/'); slash != std::string::npos)
        std::from_chars(text->data() + slash + 1, end, numbers.total);
    return numbers;
}

} // namespace

DatAnswer::DatAnswer(const Shop& shop, ThreadAddress thread, const Wanted& wanted,
                     Responder* responder)
    : fShop(shop), fThread(std::move(thread)), fWanted(wanted), fResponder(responder),
      fDeadline(shop.AnswerDeadline()) {}

void DatAnswer::Run() {
    _PlanRange();
    if (_Ask())
        _Judge();
}

// A dat in UTF-8 has other bytes than the program gets, so the whole of it is asked for. Of another
// a length is the server's own as long as nothing else was ever given of the thread.
void DatAnswer::_PlanRange() {
    fRequest.family = fThread.family;
    fRequest.host = fThread.server;
    fRequest.path = fThread.DatPath();
    const std::string name = fThread.GivenName();
    if (fThread.family->charset == Charset::kUtf8) {
        fIsByLines = true;
        fRequest.takesCompressed = true;
        return;
    }
    if (fWanted.start < 0) {
        fLines = 0;
        return;
    }
    const std::optional<GivenLength> given = fShop.store.FindLength(name, fWanted.start);
    if (given && given->source == kDatSource) {
        fOffset = given->offset;
        fLines = given->lines;
    } else if (!given && fShop.store.IsPlain(name, kDatSource)) {
        fOffset = fWanted.start;
    }
    fIsByLines = fOffset < 0;
    if (fIsByLines)
        return;
    fRequest.rangeStart = std::max<int64_t>(fOffset - 1, 0);
    if (fWanted.since > 0 && fShop.store.WasGiven(name, fWanted.since))
        fRequest.ifModifiedSince = fWanted.since;
}

// Only the same dat of another host is the same thread: other redirects lead to pages that tell it
// has dropped.
bool DatAnswer::_Ask() {
    for (size_t count = 0; count <= kMostRedirects; count++) {
        fTransfer = fShop.origin.Start(fRequest);
        if (!fTransfer->WaitForHead(fDeadline)) {
            _AnswerFailure(fTransfer->Failure(fRequest.host + " の応答がまだありません"));
            return false;
        }
        fHead = fTransfer->Head();
        const std::string* location = fHead.Find("location");
        if (!IsRedirect(fHead.status) || location == nullptr)
            return true;
        const std::optional<Place> next =
            ResolveLocation({fRequest.host, fRequest.path}, *location);
        if (!next || next->path != fRequest.path || !fThread.family->Serves(next->host))
            return true;
        fRequest.host = fThread.family->PresentHost(next->host);
    }
    return true;
}

bool DatAnswer::_IsDropped() const {
    const auto& statuses = fThread.family->droppedStatuses;
    return std::find(statuses.begin(), statuses.end(), fHead.status) != statuses.end();
}

void DatAnswer::_Judge() {
    if (IsChallenge(fShop.settings, fHead, *fTransfer, fDeadline))
        return fResponder->Refuse(503, ChallengeText(fRequest.host));
    if (_IsDropped())
        return _AnswerDropped();
    switch (fHead.status) {
    case 200: return fIsByLines ? _AnswerByLines() : fOffset < 0 ? _AnswerWhole() : _AnswerCut();
    case 206: return fOffset < 0 ? _AnswerFailure(StatusText(fRequest.host, 206)) : _AnswerRange();
    case 304:
        return fRequest.ifModifiedSince > 0 ? AnswerNoNews(fWanted, fResponder)
                                            : _AnswerFailure(StatusText(fRequest.host, 304));
    case 416: return _AnswerRangeRefused();
    case 429:
    case 503: return fResponder->Refuse(503, StatusText(fRequest.host, fHead.status));
    default: return _AnswerFailure(StatusText(fRequest.host, fHead.status));
    }
}

bool DatAnswer::_WaitForBytes(size_t size) {
    for (size_t now = 0; now < size;) {
        const size_t before = now;
        now = fTransfer->WaitForMore(before, fDeadline);
        if (now == before)
            return false;
    }
    return true;
}

// Whether there is a line, or all of a body that has none.
bool DatAnswer::_WaitForLine() {
    for (size_t size = 0; size < kLongestLine;) {
        const size_t before = size;
        size = fTransfer->WaitForMore(before, fDeadline);
        if (fTransfer->Body(before).find('\n') != std::string::npos)
            return true;
        if (size == before)
            return fTransfer->Now() == Transfer::State::kWhole;
    }
    return true;
}

void DatAnswer::_AnswerWhole() {
    if (!_WaitForLine())
        return _AnswerFailure(fTransfer->Failure(fRequest.host + " の応答が続きません"));
    if (!LooksLikeDat(fTransfer->Body(0, kLongestLine)))
        return _AnswerNoDat();
    _Pass(0, fHead.length);
}

// The server has sent what was asked for: the byte before the program's end, and all behind it.
void DatAnswer::_AnswerRange() {
    const RangeNumbers range = ParseContentRange(fHead.Find("content-range"));
    if (fHead.Find("content-encoding") != nullptr ||
        (range.first >= 0 && range.first != fRequest.rangeStart))
        return _AnswerFailure(fRequest.host + " が求めていない範囲を返しました");
    if (!_WaitForBytes(1) && fTransfer->Now() != Transfer::State::kWhole)
        return _AnswerFailure(fTransfer->Failure(fRequest.host + " の応答がまだありません"));
    if (!fTransfer->Body(0, 1).starts_with('\n'))
        return AnswerChanged(fResponder);
    _Pass(1, fHead.length);
}

// The server sends the whole file whatever was asked for: what the program holds is cut off.
void DatAnswer::_AnswerCut() {
    const auto start = static_cast<size_t>(fOffset);
    if (!_WaitForBytes(start) && fTransfer->Now() != Transfer::State::kWhole)
        return _AnswerFailure(fTransfer->Failure(fRequest.host + " の応答が続きません"));
    const std::string body = fTransfer->Body();
    if (!LooksLikeDat(body))
        return _AnswerNoDat();
    if (body.size() < start || body[start - 1] != '\n')
        return AnswerChanged(fResponder);
    _Pass(start, fHead.length);
}

void DatAnswer::_AnswerByLines() {
    if (fTransfer->WaitForEnd(fDeadline) != Transfer::State::kWhole)
        return _AnswerFailure(fTransfer->Failure(fRequest.host + " の応答が続きません"));
    const std::string body = fTransfer->Body();
    if (!LooksLikeDat(body))
        return _AnswerNoDat();
    const KeptThread log = LogOfDat(*fThread.family, body, _Date());
    AnswerFromLog(&fShop.store, fThread, log, fWanted, fResponder);
}

// The byte before the program's end is not there: the file has shrunk. A server that counts
// otherwise names the very length that the program has.
void DatAnswer::_AnswerRangeRefused() {
    const RangeNumbers range = ParseContentRange(fHead.Find("content-range"));
    if (fOffset >= 0 && range.total == fOffset)
        AnswerNoNews(fWanted, fResponder);
    else
        AnswerChanged(fResponder);
}

void DatAnswer::_AnswerDropped() {
    std::string failure;
    const std::optional<KeptThread> kept = Archives(fShop).Find(fThread, fDeadline, &failure);
    if (kept)
        AnswerFromLog(&fShop.store, fThread, *kept, fWanted, fResponder);
    else if (failure.empty())
        fResponder->Refuse(404, "スレッドはサーバーにも過去ログにもありません");
    else
        fResponder->Refuse(503, "スレッドはサーバーにありません。過去ログ: " + failure);
}

// A thread that is kept can be read even when its server does not answer.
void DatAnswer::_AnswerFailure(const std::string& failure) {
    if (const std::optional<KeptThread> kept = fShop.store.FindKept(fThread.KeptName()))
        AnswerFromLog(&fShop.store, fThread, *kept, fWanted, fResponder);
    else
        fResponder->Refuse(502, failure);
}

void DatAnswer::_AnswerNoDat() {
    _AnswerFailure(fRequest.host + " がスレッドではなくページを返しました");
}

time_t DatAnswer::_Date() const {
    const std::string* date = fHead.Find("last-modified");
    return date != nullptr ? ParseHttpDate(*date) : -1;
}

// Passes on what the body holds behind `start`; `length` is the body's, −1 when it is not told.
void DatAnswer::_Pass(size_t start, int64_t length) {
    if (length < 0)
        return _PassHeld(start);
    const int64_t size = length - static_cast<int64_t>(start);
    const RangeNumbers range = ParseContentRange(fHead.Find("content-range"));
    const bool isCutShort = fHead.status == 206 && range.total > fOffset + size;
    _PassStreamed(start, size, isCutShort ? range.total - fOffset - size : 0);
}

void DatAnswer::_PassHeld(size_t start) {
    if (fTransfer->WaitForEnd(fDeadline) != Transfer::State::kWhole)
        return _AnswerFailure(fTransfer->Failure(fRequest.host + " の応答が終わりません"));
    _PassStreamed(start, static_cast<int64_t>(fTransfer->Body(start).size()), 0);
}

// Every byte goes on as it comes. The last ones wait until what was given is noted: a program that
// has all of it may ask again at once.
void DatAnswer::_PassStreamed(size_t start, int64_t size, int64_t beyond) {
    if (size == 0 && fWanted.start >= 0)
        return AnswerNoNews(fWanted, fResponder);
    const size_t before = std::min(start, SameLengthRewriter::kLongestMark);
    SameLengthRewriter rewriter(fTransfer->Body(start - before, before));
    if (!fResponder->Begin(HeadOfRest(fWanted, size, beyond, _Date())))
        return;
    const Deadline deadline = fShop.TransferDeadline();
    const size_t end = start + static_cast<size_t>(size);
    for (size_t at = start; at < end;) {
        if (fTransfer->WaitForMore(at, deadline) == at)
            return;
        const std::string piece = fTransfer->Body(at);
        at += piece.size();
        std::string rewritten = rewriter.Feed(piece);
        if (at >= end) {
            if (fTransfer->WaitForEnd(deadline) != Transfer::State::kWhole)
                return;
            rewritten += rewriter.Finish();
        }
        fLines += fLines >= 0 ? CountLines(rewritten) : 0;
        if (at >= end)
            _NoteGiven(size);
        if (!fResponder->Write(rewritten))
            return;
    }
}

void DatAnswer::_NoteGiven(int64_t size) {
    const std::string name = fThread.GivenName();
    const int64_t held = std::max<int64_t>(fWanted.start, 0);
    const int64_t offset = std::max<int64_t>(fOffset, 0);
    fShop.store.AddLength(name, {held + size, kDatSource, offset + size, fLines});
    if (const time_t date = _Date(); date > 0)
        fShop.store.AddDate(name, date);
}

} // namespace gate
