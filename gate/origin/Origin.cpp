#include "origin/Origin.h"

#include "origin/EasyHandles.h"
#include "origin/Exchange.h"

#include <malloc.h>

#include <thread>

namespace gate {

namespace {

constexpr size_t kMostUnused = 2 << 20;

std::string KeyOf(const OriginRequest& request) {
    std::string key = request.family->name + " " + request.host + request.path + " " +
                      std::to_string(request.rangeStart) + " " +
                      std::to_string(request.ifModifiedSince);
    for (const std::string& line : request.headers)
        key += "\n" + line;
    return key;
}

std::shared_ptr<Transfer> Refusal(const std::string& text) {
    auto transfer = std::make_shared<Transfer>();
    transfer->NoteNeverSent();
    transfer->End(Transfer::State::kFailed, text);
    return transfer;
}

} // namespace

Origin::Origin(const Settings& settings)
    : fSettings(settings), fHandles(std::make_unique<EasyHandles>()) {}

Origin::~Origin() {
    End();
    std::unique_lock guard(fMutex);
    fChanged.wait(guard, [this] { return fThreads == 0; });
}

void Origin::End() {
    std::lock_guard guard(fMutex);
    fIsEnding = true;
    fChanged.notify_all();
}

std::shared_ptr<Transfer> Origin::Start(const OriginRequest& request) {
    if (const long seconds = fRests.SecondsLeft(request.host); seconds > 0)
        return Refusal(request.host + " が混雑しているため、あと " + std::to_string(seconds) +
                       " 秒待ってください");
    const std::string key = KeyOf(request);
    std::lock_guard guard(fMutex);
    if (fIsEnding)
        return Refusal("終了中です");
    // One that has just ended may hold what was true before the asker's last answer.
    if (auto running = fRunning.find(key);
        running != fRunning.end() && running->second->Now() == Transfer::State::kReceiving)
        return running->second;
    auto transfer = std::make_shared<Transfer>();
    if (!request.isPost)
        fRunning[key] = transfer;
    fThreads++;
    std::thread([this, request, key, transfer] { _Run(request, key, transfer); }).detach();
    return transfer;
}

void Origin::_Run(const OriginRequest& request, const std::string& key,
                  const std::shared_ptr<Transfer>& transfer) {
    if (_WaitForTurn(request)) {
        _Receive(request, transfer.get());
    } else {
        transfer->NoteNeverSent();
        transfer->End(Transfer::State::kFailed, "送る番が来ませんでした");
    }
    std::lock_guard guard(fMutex);
    if (auto running = fRunning.find(key); running != fRunning.end() && running->second == transfer)
        fRunning.erase(running);
    fThreads--;
    // An idle gate is small again after a busy moment.
    if (fThreads == 0 && mallinfo2().fordblks > kMostUnused)
        malloc_trim(0);
    fChanged.notify_all(); // under the lock: the waiting end may take all this away
}

bool Origin::_WaitForTurn(const OriginRequest& request) {
    const auto turn =
        fRests.TakeTurn(request.host, std::chrono::milliseconds(request.family->pauseMilliseconds));
    std::unique_lock guard(fMutex);
    const bool isEnding = fChanged.wait_until(guard, turn, [this] { return fIsEnding; });
    const bool isLate =
        request.endsBy != Deadline() && std::chrono::steady_clock::now() >= request.endsBy;
    return !isEnding && !isLate;
}

// What a tired server says is noted before anyone can see its answer and ask again.
void Origin::_Receive(const OriginRequest& request, Transfer* transfer) {
    CURL* handle = fHandles->Take();
    const std::string failure = Exchange(fSettings, request, transfer, [this] {
                                    std::lock_guard guard(fMutex);
                                    return fIsEnding;
                                }).Run(handle);
    fHandles->GiveBack(handle);
    const OriginHead head = transfer->Head();
    if (const std::string* retryAfter = head.Find("retry-after"))
        fRests.Note(request.host, head.status, *retryAfter);
    transfer->End(failure.empty() ? Transfer::State::kWhole : Transfer::State::kFailed, failure);
}

} // namespace gate
