#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace gate {

using Deadline = std::chrono::steady_clock::time_point;

// The head of a server's answer.
struct OriginHead {
    long status = 0;
    std::vector<std::pair<std::string, std::string>> headers; // names in lower case, as they came
    int64_t length = -1; // of the body as it is handed on; −1: not told

    const std::string* Find(std::string_view name) const; // the last of that name; null without
};

// One answer of a server while it comes and after. One thread receives it, any number read it, each
// from where it likes; it holds the whole body.
class Transfer {
public:
    enum class State {
        kReceiving,
        kWhole, // as far as the server tells
        kFailed
    };

    // Readers. Each waits until there is something to tell or the time is up.
    // Whether the head has come; a transfer that fails without one says no at once.
    bool WaitForHead(Deadline deadline) const;
    // Until there are more than `size` bytes or nothing more comes; the count of bytes then.
    size_t WaitForMore(size_t size, Deadline deadline) const;
    // Until nothing more comes.
    State WaitForEnd(Deadline deadline) const;

    State Now() const;
    OriginHead Head() const;
    // What has come behind the offset, as far as `most` goes.
    std::string Body(size_t offset = 0, size_t most = std::string::npos) const;
    // Why it failed, for the user, in UTF-8; `otherwise` when it did not.
    std::string Failure(const std::string& otherwise = "") const;
    // Whether anything of the request may have reached the server. True until the end tells.
    bool MayHaveBeenSent() const;

    // The receiver.
    void SetHead(OriginHead head);
    // False when it would be too much. Readers are told of what came by Tell, or at the end: a fast
    // server's answer comes in many small pieces.
    bool Append(std::string_view bytes, size_t most);
    void Tell();
    void End(State state, const std::string& failure = "");
    void NoteNeverSent(); // before the end

private:
    template <typename Condition>
    bool _Wait(Deadline deadline, Condition condition) const;

    mutable std::mutex fMutex;
    mutable std::condition_variable fChanged;
    // Guarded by fMutex
    OriginHead fHead;
    std::string fBody;
    bool fIsNews = false; // that nobody was told of
    State fState = State::kReceiving;
    bool fMayHaveBeenSent = true;
    std::string fFailure;
};

} // namespace gate
