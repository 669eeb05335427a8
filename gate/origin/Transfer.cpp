#include "origin/Transfer.h"

#include <algorithm>

namespace gate {

namespace {
constexpr size_t kMostExpected = 1 << 20; // whatever a server says of its answer's length
}

const std::string* OriginHead::Find(std::string_view name) const {
    for (auto header = headers.rbegin(); header != headers.rend(); ++header) {
        if (header->first == name)
            return &header->second;
    }
    return nullptr;
}

template <typename Condition>
bool Transfer::_Wait(Deadline deadline, Condition condition) const {
    std::unique_lock guard(fMutex);
    return fChanged.wait_until(guard, deadline,
                               [&] { return condition() || fState != State::kReceiving; });
}

bool Transfer::WaitForHead(Deadline deadline) const {
    _Wait(deadline, [this] { return fHead.status != 0; });
    std::lock_guard guard(fMutex);
    return fHead.status != 0;
}

size_t Transfer::WaitForMore(size_t size, Deadline deadline) const {
    _Wait(deadline, [&] { return fBody.size() > size; });
    std::lock_guard guard(fMutex);
    return fBody.size();
}

Transfer::State Transfer::WaitForEnd(Deadline deadline) const {
    _Wait(deadline, [] { return false; });
    return Now();
}

Transfer::State Transfer::Now() const {
    std::lock_guard guard(fMutex);
    return fState;
}

OriginHead Transfer::Head() const {
    std::lock_guard guard(fMutex);
    return fHead;
}

std::string Transfer::Body(size_t offset, size_t most) const {
    std::lock_guard guard(fMutex);
    return offset < fBody.size() ? fBody.substr(offset, most) : std::string();
}

std::string Transfer::Failure(const std::string& otherwise) const {
    std::lock_guard guard(fMutex);
    return fFailure.empty() ? otherwise : fFailure;
}

void Transfer::SetHead(OriginHead head) {
    std::lock_guard guard(fMutex);
    fHead = std::move(head);
    fChanged.notify_all();
}

bool Transfer::Append(std::string_view bytes, size_t most) {
    std::lock_guard guard(fMutex);
    if (bytes.size() > most - fBody.size())
        return false;
    if (fBody.empty() && fHead.length > 0)
        fBody.reserve(std::min({static_cast<size_t>(fHead.length), most, kMostExpected}));
    fBody.append(bytes);
    fIsNews = true;
    return true;
}

void Transfer::Tell() {
    std::lock_guard guard(fMutex);
    if (fIsNews)
        fChanged.notify_all();
    fIsNews = false;
}

void Transfer::End(State state, const std::string& failure) {
    std::lock_guard guard(fMutex);
    fState = state;
    fFailure = failure;
    fChanged.notify_all();
}

bool Transfer::MayHaveBeenSent() const {
    std::lock_guard guard(fMutex);
    return fMayHaveBeenSent;
}

void Transfer::NoteNeverSent() {
    std::lock_guard guard(fMutex);
    fMayHaveBeenSent = false;
}

} // namespace gate
