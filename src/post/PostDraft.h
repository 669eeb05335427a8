#pragma once

#include "post/PostForm.h"
#include "post/PostTarget.h"

#include <SupportDefs.h>

// What was written for a thread and has not been seen to arrive: a text file of the thread's own
// below "2ch/Drafts", with the name, the mail and then the message. The window's thread.
class PostDraft {
public:
    explicit PostDraft(const PostTarget& target);

    // False when there is none.
    bool Load(PostText* text) const;
    // Nothing written is no draft: the file goes. The error of a file that can't be
    // written; the old draft stands then.
    status_t Save(const PostText& text) const;
    void Remove() const;

private:
    std::string fPath; // empty without a settings folder
};
