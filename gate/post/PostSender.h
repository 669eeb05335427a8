#pragma once

#include "boards/Shop.h"
#include "post/Answer.h"
#include "post/CookieShelf.h"

#include <string>
#include <vector>

namespace gate {

// One form's body on its way to a server.
struct OutgoingPost {
    const Family* family = nullptr; // never null
    std::string host, path;
    std::string referer; // with its scheme
    std::string body;
    bool isUtf8 = false; // said to the server, which takes it for Shift_JIS otherwise
};

// How it went.
struct SentPost {
    enum class Fate {
        kAnswered,
        kNeverSent, // the server can't have it
        kUnclear    // it may have it, but didn't say so
    };
    Fate fate = Fate::kUnclear;
    PostAnswer answer;                    // to an answered one
    std::vector<std::string> goneCookies; // dropped because the server called them broken
    std::string failure;                  // of another, for the user
};

// Sends posts with their family's cookies, once each, and follows no redirect. Any thread may call.
class PostSender {
public:
    PostSender(const Shop& shop, CookieShelf* cookies) : fShop(shop), fCookies(cookies) {}

    SentPost Send(const OutgoingPost& post, Deadline deadline);

private:
    OriginRequest _MakeRequest(const OutgoingPost& post, Deadline deadline);
    void _TakeCookies(const OutgoingPost& post, const OriginHead& head, SentPost* sent);

    const Shop fShop;
    CookieShelf* const fCookies;
};

} // namespace gate
