#include "front/Doorkeeper.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>

namespace gate {

namespace {

// One end of a connection as the system's tables name it: the address in four hexadecimal words of
// the machine's byte order, and the port. An IPv4 address takes its IPv6 form.
std::string TableName(const sockaddr_storage& end) {
    std::array<uint32_t, 4> words = {};
    in_port_t port = 0;
    if (end.ss_family == AF_INET) {
        const auto& v4 = reinterpret_cast<const sockaddr_in&>(end);
        words[2] = htonl(0xFFFF);
        words[3] = v4.sin_addr.s_addr;
        port = v4.sin_port;
    } else {
        const auto& v6 = reinterpret_cast<const sockaddr_in6&>(end);
        memcpy(words.data(), v6.sin6_addr.s6_addr, sizeof(words));
        port = v6.sin6_port;
    }
    std::array<char, 48> text = {};
    snprintf(text.data(), text.size(), "%08X%08X%08X%08X:%04X", words[0], words[1], words[2],
             words[3], ntohs(port));
    return text.data();
}

// The user of the socket between two ends, from a table whose addresses lack `prefix`.
std::optional<uid_t> FindUser(const char* table, const std::string& prefix,
                              const std::string& ends) {
    std::ifstream lines(table);
    std::string line;
    while (std::getline(lines, line)) {
        std::array<char, 64> local = {};
        std::array<char, 64> remote = {};
        unsigned state = 0;
        unsigned user = 0;
        if (sscanf(line.c_str(), " %*d: %63s %63s %X %*s %*s %*s %u", local.data(), remote.data(),
                   &state, &user) != 4)
            continue;
        std::string found = prefix;
        found.append(local.data()).append(" ").append(prefix).append(remote.data());
        if (found == ends)
            return user;
    }
    return std::nullopt;
}

} // namespace

std::optional<uid_t> PeerUser(int connection) {
    sockaddr_storage own = {};
    sockaddr_storage peer = {};
    socklen_t ownSize = sizeof(own);
    socklen_t peerSize = sizeof(peer);
    if (getsockname(connection, reinterpret_cast<sockaddr*>(&own), &ownSize) != 0 ||
        getpeername(connection, reinterpret_cast<sockaddr*>(&peer), &peerSize) != 0)
        return std::nullopt;
    const std::string ends = TableName(peer) + " " + TableName(own);
    if (own.ss_family == AF_INET) {
        std::array<char, 32> mapped = {};
        snprintf(mapped.data(), mapped.size(), "%08X%08X%08X", 0, 0, htonl(0xFFFF));
        if (std::optional<uid_t> user = FindUser("/proc/net/tcp", mapped.data(), ends))
            return user;
    }
    return FindUser("/proc/net/tcp6", "", ends);
}

} // namespace gate
