#pragma once

#include "post/PostForm.h"
#include "post/PostTarget.h"

#include <SupportDefs.h>

// What was written for a thread and has not been seen to arrive: a text file of the thread's own
// below "2ch/Drafts", with the name, the mail and then the message. One that stands there and can't
// be read is never lost: it is set aside before another takes its place. The window's thread.
class PostDraft {
public:
    explicit PostDraft(const PostTarget& target);

    // B_ENTRY_NOT_FOUND when there is none.
    status_t Load(WrittenPost* text);
    // Nothing written is no draft: the file goes. The error of a file that can't be
    // written; the old draft stands then.
    status_t Save(const WrittenPost& text);
    void Remove();

private:
    status_t _SetUnreadAside();

    std::string fPath;      // empty without a settings folder
    bool fIsUnread = false; // something stands there that could not be read
};
