#include "post/PostRoom.h"

#include "post/FormBody.h"
#include "post/PageAction.h"
#include "post/Secret.h"
#include "post/ThreadSearch.h"

namespace gate {

namespace {

using Outcome = PostAnswer::Outcome;
using State = Ledger::State;
using Fate = SentPost::Fate;

constexpr size_t kLongestPage = 256 << 10; // that is shown to be accepted
constexpr const char* kNeverSent = "書き込みは送られていません。\n";
constexpr const char* kUnclear = "書き込まれたかどうか、わかりません。\n"
                                 "もう一度送ると、先にスレッドを確かめ、なければ書き込みます。\n";

// The page of an answer, when the gate can show it and send its form on.
std::optional<ConfirmationPage> PageOf(const Draft& draft, const PostAnswer& answer,
                                       const Place& answered, const std::string& secret) {
    if (!answer.form || secret.empty() || answer.page.size() > kLongestPage)
        return std::nullopt;
    const std::optional<Place> action = ActionOf(*answer.form, answered);
    if (!action)
        return std::nullopt;
    return ConfirmationPage{secret,  answer.page, answer.charset, *answer.form,
                            *action, answered,    draft};
}

// What a server said, with what became of the cookies that it called broken.
std::string WordsOf(const SentPost& sent) {
    std::string words = sent.answer.words;
    if (!words.empty() && !words.ends_with('\n'))
        words += '\n';
    for (const std::string& name : sent.goneCookies)
        words += "サーバーが無効とした Cookie " + name + " を消しました。\n";
    return words;
}

std::string ThreadAddressFor(const Draft& draft) {
    return "http://" + draft.thread.asked + ThreadPagePath(draft.thread);
}

OutgoingPost FirstPost(const Draft& draft) {
    const ThreadAddress& thread = draft.thread;
    const FormShape shape = ShapeOf(*thread.family);
    return {thread.family,
            thread.server,
            ScriptPath(thread),
            SchemeOf(*thread.family) + thread.server + ThreadPagePath(thread),
            MakeFirstBody(draft.post, shape, time(nullptr)),
            shape.charset == Charset::kUtf8};
}

OutgoingPost SecondPost(const ConfirmationPage& page, const std::string& body) {
    const Family& family = *page.draft.thread.family;
    return {&family,
            page.action.host,
            page.action.path,
            SchemeOf(family) + page.answered.host + page.answered.path,
            body,
            page.charset == Charset::kUtf8 && ShapeOf(family).charset == Charset::kUtf8};
}

} // namespace

void PostRoom::Answer(const Request& request, Responder* responder) {
    const Deadline deadline = fShop.AnswerDeadline();
    std::optional<Draft> draft = ReadDraft(fShop.settings, request);
    std::string page;
    if (draft) {
        if (const auto host = fShop.store.FindMove(draft->thread.host, draft->thread.board))
            draft->thread.server = *host;
        page = _Handle(*draft, deadline);
    } else {
        page = MakeRefusalPage(std::string(kNeverSent) + "書き込みの宛先か内容が読めません。\n");
    }
    AnswerHead head;
    head.type = "text/html; charset=Shift_JIS";
    responder->Reply(head, page);
}

std::string PostRoom::_Handle(const Draft& draft, Deadline deadline) {
    const Ledger::Known known = fLedger.Begin(draft);
    switch (known.state) {
    case State::kNew: return _SendFirst(draft, deadline);
    case State::kUnclear: return _LookThenSend(draft, known.firstSent, deadline);
    case State::kPosted: return MakePostedPage(ThreadAddressFor(draft));
    case State::kSending:
        return MakeRefusalPage("同じ書き込みを送っている最中です。\n"
                               "二度目は送られていません。\n");
    case State::kAwaiting: break;
    }
    const auto page = fLedger.FindPage(known.secret);
    return MakeRefusalPage("この書き込みは、ブラウザで承諾されるのを待っています。\n" +
                           (page ? _PageAddress(*page) + "\n" : "") +
                           "承諾したあとでもう一度送ると、終わります。\n");
}

std::string PostRoom::_SendFirst(const Draft& draft, Deadline deadline) {
    return _Tell(draft, fSender.Send(FirstPost(draft), deadline));
}

// Half of the time is for looking, the rest for sending.
std::string PostRoom::_LookThenSend(const Draft& draft, time_t since, Deadline deadline) {
    switch (FindInThread(fShop, draft, since, FirstPart(deadline, 2))) {
    case Finding::kThere:
        fLedger.End(draft, State::kNew);
        return MakePostedPage(ThreadAddressFor(draft));
    case Finding::kNotThere: return _SendFirst(draft, deadline);
    case Finding::kUnknown: break;
    }
    fLedger.End(draft, State::kUnclear);
    return MakeRefusalPage(std::string("スレッドを確かめられないので、送り直していません。\n") +
                           kUnclear);
}

std::string PostRoom::_Tell(const Draft& draft, const SentPost& sent) {
    switch (sent.fate) {
    case Fate::kAnswered: return _TellAnswer(draft, sent);
    case Fate::kNeverSent:
        fLedger.End(draft, State::kNew);
        return MakeRefusalPage(kNeverSent + sent.failure + "\n");
    case Fate::kUnclear: break;
    }
    fLedger.End(draft, State::kUnclear);
    return MakeRefusalPage(kUnclear + sent.failure + "\n");
}

std::string PostRoom::_TellAnswer(const Draft& draft, const SentPost& sent) {
    switch (sent.answer.outcome) {
    case Outcome::kPosted:
        fLedger.End(draft, State::kPosted);
        return MakePostedPage(ThreadAddressFor(draft));
    case Outcome::kConfirmation: return _AskUser(draft, sent);
    case Outcome::kProof: return _SendToBrowser(draft, sent);
    case Outcome::kRefused:
    case Outcome::kUnclear: break;
    }
    fLedger.End(draft, State::kNew);
    return MakeRefusalPage(WordsOf(sent));
}

std::string PostRoom::_AskUser(const Draft& draft, const SentPost& sent) {
    const Place answered{draft.thread.server, ScriptPath(draft.thread)};
    const auto page = PageOf(draft, sent.answer, answered, MakeSecret());
    if (!page) {
        fLedger.End(draft, State::kNew);
        const char* what = sent.answer.form
                               ? "この確認画面には、ここから答えられません。\n"
                               : "もう一度送ると、承諾したものとして書き込まれます。\n";
        return MakeRefusalPage(WordsOf(sent) + what);
    }
    fLedger.Await(*page);
    const std::string address = _PageAddress(*page);
    std::string text =
        fOpener(address) ? "書き込み確認の画面をブラウザで開きました。承諾すると書き込まれます。\n"
                         : "書き込み確認の画面を次のアドレスで開いてください。承諾すると書き込ま"
                           "れます。\n" +
                               address + "\n";
    for (const std::string& name : sent.goneCookies)
        text += "サーバーが無効とした Cookie " + name + " を消しました。\n";
    return MakeRefusalPage(text);
}

std::string PostRoom::_SendToBrowser(const Draft& draft, const SentPost& sent) {
    fLedger.End(draft, State::kNew);
    const ThreadAddress& thread = draft.thread;
    const std::string address = SchemeOf(*thread.family) + thread.server + ThreadPagePath(thread);
    const char* what = fOpener(address)
                           ? "人であることの確認か、ログインが必要です。スレッドをブラウザで開きま"
                             "した。そこから書き込んでください。\n"
                           : "人であることの確認か、ログインが必要です。次のアドレスをブラウザで開"
                             "いて、そこから書き込んでください。\n";
    return MakeRefusalPage(what + address + "\n" + WordsOf(sent));
}

std::string PostRoom::_PageAddress(const ConfirmationPage& page) const {
    const std::string& script = page.answered.path;
    const std::string folder = script.substr(0, script.find('?'));
    return "http://localhost:" + std::to_string(fPagePort) + "/" + page.secret +
           folder.substr(0, folder.rfind('/') + 1) + "page";
}

PostRoom::Shown PostRoom::Accept(const std::string& secret, const std::string& body) {
    const std::optional<ConfirmationPage> shown = fLedger.FindPage(secret);
    if (shown && !IsOfForm(ParseFormBody(body), shown->form, shown->charset))
        return {403, "", Charset::kUtf8, "確認画面の内容と違うので、送られていません。"};
    const std::optional<ConfirmationPage> page = fLedger.TakePage(secret);
    if (!page)
        return {404, "", Charset::kUtf8, "この画面はもう使われたか、期限が過ぎました。"};
    const SentPost sent = fSender.Send(SecondPost(*page, body), fShop.AnswerDeadline());
    _NoteAccepted(*page, sent);
    if (sent.fate == Fate::kNeverSent)
        return {502, "", Charset::kUtf8,
                kNeverSent + sent.failure + "\n前の画面に戻って、もう一度承諾できます。"};
    if (sent.fate == Fate::kUnclear)
        return {502, "", Charset::kUtf8, kUnclear + sent.failure};
    return {200, sent.answer.page, sent.answer.charset, ""};
}

// A further page takes the place of the first, at the same address.
void PostRoom::_NoteAccepted(const ConfirmationPage& page, const SentPost& sent) {
    if (sent.fate == Fate::kNeverSent)
        return fLedger.Await(page);
    if (sent.fate == Fate::kUnclear)
        return fLedger.End(page.draft, State::kUnclear);
    if (sent.answer.outcome == Outcome::kPosted)
        return fLedger.End(page.draft, State::kPosted);
    const auto next = sent.answer.outcome == Outcome::kConfirmation
                          ? PageOf(page.draft, sent.answer, page.action, page.secret)
                          : std::nullopt;
    if (next)
        fLedger.Await(*next);
    else
        fLedger.End(page.draft, State::kNew);
}

} // namespace gate
