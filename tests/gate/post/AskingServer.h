#pragma once

#include "gate/TestGate.h"

#include "convert/Encodings.h"
#include "post/FormBody.h"

#include <string>

// A server that has its page accepted before a first post, and what the program and a web browser
// send to it.

inline std::string Sjis(std::string_view utf8) {
    return gate::ToCp932(utf8, gate::Charset::kUtf8);
}

inline std::string Utf8(std::string_view cp932) {
    return gate::ToUtf8(cp932, gate::Charset::kCp932);
}

inline std::string BodyOf(const std::string& request) {
    return request.substr(request.find("\r\n\r\n") + 4);
}

// As the program sends it, with another time each time.
inline std::string Program(const std::string& message, int time = 1) {
    return gate::MakeFormBody({{"submit", Sjis("書き込む")},
                               {"FROM", ""},
                               {"mail", "sage"},
                               {"MESSAGE", Sjis(message)},
                               {"bbs", "news"},
                               {"key", "1012345678"},
                               {"time", std::to_string(time)}});
}

inline const std::string kForm =
    "<form method=POST action=\"../test/bbs.cgi?guid=ON\"><input type=hidden name=FROM value>"
    "<input type=hidden name=mail value='sage'><input type=hidden name=MESSAGE value=\"やあ "
    "&amp;\">"
    "<input type=hidden name=bbs value=news><input type=hidden name=time value=99>"
    "<input type=hidden name=key value=1012345678>"
    "<input type=hidden name=feature value=\"confirmed:0123\">"
    "<input type=submit value=\"上記全てを承諾して書き込む\" name=submit></form>";
inline const std::string kConfirmation =
    Sjis("<html><head><title>■ 書き込み確認 ■</title></head><body><!-- _X:cookie -->" + kForm +
         "</body></html>");
inline const std::string kPosted =
    Sjis("<html><head><title>書きこみました。</title></head><body>ok</body></html>");
inline const std::string kTicket = "Set-Cookie: MonaTicket=opqr; domain=.example; path=/\r\n";

// What a browser sends for the page above; its encoding differs from the gate's own.
inline std::string Accepted(const std::string& feature = "confirmed%3A0123") {
    return "FROM=&mail=sage&MESSAGE=%82%e2%82%a0+%26&bbs=news&time=99&key=1012345678&feature=" +
           feature +
           "&submit=" + gate::MakeFormBody({{"", Sjis("上記全てを承諾して書き込む")}}).substr(1);
}

// A server that wants its page accepted before it gives the ticket that posts.
inline std::string AskFirst(const std::string& request) {
    if (HeaderOf(request, "Cookie").find("MonaTicket=opqr") != std::string::npos)
        return Reply("200 OK", kPosted);
    if (PathOf(request) == "/test/bbs.cgi?guid=ON")
        return Reply("200 OK", kPosted, kTicket);
    return Reply("200 OK", kConfirmation + "HTTP/1.1 200 OK\r\n\r\nmore",
                 "X-Chx-Error: 0000 Confirmation\r\nSet-Cookie: acorn=xyz; domain=.example; "
                 "path=/\r\n");
}

inline bool IsSuccess(const GateAnswer& answer) {
    return answer.status == 200 && answer.body.find("http-equiv=refresh") != std::string::npos;
}

// A gate before such a server, and the user at the web browser.
class Posting : public testing::Test {
protected:
    // What the browser sends to the page's form.
    GateAnswer Accept(const std::string& body, const std::string& headers = "",
                      std::string secret = "") {
        const std::string port = std::to_string(fGate.PagePort());
        if (secret.empty())
            secret = PathOfPage().substr(0, 33);
        return Exchange(fGate.PagePort(),
                        "POST " + secret +
                            "/test/bbs.cgi?guid=ON HTTP/1.1\r\nHost: localhost:" + port + "\r\n" +
                            (headers.empty() ? "Origin: http://localhost:" + port +
                                                   "\r\nSec-Fetch-Site: same-origin\r\n"
                                             : headers) +
                            "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: " +
                            std::to_string(body.size()) + "\r\n\r\n" + body);
    }
    GateAnswer Page() {
        return Exchange(fGate.PagePort(), "GET " + PathOfPage() + " HTTP/1.1\r\nHost: localhost:" +
                                              std::to_string(fGate.PagePort()) + "\r\n\r\n");
    }
    std::string PathOfPage() {
        const std::string address = fGate.Opened().at(0);
        return address.substr(address.find('/', 8));
    }
    std::string Text(const GateAnswer& answer) { return Utf8(answer.body); }
    void Restart() {
        fGate.End();
        fGate.Start();
    }
    void ForgetPosts() {
        for (const auto& [number, post] : fGate.Store().ListPosts())
            fGate.Store().DropPost(number);
        Restart();
    }
    size_t Sent() { return fOrigin.Requests().size(); }

    OriginServer fOrigin{AskFirst};
    TestGate fGate{&fOrigin};
};
