#pragma once

#include "origin/Location.h"
#include "post/Draft.h"
#include "post/PageForm.h"

#include <chrono>
#include <ctime>
#include <list>
#include <mutex>
#include <optional>
#include <string>

namespace gate {

// A server's page that asks its reader to accept something before a post is taken.
struct ConfirmationPage {
    std::string secret; // by which the browser knows it: 32 hex digits
    std::string bytes;
    Charset charset = Charset::kCp932;
    PageForm form;
    Place action;   // where the form goes
    Place answered; // what sent the page
    Draft draft;
};

// What became of the posts of the last half hour. Any thread may call.
class Ledger {
public:
    enum class State {
        kNew,
        kSending,
        kAwaiting, // that a page is accepted
        kPosted,   // and its success may be told once more
        kUnclear
    };
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
    using Clock = std::chrono::steady_clock;
    struct Entry {
        Draft draft;
        State state = State::kSending;
        Clock::time_point changed;
        time_t firstSent = 0;
        ConfirmationPage page; // of an awaiting one
    };

    void _DropOld();
    Entry* _Find(const Draft& draft);
    Entry* _FindAwaiting(const std::string& secret);

    std::mutex fMutex;
    std::list<Entry> fEntries; // guarded by fMutex
};

} // namespace gate
