#include "post/Confirmations.h"

#include "convert/Words.h"
#include "front/Doorkeeper.h"
#include "front/Listeners.h"
#include "post/PostRoom.h"
#include "store/Store.h"

namespace gate {

namespace {

constexpr size_t kSecretLength = 32;

// The secret that a path begins with; empty without.
std::string SecretOf(const std::string& path) {
    const std::string secret = path.substr(1, kSecretLength);
    const bool isSecret = secret.size() == kSecretLength && path.size() > kSecretLength + 1 &&
                          path[kSecretLength + 1] == '/' &&
                          secret.find_first_not_of("0123456789abcdef") == std::string::npos;
    return isSecret ? secret : "";
}

const char* LabelOf(Charset charset) {
    switch (charset) {
    case Charset::kCp932: return "Shift_JIS";
    case Charset::kEucJp: return "EUC-JP";
    case Charset::kUtf8: break;
    }
    return "UTF-8";
}

// A server's page runs no script, loads nothing, and its forms lead nowhere but back here.
void Show(int status, const std::string& bytes, Charset charset, Responder* responder) {
    AnswerHead head;
    head.status = status;
    head.reason = status == 200 ? "OK" : "Refused";
    head.type = std::string("text/html; charset=") + LabelOf(charset);
    head.more = {kSafePagePolicy,
                 "X-Frame-Options: DENY",
                 "X-Content-Type-Options: nosniff",
                 "Cache-Control: no-store",
                 "Referrer-Policy: same-origin",
                 "Cross-Origin-Opener-Policy: same-origin",
                 "Cross-Origin-Resource-Policy: same-origin",
                 "Cross-Origin-Embedder-Policy: require-corp"};
    responder->Reply(head, bytes);
}

void ShowText(int status, const std::string& text, Responder* responder) {
    std::string page = "<!DOCTYPE html>\n<html lang=\"ja\"><head><meta charset=\"utf-8\">"
                       "<title>イタモリのゲート</title>"
                       "<style>body{font:14px/1.5 sans-serif;margin:24px;color:#222}</style>"
                       "</head><body><p>";
    for (const char c : text) {
        if (c == '\n')
            page += "<br>\n";
        else
            AppendEscaped(c, &page);
    }
    Show(status, page + "</p></body></html>\n", Charset::kUtf8, responder);
}

bool IsForm(const Request& request) {
    const std::string* type = request.Find("content-type");
    return type != nullptr && LowerCase(*type).starts_with("application/x-www-form-urlencoded");
}

} // namespace

bool OpenPagePort(Listeners* listeners, Store* store, std::string* error) {
    const int last = store->PagePort();
    if (last > 0 && listeners->Open(last, error))
        return true;
    if (!listeners->Open(0, error))
        return false;
    store->SetPagePort(listeners->Port());
    return true;
}

void Confirmations::Answer(const Request& request, Responder* responder) {
    const std::string secret = request.isAbsolute ? "" : SecretOf(request.path);
    if (secret.empty())
        ShowText(404, "ここには何もありません。", responder);
    else if (request.method == "POST")
        _Accept(secret, request, responder);
    else
        _ShowPage(secret, responder);
}

void Confirmations::_ShowPage(const std::string& secret, Responder* responder) {
    const std::optional<ConfirmationPage> page = fRoom->FindPage(secret);
    if (page)
        Show(200, page->bytes, page->charset, responder);
    else
        ShowText(404, "この画面はもう使われたか、期限が過ぎました。", responder);
}

void Confirmations::_Accept(const std::string& secret, const Request& request,
                            Responder* responder) {
    if (!ComesFromOwnPage(request) || !IsForm(request))
        return ShowText(403, "この画面の外からは使えません。", responder);
    const PostRoom::Shown shown = fRoom->Accept(secret, request.body);
    if (shown.page.empty())
        ShowText(shown.status, shown.text.empty() ? "サーバーの応答は空でした。" : shown.text,
                 responder);
    else
        Show(shown.status, shown.page, shown.charset, responder);
}

} // namespace gate
