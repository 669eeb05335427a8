#pragma once

#include "boards/CgiThreads.h"
#include "boards/Lists.h"
#include "boards/Menus.h"
#include "boards/Shop.h"
#include "front/Server.h"
#include "post/CookieShelf.h"
#include "post/Secret.h"

namespace gate {

// Hands each request to who knows its answer.
class Boards : public Answerer {
public:
    // The journal and the cookies are shown on the gate's own page; posts go on to `posts`. All of
    // them outlive it.
    Boards(const Shop& shop, const Journal* journal, CookieShelf* cookies, Answerer* posts)
        : fShop(shop), fJournal(journal), fCookies(cookies), fPosts(posts), fLists(shop),
          fMenus(shop), fCgiThreads(shop) {}

    void Answer(const Request& request, Responder* responder) override;

private:
    void _AnswerOwn(const Request& request, Responder* responder);
    void _ShowStatus(Responder* responder);
    void _ForgetCookies(const Request& request, Responder* responder);
    void _AnswerProxied(const Request& request, Responder* responder);
    void _AnswerDat(const ThreadAddress& thread, const Request& request, Responder* responder);

    const Shop fShop;
    const Journal* const fJournal;
    CookieShelf* const fCookies;
    Answerer* const fPosts;
    const std::string fSecret = MakeSecret(); // before the paths of the own page that act
    Lists fLists;
    const Menus fMenus;
    CgiThreads fCgiThreads;
};

} // namespace gate
