#pragma once

#include "front/Server.h"

#include <string>

namespace gate {

class Listeners;
class PostRoom;
class Store;

// Opens the port for the pages: that of the last run, where it is free, so that pages that were
// open when the gate ended go on working; else any. False with an error when there is none.
bool OpenPagePort(Listeners* listeners, Store* store, std::string* error);

// Shows servers' confirmation pages in the user's web browser, byte for byte, at a port of their
// own: whatever a page does, it can't reach the gate's other pages. Each has a secret in its
// address, and its form comes back only from itself. Any thread may call.
class Confirmations : public Answerer {
public:
    explicit Confirmations(PostRoom* room) : fRoom(room) {} // which outlives it

    // "GET /SECRET/…" and "POST /SECRET/…"
    void Answer(const Request& request, Responder* responder) override;

private:
    void _ShowPage(const std::string& secret, Responder* responder);
    void _Accept(const std::string& secret, const Request& request, Responder* responder);

    PostRoom* const fRoom;
};

} // namespace gate
