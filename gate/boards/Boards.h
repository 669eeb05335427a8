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
    explicit Boards(const Shop& shop)
        : fShop(shop), fLists(shop), fMenus(shop), fCgiThreads(shop) {}

    void Answer(const Request& request, Responder* responder) override;

private:
    void _AnswerProxied(const Request& request, Responder* responder);
    void _AnswerDat(const ThreadAddress& thread, const Request& request, Responder* responder);

    const Shop fShop;
    Lists fLists;
    const Menus fMenus;
    CgiThreads fCgiThreads;
};

} // namespace gate
