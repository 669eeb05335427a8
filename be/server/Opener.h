#pragma once

#include <SupportDefs.h>

#include <string>

// The desktop's opener, a program of its own.
namespace server {

// Runs it with the address as its one argument, byte for byte and through no shell, and waits until
// it has ended, or a few seconds: one that still runs then has taken the address. B_OK;
// B_ENTRY_NOT_FOUND when there is no such program, another error when it failed. Any thread.
status_t RunOpener(const std::string& address);

} // namespace server
