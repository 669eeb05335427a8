#pragma once

#include <functional>
#include <string>

namespace gate {

// Opens an address in the user's web browser; false when none opens.
using Opener = std::function<bool(const std::string& address)>;

bool OpenInBrowser(const std::string& address);

} // namespace gate
