#include "front/Doorkeeper.h"

#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>

namespace gate {

namespace {

void CopyEnd(const sockaddr_storage& end, __be32* address, __be16* port) {
    if (end.ss_family == AF_INET) {
        const auto& v4 = reinterpret_cast<const sockaddr_in&>(end);
        *address = v4.sin_addr.s_addr;
        *port = v4.sin_port;
    } else {
        const auto& v6 = reinterpret_cast<const sockaddr_in6&>(end);
        memcpy(address, v6.sin6_addr.s6_addr, sizeof(v6.sin6_addr));
        *port = v6.sin6_port;
    }
}

// Asks the kernel for the one socket between two ends. Nothing where it can't be asked or has no
// such socket; it may also name a listener in its place, which is none.
std::optional<uid_t> AskKernel(const sockaddr_storage& peer, const sockaddr_storage& own) {
    struct {
        nlmsghdr head;
        inet_diag_req_v2 body;
    } question = {};
    question.head.nlmsg_len = sizeof(question);
    question.head.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    question.head.nlmsg_flags = NLM_F_REQUEST;
    question.body.sdiag_family = static_cast<__u8>(peer.ss_family);
    question.body.sdiag_protocol = IPPROTO_TCP;
    question.body.idiag_states = ~0U;
    inet_diag_sockid& id = question.body.id;
    CopyEnd(peer, id.idiag_src, &id.idiag_sport);
    CopyEnd(own, id.idiag_dst, &id.idiag_dport);
    id.idiag_cookie[0] = id.idiag_cookie[1] = static_cast<__u32>(INET_DIAG_NOCOOKIE);
    struct {
        nlmsghdr head;
        inet_diag_msg body;
        std::array<char, 4096> more;
    } answer = {};
    const int handle = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG);
    const bool isSent = handle >= 0 && send(handle, &question, sizeof(question), 0) > 0;
    const ssize_t size = isSent ? recv(handle, &answer, sizeof(answer), 0) : -1;
    if (handle >= 0)
        close(handle);
    constexpr __u8 kListening = 10;
    const bool isIt = size >= static_cast<ssize_t>(sizeof(answer.head) + sizeof(answer.body)) &&
                      answer.head.nlmsg_type == SOCK_DIAG_BY_FAMILY &&
                      answer.body.idiag_state != kListening &&
                      answer.body.id.idiag_sport == id.idiag_sport &&
                      answer.body.id.idiag_dport == id.idiag_dport;
    return isIt ? std::optional<uid_t>(answer.body.idiag_uid) : std::nullopt;
}

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
    if (std::optional<uid_t> user = AskKernel(peer, own))
        return user;
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
