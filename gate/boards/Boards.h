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
    // The journal, which outlives it, is shown on the gate's own page.
    Boards(const Shop& shop, const Journal* journal)
        : fShop(shop), fJournal(journal), fLists(shop), fMenus(shop), fCgiThreads(shop) {}

    void Answer(const Request& request, Responder* responder) override;

private:
    void _AnswerOwn(const Request& request, Responder* responder);
    void _AnswerProxied(const Request& request, Responder* responder);
    void _AnswerDat(const ThreadAddress& thread, const Request& request, Responder* responder);

    const Shop fShop;
    const Journal* const fJournal;
    Lists fLists;
    const Menus fMenus;
    CgiThreads fCgiThreads;
};

} // namespace gate
