#pragma once

#include <string>

namespace gate {

// 32 hex digits that nobody can guess; empty when the system gives no random bytes.
std::string MakeSecret();

} // namespace gate
