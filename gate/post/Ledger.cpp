#include "post/Ledger.h"

#include <algorithm>

namespace gate {

namespace {

constexpr std::chrono::minutes kMemory{30};
constexpr size_t kMostEntries = 256;

} // namespace

// Beyond the count the oldest goes that is not on its way.
void Ledger::_DropOld() {
    const Clock::time_point oldest = Clock::now() - kMemory;
    fEntries.remove_if([oldest](const Entry& entry) {
        return entry.state != State::kSending && entry.changed < oldest;
    });
    if (fEntries.size() < kMostEntries)
        return;
    const auto idle = std::ranges::find_if(
        fEntries, [](const Entry& entry) { return entry.state != State::kSending; });
    if (idle != fEntries.end())
        fEntries.erase(idle);
}

Ledger::Entry* Ledger::_Find(const Draft& draft) {
    const auto found = std::ranges::find_if(
        fEntries, [&draft](const Entry& entry) { return entry.draft.IsSame(draft); });
    return found == fEntries.end() ? nullptr : &*found;
}

Ledger::Entry* Ledger::_FindAwaiting(const std::string& secret) {
    const auto found = std::ranges::find_if(fEntries, [&secret](const Entry& entry) {
        return entry.state == State::kAwaiting && entry.page.secret == secret;
    });
    return found == fEntries.end() ? nullptr : &*found;
}

Ledger::Known Ledger::Begin(const Draft& draft) {
    std::lock_guard guard(fMutex);
    _DropOld();
    Entry* entry = _Find(draft);
    if (entry == nullptr) {
        fEntries.push_back({draft, State::kSending, Clock::now(), time(nullptr), {}});
        return {};
    }
    Known known{entry->state, entry->page.secret, entry->firstSent};
    if (known.state == State::kUnclear)
        entry->state = State::kSending;
    if (known.state == State::kPosted)
        fEntries.remove_if([&draft](const Entry& other) { return other.draft.IsSame(draft); });
    return known;
}

void Ledger::End(const Draft& draft, State state) {
    std::lock_guard guard(fMutex);
    if (state == State::kNew)
        fEntries.remove_if([&draft](const Entry& entry) { return entry.draft.IsSame(draft); });
    Entry* entry = _Find(draft);
    if (entry == nullptr)
        return;
    entry->state = state;
    entry->changed = Clock::now();
}

void Ledger::Await(ConfirmationPage page) {
    std::lock_guard guard(fMutex);
    Entry* entry = _Find(page.draft);
    if (entry == nullptr)
        return;
    entry->state = State::kAwaiting;
    entry->changed = Clock::now();
    entry->page = std::move(page);
}

std::optional<ConfirmationPage> Ledger::FindPage(const std::string& secret) {
    std::lock_guard guard(fMutex);
    _DropOld();
    const Entry* entry = _FindAwaiting(secret);
    return entry == nullptr ? std::nullopt : std::optional(entry->page);
}

std::optional<ConfirmationPage> Ledger::TakePage(const std::string& secret) {
    std::lock_guard guard(fMutex);
    _DropOld();
    Entry* entry = _FindAwaiting(secret);
    if (entry == nullptr)
        return std::nullopt;
    entry->state = State::kSending;
    entry->firstSent = time(nullptr);
    return entry->page;
}

} // namespace gate
