#include "workers/Exchange.h"

#include "net/NPHttp.h"

namespace {

ExchangeEnd SendAndRead(NPHttp* http, const TellStep& tell) {
    tell(ExchangeStep::kSend);
    if (http->Send() < 0)
        return ExchangeEnd::kNotSent;
    tell(ExchangeStep::kReceive);
    return http->ReadHeader() == 0 ? ExchangeEnd::kHead : ExchangeEnd::kNoHead;
}

} // namespace

void BeginRequest(NPHttp* http, const ProxySetting& proxy, const std::string& host) {
    if (proxy.use)
        http->SetProxy(proxy.host.c_str(), proxy.port.c_str());
    http->AddHeader("Host", host.c_str());
}

ExchangeEnd Exchange(NPHttp* http, WorkerControl* control, const TellStep& tell) {
    tell(ExchangeStep::kConnect);
    if (control->MustStop())
        return ExchangeEnd::kStopped;
    const bool isConnected = http->Connect() == B_OK;
    if (control->MustStop())
        return ExchangeEnd::kStopped;
    if (!isConnected)
        return ExchangeEnd::kNotConnected;
    const ExchangeEnd end = SendAndRead(http, tell);
    return control->MustStop() ? ExchangeEnd::kStopped : end;
}
