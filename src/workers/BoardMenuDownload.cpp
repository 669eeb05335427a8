#include "workers/BoardMenuDownload.h"

#include "messages/Messages.h"
#include "net/NPHttp.h"

#include <Message.h>

#include <charconv>
#include <cstring>

namespace {

constexpr size_t kChunk = 4095;
constexpr size_t kLongestPage = 16 * 1024 * 1024; // hundreds of times a menu

// Whether the stream ended where the server said that the page ends. An empty page is none, nor is
// one that came in chunks all the same: their lengths stand in it.
bool IsWhole(const NPHttp& http, size_t size) {
    const char* coding = http.FindHeader("Transfer-Encoding");
    if (coding != nullptr && strcasecmp(coding, "identity") != 0)
        return false;
    const char* text = http.FindHeader("Content-Length");
    if (text == nullptr || size == 0)
        return size > 0;
    size_t announced = 0;
    const bool isNumber = std::from_chars(text, text + strlen(text), announced).ec == std::errc();
    return !isNumber || size >= announced;
}

} // namespace

int32 BoardMenuDownload::Run() {
    NPHttp http(fJob.portal.c_str(), "80");
    if (!_Connect(&http) || !_ReadPage(&http))
        return fStopped ? 0 : -1;
    http.Close();
    BMessage ended(kMsgUpdateEnded);
    ended.AddData("menu", B_RAW_TYPE, fPage.data(), fPage.size(), false);
    fJob.window.SendMessage(&ended);
    return 0;
}

bool BoardMenuDownload::_Connect(NPHttp* http) {
    if (fJob.proxy.use)
        http->SetProxy(fJob.proxy.host.c_str(), fJob.proxy.port.c_str());
    http->version = NPHttp::kHttp10; // a page that may come in chunks could not be stored as it is
    http->SetPath("/newbbsmenu.html");
    http->AddHeader("Host", fJob.portal.c_str());
    http->AddHeader("Connection: close");
    _ShowStatus("接続中…");
    if (http->Connect() != B_OK)
        return _Fail("接続エラー");
    _ShowStatus("送信中…");
    if (http->Send() < 0)
        return _Fail("送信エラー");
    _ShowStatus("受信中…");
    return http->ReadHeader() == 0 || _Fail("ヘッダ読み込みエラー");
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
    return (length == 0 && IsWhole(*http, fPage.size())) || _Fail(kUnreadable);
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
