#include "post/Secret.h"

#include <sys/random.h>

#include <array>

namespace gate {

std::string MakeSecret() {
    std::array<unsigned char, 16> bytes = {};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        return "";
    std::string secret;
    for (const unsigned char byte : bytes) {
        secret += "0123456789abcdef"[byte >> 4];
        secret += "0123456789abcdef"[byte & 15];
    }
    return secret;
}

} // namespace gate
