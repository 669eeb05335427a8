#pragma once

#include <string>
#include <vector>

#include <sys/socket.h>

#include <SupportDefs.h>

#include "kernel/Deadline.h"

struct HostAddress {
    sockaddr_storage address;
    socklen_t length;
    int family;
};

// The addresses of a host, by name or number, in the order in which they should be tried. A look-up
// that the system does not finish in time goes on without us. On failure `error` says for people
// what went wrong.
status_t lookUpHost(const std::string& host, int port, const Deadline& deadline,
                    std::vector<HostAddress>* result, std::string* error);
