#pragma once

#include "front/Journal.h"
#include "front/Responder.h"
#include "settings/GateSettings.h"
#include "store/Store.h"

#include <string>
#include <vector>

namespace gate {

// The gate's own page for the user's web browser, in UTF-8: what it is and what it did. It holds no
// script and shows everything as text.
// `cookies`: what each family's are called; a button that forgets them sends to "/SECRET/forget".
struct CookieNames {
    std::string family;
    std::vector<std::string> names;
};
std::string MakeStatusPage(const Settings& settings, const Journal& journal, Store* store,
                           const std::vector<CookieNames>& cookies, const std::string& secret);
void AnswerStatusPage(const std::string& page, Responder* responder);

} // namespace gate
