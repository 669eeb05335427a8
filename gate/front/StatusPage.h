#pragma once

#include "front/Journal.h"
#include "front/Responder.h"
#include "settings/GateSettings.h"
#include "store/Store.h"

#include <string>

namespace gate {

// The gate's own page for the user's web browser, in UTF-8: what it is and what it did. It holds no
// script and shows everything as text.
std::string MakeStatusPage(const Settings& settings, const Journal& journal, Store* store);
void AnswerStatusPage(const std::string& page, Responder* responder);

} // namespace gate
