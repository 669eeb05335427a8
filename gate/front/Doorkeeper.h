#pragma once

#include "front/Request.h"
#include "settings/GateSettings.h"

#include <sys/types.h>

#include <optional>
#include <string>

namespace gate {

// Whether a request may be answered: 0, or the status that refuses it with its reason. Web pages
// open in the user's browser must reach neither the boards through the gate nor its own pages.
int JudgeRequest(const Request& request, const Settings& settings, int port, std::string* reason);

// Whether a form that acts was sent from a page of the same server, as far as the browser tells.
// The request must have been judged.
bool ComesFromOwnPage(const Request& request);

// The user who holds the other end of a loopback connection; nothing when that can't be told.
std::optional<uid_t> PeerUser(int connection);

} // namespace gate
