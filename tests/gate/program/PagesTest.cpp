#include "gate/program/BesideWebBrowser.h"

#include "convert/Encodings.h"
#include "convert/HtmlTree.h"
#include "post/FormBody.h"
#include "post/PageForm.h"

namespace {

using gate::Charset;

// The gate's pages in a real web browser, with cookies on the shelf and a page that waits to be
// accepted; and a page from elsewhere, open in the same browser, that would like to use them.
class Pages : public BesideWebBrowser {
protected:
    void SetUp() override {
        BesideWebBrowser::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        Post("first");
        fWeb->Open(TakeOpened());
        ASSERT_TRUE(fWeb->Press("input[type=submit]"));
        fServer.ExpireTickets();
        Post("second"); // the ticket goes
        Post("second");
        fPage = TakeOpened();
        ASSERT_EQ(fPage.find("http://localhost:"), 0u) << fGate->Errors();
    }
    void Post(const std::string& text) {
        PostTo(
            fPort,
            gate::MakeFormBody({{"MESSAGE", text}, {"bbs", kBoard}, {"key", kKey}, {"time", "1"}}),
            "/test/bbs.cgi", kHost);
    }
    // A request of another program's.
    static GateAnswer Ask(const std::string& method, const std::string& address,
                          const std::string& rest = "\r\n") {
        const size_t slash = address.find('/', 8);
        const std::string host = address.substr(7, slash - 7);
        return Exchange(atoi(host.c_str() + host.find(':') + 1),
                        method + " " + address.substr(slash) + " HTTP/1.1\r\nHost: " + host +
                            "\r\n" + rest);
    }
    static std::string FormRest(const std::string& body) {
        return "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: " +
               std::to_string(body.size()) + "\r\n\r\n" + body;
    }
    // What the page's button would send.
    std::string Acceptance() const {
        const std::string page = gate::ToUtf8(Ask("GET", fPage).body, Charset::kCp932);
        gate::FormPairs pairs;
        const auto form = gate::FormToSend(gate::ParseForms(gate::HtmlTree(page)));
        for (const auto& field : form.value().fields)
            pairs.emplace_back(field.name, gate::ToCp932(field.value, Charset::kUtf8));
        return gate::MakeFormBody(pairs);
    }
    std::string Action() const { return fPage.substr(0, fPage.rfind('/')) + "/bbs.cgi?guid=ON"; }

    std::string fPage;
};

TEST_F(Pages, TheStatusPageForgetsCookiesByItsButtonAndLeadsNowhereElse) {
    fWeb->Open(Own("/"));
    EXPECT_EQ(fWeb->Title(), "イタモリのゲート");
    const std::string text = fWeb->Text();
    for (const char* part : {"news.today.example/test/bbs.cgi", "acorn", "own.toml", "rawmode"})
        EXPECT_NE(text.find(part), std::string::npos) << part;
    Picture("status");
    EXPECT_EQ(fWeb->Run("done([...document.querySelectorAll('form, a')].map(one => one.method + "
                        "new URL(one.action || one.href).pathname.replace(/[0-9a-f]{32}/, 'S'))"
                        ".join())"),
              "post/S/forget");
    ASSERT_TRUE(fWeb->Press("form button"));
    EXPECT_EQ(fWeb->Address(), Own("/"));
    EXPECT_EQ(fWeb->Text().find("acorn"), std::string::npos);
    EXPECT_NE(fWeb->Text().find("own.toml"), std::string::npos);
    // Nor is there anything left to press.
    EXPECT_FALSE(fWeb->Press("button"));
}

TEST_F(Pages, APageFromElsewhereReadsNothingAndHasNoEffect) {
    OriginServer evil([](const std::string&) {
        return Reply("200 OK", "<title>evil</title>", "Content-Type: text/html\r\n");
    });
    const std::string home = "http://evil.example:" + std::to_string(evil.Port()) + "/";
    fWeb->Open(Own("/"));
    const std::string forget = fWeb->Run("done(document.forms[0].action)"); // it may be found out
    const std::string body = Acceptance();
    const size_t asked = fServer.Requests().size();
    const struct {
        std::string address, body;
    } kTargets[] = {
        {Own("/"), "family=today"}, {forget, "family=today"}, {fPage, body}, {Action(), body}};
    for (const auto& target : kTargets) {
        fWeb->Open(home);
        ASSERT_EQ(fWeb->Title(), "evil");
        const std::string words =
            "const to = '" + target.address + "', body = '" + target.body + "', read = [];\n";
        EXPECT_EQ(fWeb->Run(words + R"(
            const post = {method: 'POST', body,
                          headers: {'Content-Type': 'application/x-www-form-urlencoded'}};
            const frame = document.body.appendChild(document.createElement('iframe'));
            const image = new Image();
            const seen = (what, promise) => promise.then(text => text && read.push(what), () => {});
            Promise.all([
                seen('get', fetch(to).then(answer => answer.text())),
                seen('blind get', fetch(to, {mode: 'no-cors'}).then(answer => answer.text())),
                seen('post', fetch(to, post).then(answer => answer.text())),
                seen('blind post', fetch(to, {...post, mode: 'no-cors'}).then(one => one.text())),
                seen('image', new Promise((good, bad) => {
                    image.onload = () => good('x'); image.onerror = bad; image.src = to; })),
                seen('frame', new Promise(good => {
                    frame.onload = () => good(frame.contentDocument && 'x'); frame.src = to; })),
            ]).then(() => done(read.join())))"),
                  "")
            << target.address;
        fWeb->Run(words + R"(
            const form = document.body.appendChild(document.createElement('form'));
            form.method = 'POST'; form.action = to;
            new URLSearchParams(body).forEach((value, name) => {
                const field = form.appendChild(document.createElement('input'));
                field.name = name; field.value = value; });
            HTMLFormElement.prototype.submit.call(form); done(''))");
        EXPECT_EQ(fWeb->Run("setTimeout(() => done(document.title), 200)").find("書き"),
                  std::string::npos);
    }
    // Its own name led to this machine.
    fWeb->Open("http://evil.example:" + std::to_string(fPort) + "/");
    EXPECT_EQ(fWeb->Text().find("acorn"), std::string::npos);

    EXPECT_EQ(fServer.Requests().size(), asked);
    EXPECT_NE(Ask("GET", Own("/")).body.find("acorn"), std::string::npos);
    EXPECT_NE(gate::ToUtf8(Ask("POST", Action(), FormRest(body)).body, Charset::kCp932)
                  .find("書きこみました"),
              std::string::npos);
}

} // namespace
