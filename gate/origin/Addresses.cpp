#include "origin/Addresses.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace gate {

namespace {

struct Block {
    uint32_t start;
    int bits;
};

constexpr std::array<Block, 14> kBlocks = {{{0x00000000, 8},  // this host
                                            {0x0A000000, 8},  // private
                                            {0x64400000, 10}, // carriers' own
                                            {0x7F000000, 8},  // loopback
                                            {0xA9FE0000, 16}, // link-local
                                            {0xAC100000, 12}, // private
                                            {0xC0000000, 24}, // protocols
                                            {0xC0000200, 24}, // examples
                                            {0xC0A80000, 16}, // private
                                            {0xC6120000, 15}, // benchmarks
                                            {0xC6336400, 24}, // examples
                                            {0xCB007100, 24}, // examples
                                            {0xE0000000, 4},  // multicast
                                            {0xF0000000, 4}}};

bool IsKeptAwayV4(uint32_t address) {
    return std::any_of(kBlocks.begin(), kBlocks.end(), [&](const Block& block) {
        return (address >> (32 - block.bits)) == (block.start >> (32 - block.bits));
    });
}

uint32_t V4At(const uint8_t* bytes) {
    return static_cast<uint32_t>(bytes[0]) << 24 | static_cast<uint32_t>(bytes[1]) << 16 |
           static_cast<uint32_t>(bytes[2]) << 8 | bytes[3];
}

// Only 2000::/3 is routed in the world; three forms in and beside it hold an IPv4 address.
bool IsKeptAwayV6(const in6_addr& address) {
    static constexpr std::array<uint8_t, 12> kMapped = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};
    static constexpr std::array<uint8_t, 12> kTranslated = {0, 0x64, 0xFF, 0x9B};
    const uint8_t* bytes = address.s6_addr;
    if (memcmp(bytes, kMapped.data(), 12) == 0 || memcmp(bytes, kTranslated.data(), 12) == 0)
        return IsKeptAwayV4(V4At(bytes + 12));
    if (bytes[0] == 0x20 && bytes[1] == 0x02)
        return IsKeptAwayV4(V4At(bytes + 2));
    return (bytes[0] & 0xE0) != 0x20 || V4At(bytes) == 0x20010000;
}

} // namespace

std::string AddressText(const sockaddr& address) {
    std::array<char, INET6_ADDRSTRLEN> text = {};
    const void* bytes =
        address.sa_family == AF_INET
            ? static_cast<const void*>(&reinterpret_cast<const sockaddr_in&>(address).sin_addr)
            : &reinterpret_cast<const sockaddr_in6&>(address).sin6_addr;
    return inet_ntop(address.sa_family, bytes, text.data(), text.size()) ? text.data() : "";
}

bool IsKeptAway(const sockaddr& address, const std::vector<std::string>& allowed) {
    if (address.sa_family != AF_INET && address.sa_family != AF_INET6)
        return true;
    if (std::find(allowed.begin(), allowed.end(), AddressText(address)) != allowed.end())
        return false;
    if (address.sa_family == AF_INET)
        return IsKeptAwayV4(ntohl(reinterpret_cast<const sockaddr_in&>(address).sin_addr.s_addr));
    return IsKeptAwayV6(reinterpret_cast<const sockaddr_in6&>(address).sin6_addr);
}

} // namespace gate
