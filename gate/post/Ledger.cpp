#include "post/Ledger.h"

#include <algorithm>

namespace gate {

namespace {

constexpr time_t kMemory = 30 * 60;
constexpr time_t kMemoryOfUnclear = 24 * 60 * 60;
constexpr size_t kMostRecords = 256;

} // namespace

Ledger::Ledger(const Settings& settings, Store* store) : fStore(store) {
    for (const auto& [number, kept] : fStore->ListPosts()) {
        if (auto record = RecordOf(settings, kept)) {
            record->number = number;
            fRecords.push_back(std::move(*record));
        } else {
            fStore->DropPost(number);
        }
    }
    _DropOld();
}

template <typename Condition>
void Ledger::_Forget(Condition isGone) {
    fRecords.remove_if([this, isGone](const PostRecord& record) {
        if (!isGone(record))
            return false;
        fStore->DropPost(record.number);
        return true;
    });
}

// Beyond the count the oldest goes that is not on its way.
void Ledger::_DropOld() {
    const time_t now = time(nullptr);
    _Forget([now](const PostRecord& record) {
        const time_t memory = record.state == State::kUnclear ? kMemoryOfUnclear : kMemory;
        return record.state != State::kSending && record.changed < now - memory;
    });
    if (fRecords.size() < kMostRecords)
        return;
    const auto idle = std::ranges::find_if(
        fRecords, [](const PostRecord& record) { return record.state != State::kSending; });
    if (idle != fRecords.end())
        _Forget([&idle](const PostRecord& record) { return &record == &*idle; });
}

PostRecord* Ledger::_Find(const Draft& draft) {
    const auto found = std::ranges::find_if(
        fRecords, [&draft](const PostRecord& record) { return record.draft.IsSame(draft); });
    return found == fRecords.end() ? nullptr : &*found;
}

PostRecord* Ledger::_FindAwaiting(const std::string& secret) {
    const auto found = std::ranges::find_if(fRecords, [&secret](const PostRecord& record) {
        return record.state == State::kAwaiting && record.page.secret == secret;
    });
    return found == fRecords.end() ? nullptr : &*found;
}

void Ledger::_Change(PostRecord* record, State state) {
    record->state = state;
    record->changed = time(nullptr);
    record->number = fStore->KeepPost(record->number, MakeKept(*record));
}

Ledger::Known Ledger::Begin(const Draft& draft) {
    std::lock_guard guard(fMutex);
    _DropOld();
    PostRecord* record = _Find(draft);
    if (record == nullptr) {
        fRecords.emplace_back();
        fRecords.back().draft = draft;
        fRecords.back().firstSent = time(nullptr);
        _Change(&fRecords.back(), State::kSending);
        return {};
    }
    Known known{record->state, record->page.secret, record->firstSent};
    if (known.state == State::kUnclear)
        _Change(record, State::kSending);
    if (known.state == State::kPosted)
        _Forget([&draft](const PostRecord& other) { return other.draft.IsSame(draft); });
    return known;
}

void Ledger::End(const Draft& draft, State state) {
    std::lock_guard guard(fMutex);
    if (state == State::kNew)
        _Forget([&draft](const PostRecord& record) { return record.draft.IsSame(draft); });
    else if (PostRecord* record = _Find(draft))
        _Change(record, state);
}

void Ledger::Await(ConfirmationPage page) {
    std::lock_guard guard(fMutex);
    PostRecord* record = _Find(page.draft);
    if (record == nullptr)
        return;
    record->page = std::move(page);
    _Change(record, State::kAwaiting);
}

std::optional<ConfirmationPage> Ledger::FindPage(const std::string& secret) {
    std::lock_guard guard(fMutex);
    _DropOld();
    const PostRecord* record = _FindAwaiting(secret);
    return record == nullptr ? std::nullopt : std::optional(record->page);
}

std::optional<ConfirmationPage> Ledger::TakePage(const std::string& secret) {
    std::lock_guard guard(fMutex);
    _DropOld();
    PostRecord* record = _FindAwaiting(secret);
    if (record == nullptr)
        return std::nullopt;
    record->firstSent = time(nullptr);
    _Change(record, State::kSending);
    return record->page;
}

} // namespace gate
