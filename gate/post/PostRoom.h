#pragma once

#include "boards/Shop.h"
#include "front/Server.h"
#include "post/CookieShelf.h"
#include "post/Ledger.h"
#include "post/Opener.h"
#include "post/PostSender.h"

#include <optional>
#include <string>

namespace gate {

// Where posts come in from the program, and acceptances from the user's web browser. Nothing is
// sent twice that a server took or may have taken, and nothing is accepted for the user. Any thread
// may call.
class PostRoom : public Answerer {
public:
    // `pagePort`: where Confirmations shows the pages that the room keeps.
    PostRoom(const Shop& shop, CookieShelf* cookies, Opener opener, int pagePort)
        : fShop(shop), fSender(shop, cookies), fOpener(std::move(opener)), fPagePort(pagePort),
          fLedger(shop.settings, &shop.store) {}

    // A post of the program's. Always one of the two pages that it knows.
    void Answer(const Request& request, Responder* responder) override;

    std::optional<ConfirmationPage> FindPage(const std::string& secret) {
        return fLedger.FindPage(secret);
    }
    // What the browser is shown.
    struct Shown {
        int status = 200;
        std::string page; // the server's; empty: there is none, the text speaks
        Charset charset = Charset::kUtf8;
        std::string text; // UTF-8
    };
    // The form of a page as the browser sent it.
    Shown Accept(const std::string& secret, const std::string& body);

private:
    std::string _Handle(const Draft& draft, Deadline deadline);
    std::string _SendFirst(const Draft& draft, Deadline deadline);
    std::string _LookThenSend(const Draft& draft, time_t since, Deadline deadline);
    std::string _Tell(const Draft& draft, const SentPost& sent);
    std::string _TellAnswer(const Draft& draft, const SentPost& sent);
    std::string _AskUser(const Draft& draft, const SentPost& sent);
    std::string _SendToBrowser(const Draft& draft, const SentPost& sent);
    std::string _PageAddress(const ConfirmationPage& page) const;
    void _NoteAccepted(const ConfirmationPage& page, const SentPost& sent);

    const Shop fShop;
    PostSender fSender;
    const Opener fOpener;
    const int fPagePort;
    Ledger fLedger;
};

} // namespace gate
