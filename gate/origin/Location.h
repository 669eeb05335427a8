#pragma once

#include "origin/Origin.h"

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace gate {

// A place on a server.
struct Place {
    std::string host; // in lower case
    std::string path; // with its query, without a fragment
    bool operator==(const Place&) const = default;
};

// "http://HOST/…" or "https://HOST/…"; nothing for another form or a port of its own.
std::optional<Place> ParseAddress(std::string_view address);
// Where an answer of `from` with such a Location sends its reader.
std::optional<Place> ResolveLocation(const Place& from, std::string_view location);

bool IsRedirect(long status);

// The seconds since 1970 of an HTTP date; −1 when it is none.
time_t ParseHttpDate(const std::string& text);

// How a fetch ended, for good or bad.
struct Fetched {
    Place place; // where the answer came from
    const Family* family = nullptr;
    std::shared_ptr<Transfer> transfer;
    OriginHead head;     // status 0: there is none
    std::string failure; // for the user; "" when there is a head
};

// Asks for a place and follows redirects, from one known family's host to another's. Waits for the
// head only.
Fetched FetchFollowing(Origin* origin, const OriginRequest& request, Deadline deadline);

} // namespace gate
