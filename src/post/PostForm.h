#pragma once

#include "post/PostTarget.h"

#include <SupportDefs.h>

#include <ctime>
#include <string>

// What the user wrote, UTF-8.
struct WrittenPost {
    std::string name;
    std::string mail;
    std::string message;

    bool operator==(const WrittenPost&) const = default;
};

// A post as it goes out: "application/x-www-form-urlencoded", the texts in cp932. An empty name or
// mail was left empty.
struct PostForm {
    std::string name; // encoded, for the cookies
    std::string mail;
    std::string body;
};

enum class PostCheck { kGood, kNoMessage, kNotEncodable };

// Anything but kGood means that nothing may be sent: a message is missing, or some character of a
// text has no form in cp932 that comes back as itself.
PostCheck MakePostForm(const PostTarget& target, const WrittenPost& text, time_t now,
                       PostForm* form);
