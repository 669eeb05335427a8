#include "post/PostWorker.h"

#include "messages/Messages.h"
#include "net/NPHttp.h"
#include "post/PostAnswer.h"
#include "widgets/Alerts.h"
#include "workers/WorkerThread.h"

#include <Message.h>
#include <Window.h>

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
    void _AddCookies();
    void _ReadAnswer(PostAnswer* answer, bool* stopped);
    int32 _Judge(const PostAnswer& answer);
    void _ShowRefusal(const PostAnswer& answer);
    void _ShowProgress(const std::string& text);
    void PresentAlert(BAlert* alert) override;
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

// It goes with the window that it concerns.
void Posting::PresentAlert(BAlert* alert) {
    BLooper* window = nullptr;
    if (fJob.window.LockTarget()) {
        fJob.window.Target(&window);
        if (BWindow* owner = dynamic_cast<BWindow*>(window))
            BindAlert(alert, owner);
        window->Unlock();
    }
    fJob.control->PresentAlert(alert);
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
    if (fJob.proxy.use)
        fHttp.SetProxy(fJob.proxy.host.c_str(), fJob.proxy.port.c_str());
    fHttp.method = NPHttp::kPost;
    fHttp.version = NPHttp::kHttp10;
    fHttp.SetPath(fJob.target.CgiPath().c_str());
    fHttp.AddHeader("Host", fJob.target.host.c_str());
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
    _ShowProgress(fJob.target.host + "へ接続中");
    if (fHttp.Connect() != B_OK) {
        if (_MustStop())
            return 0;
        ShowAlert("接続エラー");
        fprintf(stderr, "Connect()\n");
        BMessage failed(kMsgPostFailed);
        _Send(&failed);
        _ShowProgress("");
        return -1;
    }
    if (_MustStop())
        return 0;
    _ShowProgress(fJob.target.host + "へ送信中");
    fHttp.Send();
    if (fHttp.ReadHeader() != 0) {
        // The post may well have arrived: sending it again would double it.
        BMessage done(kMsgPostDone);
        done.AddBool("unconfirmed", true);
        _Send(&done);
        _ShowProgress("");
        fprintf(stderr, "ReadHeader()\n");
        return -1;
    }
    PostAnswer answer;
    bool stopped = _MustStop();
    if (!stopped)
        _ReadAnswer(&answer, &stopped);
    return stopped ? 0 : _Judge(answer);
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
        ShowAlert("%s", words.c_str());
        return;
    }
    const std::string reason = status->reason.substr(0, status->reason.find('\r'));
    ShowAlert("%s: %ld %s\n書き込まれたかどうかは分かりません。", fJob.target.host.c_str(),
              static_cast<long>(status->code), reason.c_str());
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
