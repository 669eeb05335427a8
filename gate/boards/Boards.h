#pragma once

#include "boards/CgiThreads.h"
#include "boards/Lists.h"
#include "boards/Menus.h"
#include "boards/Shop.h"
#include "front/Server.h"

namespace gate {

// Hands each request to who knows its answer.
class Boards : public Answerer {
public:
    // The journal is shown on the gate's own page; posts go on to `posts`. Both outlive it.
    Boards(const Shop& shop, const Journal* journal, Answerer* posts)
        : fShop(shop), fJournal(journal), fPosts(posts), fLists(shop), fMenus(shop),
          fCgiThreads(shop) {}

    void Answer(const Request& request, Responder* responder) override;

private:
    void _AnswerOwn(const Request& request, Responder* responder);
    void _AnswerProxied(const Request& request, Responder* responder);
    void _AnswerDat(const ThreadAddress& thread, const Request& request, Responder* responder);

    const Shop fShop;
    const Journal* const fJournal;
    Answerer* const fPosts;
    Lists fLists;
    const Menus fMenus;
    CgiThreads fCgiThreads;
};

} // namespace gate
