#pragma once

#include "post/PostRecord.h"

#include <ctime>
#include <list>
#include <mutex>
#include <optional>
#include <string>

namespace gate {

// What became of the posts of the last half hour, and for a day of those whose outcome is unclear:
// looking for such a post costs one request, forgetting it might post it twice. Kept in the store,
// so that a gate that is killed goes on where it was; where that can't be written, in memory alone.
// Any thread may call.
class Ledger {
public:
    using State = PostState;
    Ledger(const Settings& settings, Store* store); // both outlive it

    struct Known {
        State state = State::kNew;
        std::string secret;   // of the page that is waited for
        time_t firstSent = 0; // when the outcome became unclear, the time it was sent
    };

    // How things stand with a post that the program wants sent. A new or an unclear one is taken
    // as being sent from here on, a posted one is forgotten.
    Known Begin(const Draft& draft);
    // How a sending ended; kNew forgets it.
    void End(const Draft& draft, State state);
    void Await(ConfirmationPage page);

    std::optional<ConfirmationPage> FindPage(const std::string& secret);
    // The page, whose post is taken as being sent from here on; nothing while it is already.
    std::optional<ConfirmationPage> TakePage(const std::string& secret);

private:
    template <typename Condition>
    void _Forget(Condition isGone);
    void _DropOld();
    PostRecord* _Find(const Draft& draft);
    PostRecord* _FindAwaiting(const std::string& secret);
    void _Change(PostRecord* record, State state);

    Store* const fStore;
    std::mutex fMutex;
    std::list<PostRecord> fRecords; // guarded by fMutex
};

} // namespace gate
