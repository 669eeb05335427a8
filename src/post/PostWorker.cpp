#include "post/PostWorker.h"

#include "messages/Messages.h"
#include "net/NPHttp.h"
#include "post/PostAnswer.h"
#include "widgets/Alerts.h"
#include "workers/Exchange.h"
#include "workers/WorkerThread.h"

#include <Message.h>

#include <cstdio>

namespace {

constexpr size_t kLongestLine = 4095;
constexpr size_t kLongestCookie = 4095;

// One post on its way. Lives on the worker's stack.
class Posting : private AlertOwner {
public:
    explicit Posting(const PostJob& job) : fJob(job), fHttp(job.target.host.c_str(), "80") {}
    int32 Run();

private:
    bool _MustStop() { return fJob.control->MustStop(); }
    void _PrepareRequest();
    ExchangeEnd _Ask();
    int32 _EndUnsent();
    int32 _EndUnconfirmed();
    void _AddCookies();
    void _ReadAnswer(PostAnswer* answer, bool* stopped);
    int32 _Judge(const PostAnswer& answer);
    void _ShowRefusal(const PostAnswer& answer);
    void _ShowProgress(const std::string& text);
    void PresentAlert(BAlert* alert) override { fJob.control->PresentAlert(alert, fJob.window); }
    void _Send(BMessage* message) { fJob.window.SendMessage(message); }

    const PostJob& fJob;
    NPHttp fHttp;
};

void Posting::_ShowProgress(const std::string& text) {
    BMessage message(kMsgPostProgress);
    message.AddInt32("progress", 0);
    message.AddString("message", text.c_str());
    _Send(&message);
}

void Posting::_AddCookies() {
    const PostForm& form = fJob.form;
    if (form.name.empty() && form.mail.empty())
        fHttp.AddHeader("Cookie: NAME=&MAIL=");
    if (!form.name.empty() && form.name.size() <= kLongestCookie)
        fHttp.AddHeader("Cookie", ("NAME=" + form.name).c_str());
    if (!form.mail.empty() && form.mail.size() <= kLongestCookie)
        fHttp.AddHeader("Cookie", ("MAIL=" + form.mail).c_str());
}

void Posting::_PrepareRequest() {
    fHttp.method = NPHttp::kPost;
    fHttp.version = NPHttp::kHttp10;
    fHttp.SetPath(fJob.target.CgiPath().c_str());
    BeginRequest(&fHttp, fJob.proxy, fJob.target.host);
    fHttp.AddHeader("Connection: close");
    fHttp.AddHeader("Referer", fJob.target.Referer().c_str());
    _AddCookies();
    fHttp.AddHeader("User-Agent", get_user_agent());
    fHttp.AddHeader("Content-type: application/x-www-form-urlencoded");
    fHttp.AddHeader("Content-length", std::to_string(fJob.form.body.size()).c_str());
    fHttp.AddBody(fJob.form.body.c_str());
}

int32 Posting::Run() {
    _PrepareRequest();
    switch (_Ask()) {
    case ExchangeEnd::kStopped: return 0;
    case ExchangeEnd::kNotConnected: return _EndUnsent();
    case ExchangeEnd::kNotSent:
    case ExchangeEnd::kNoHead: return _EndUnconfirmed();
    case ExchangeEnd::kHead: break;
    }
    PostAnswer answer;
    bool stopped = false;
    _ReadAnswer(&answer, &stopped);
    return stopped ? 0 : _Judge(answer);
}

ExchangeEnd Posting::_Ask() {
    const auto tell = [this](ExchangeStep step) {
        if (step != ExchangeStep::kReceive)
            _ShowProgress(fJob.target.host +
                          (step == ExchangeStep::kConnect ? "へ接続中" : "へ送信中"));
    };
    const ExchangeEnd end = Exchange(&fHttp, fJob.control.get(), tell);
    // A server may have answered before it took all of a post.
    const bool hasAnswer = end == ExchangeEnd::kNotSent && fHttp.ReadHeader() == 0;
    return hasAnswer ? ExchangeEnd::kHead : end;
}

int32 Posting::_EndUnsent() {
    ShowAlert(this, "接続エラー");
    fprintf(stderr, "Connect()\n");
    BMessage failed(kMsgPostFailed);
    _Send(&failed);
    _ShowProgress("");
    return -1;
}

// The post may well have arrived: sending it again would double it.
int32 Posting::_EndUnconfirmed() {
    BMessage done(kMsgPostDone);
    done.AddBool("unconfirmed", true);
    _Send(&done);
    _ShowProgress("");
    fprintf(stderr, "ReadHeader()\n");
    return -1;
}

void Posting::_ReadAnswer(PostAnswer* answer, bool* stopped) {
    char line[kLongestLine];
    for (int32 length; (length = fHttp.ReadLine(line, sizeof(line))) > 0;) {
        fprintf(stderr, "%.*s", static_cast<int>(length), line);
        *stopped = _MustStop();
        if (*stopped)
            return;
        answer->AddLine(line, length);
    }
    // Many a server ends its page without a line feed, and may have said there that it took the
    // post.
    const int32 rest = fHttp.ReadReceived(line, sizeof(line));
    if (rest <= 0)
        return;
    fprintf(stderr, "%.*s\n", static_cast<int>(rest), line);
    answer->AddUnfinishedLine(line, rest);
}

// The server's own words; without any, what is known.
void Posting::_ShowRefusal(const PostAnswer& answer) {
    const std::string words = answer.ErrorText();
    const NPHttp::StatusRecord* status = fHttp.Status();
    if (!words.empty() || status == nullptr) {
        ShowAlert(this, words);
        return;
    }
    const std::string reason = status->reason.substr(0, status->reason.find('\r'));
    ShowAlert(this, fJob.target.host + ": " + std::to_string(status->code) + " " + reason +
                        "\n書き込まれたかどうかは分かりません。");
}

int32 Posting::_Judge(const PostAnswer& answer) {
    const bool isSuccess = answer.IsSuccess();
    printf("%s\n", isSuccess ? "no err" : "err");
    BMessage result(isSuccess ? kMsgPostDone : kMsgPostFailed);
    if (isSuccess) {
        fHttp.Close();
        _Send(&result);
        _ShowProgress("");
        return 0;
    }
    _ShowRefusal(answer);
    _ShowProgress("");
    result.AddBool("dialog", false);
    _Send(&result);
    return -1;
}

} // namespace

int32 postMessage(void* data) {
    return Posting(TakeOverJob<PostJob>(data, "postMessage")).Run();
}
