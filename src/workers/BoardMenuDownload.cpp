#include "workers/BoardMenuDownload.h"

#include "messages/Messages.h"
#include "net/DownloadPlan.h"
#include "net/NPHttp.h"
#include "workers/Exchange.h"

#include <Message.h>

namespace {

constexpr size_t kChunk = 4095;
constexpr size_t kLongestPage = 16 * 1024 * 1024; // hundreds of times a menu

// An empty page is none.
bool IsWholePage(NPHttp* http, int32 lastResult, size_t size) {
    DownloadBody body;
    body.status = http->Status()->code;
    body.contentLength = http->FindHeader("Content-Length");
    body.received = static_cast<int64>(size);
    body.lastResult = lastResult;
    body.mayExceed = true;
    body.transferCoding = http->FindHeader("Transfer-Encoding");
    return size > 0 && IsWholeBody(body);
}

} // namespace

int32 BoardMenuDownload::Run() {
    NPHttp http(fJob.portal.c_str(), "80");
    if (!_Ask(&http) || !_ReadPage(&http))
        return fStopped ? 0 : -1;
    http.Close();
    BMessage ended(kMsgUpdateEnded);
    ended.AddData("menu", B_RAW_TYPE, fPage.data(), fPage.size(), false);
    fJob.window.SendMessage(&ended);
    return 0;
}

bool BoardMenuDownload::_Ask(NPHttp* http) {
    http->version = NPHttp::kHttp10; // a page that may come in chunks could not be stored as it is
    http->SetPath("/newbbsmenu.html");
    BeginRequest(http, fJob.proxy, fJob.portal);
    http->AddHeader("Connection: close");
    const auto tell = [this](ExchangeStep step) {
        _ShowStatus(step == ExchangeStep::kConnect ? "接続中…"
                    : step == ExchangeStep::kSend  ? "送信中…"
                                                   : "受信中…");
    };
    switch (Exchange(http, fJob.control.get(), tell)) {
    case ExchangeEnd::kHead: return true;
    case ExchangeEnd::kStopped: fStopped = true; return false;
    case ExchangeEnd::kNotConnected: return _Fail("接続エラー");
    case ExchangeEnd::kNotSent: return _Fail("送信エラー");
    case ExchangeEnd::kNoHead: return _Fail("ヘッダ読み込みエラー");
    }
    return false;
}

// The page of another status than 200 is taken like a good one: what the portal answers is the
// menu.
bool BoardMenuDownload::_ReadPage(NPHttp* http) {
    constexpr const char* kUnreadable = "読み込み失敗！";
    if (http->Status()->code != 200)
        _ShowStatus(kUnreadable);
    char chunk[kChunk];
    int32 length = 0;
    while ((length = http->Read(chunk, sizeof(chunk))) > 0) {
        fStopped = fJob.control->MustStop();
        if (fStopped)
            return false;
        fPage.append(chunk, static_cast<size_t>(length));
        if (fPage.size() > kLongestPage)
            return _Fail(kUnreadable);
    }
    return IsWholePage(http, length, fPage.size()) || _Fail(kUnreadable);
}

bool BoardMenuDownload::_Fail(const char* text) {
    fStopped = fJob.control->MustStop();
    if (!fStopped)
        _ShowStatus(text);
    return false;
}

void BoardMenuDownload::_ShowStatus(const char* text) {
    BMessage status(kMsgUpdateStatus);
    status.AddString("text", text);
    fJob.window.SendMessage(&status);
}
