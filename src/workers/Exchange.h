#pragma once

#include "settings/ProxySetting.h"
#include "workers/WorkerControl.h"

#include <functional>
#include <string>

class NPHttp;

// Asking a server, as all workers do it.

// The proxy and the host: what every request begins with.
void BeginRequest(NPHttp* http, const ProxySetting& proxy, const std::string& host);

// What is about to be done; for the user.
enum class ExchangeStep { kConnect, kSend, kReceive };
using TellStep = std::function<void(ExchangeStep)>;

// How far an exchange came; a stop goes before what failed.
enum class ExchangeEnd { kHead, kStopped, kNotConnected, kNotSent, kNoHead };

// Connects, sends and reads the head of the answer; looks between them whether it must stop.
ExchangeEnd Exchange(NPHttp* http, WorkerControl* control, const TellStep& tell);
