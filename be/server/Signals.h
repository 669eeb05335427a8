#pragma once

#include <functional>

namespace server {

// Server thread. SIGTERM, SIGINT and SIGHUP call the handler on the server's thread, between
// events.
void WatchSignals(std::function<void()> handler);
// The signals end the process again.
void ForgetSignals();

} // namespace server
