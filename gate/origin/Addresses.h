#pragma once

#include <netinet/in.h>
#include <sys/socket.h>

#include <string>
#include <vector>

namespace gate {

std::string AddressText(const sockaddr& address); // "" for another family

// Whether an address is no server's of the world: of this machine, its network, its links, or of
// none at all; also one of these inside an IPv6 form. What the settings name is not kept away from.
bool IsKeptAway(const sockaddr& address, const std::vector<std::string>& allowed);

} // namespace gate
