#pragma once

#include "origin/Location.h"
#include "post/Draft.h"
#include "post/PageForm.h"
#include "store/Store.h"

#include <ctime>
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

// The numbers stand in the store.
enum class PostState {
    kNew = 0,
    kSending = 1,
    kAwaiting = 2, // that a page is accepted
    kPosted = 3,   // and its success may be told once more
    kUnclear = 4
};

// What is known of a post.
struct PostRecord {
    Draft draft;
    PostState state = PostState::kSending;
    time_t changed = 0;
    time_t firstSent = 0;  // once the outcome is unclear, when it was sent
    ConfirmationPage page; // of an awaiting one
    int64_t number = 0;    // in the store; 0: it is not there
};

KeptPost MakeKept(const PostRecord& record);
// Of an earlier run: what was being sent then is unclear. Nothing when its host is no family's any
// more, or its page can't be shown.
std::optional<PostRecord> RecordOf(const Settings& settings, const KeptPost& kept);

} // namespace gate
