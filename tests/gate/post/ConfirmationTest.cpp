#include "gate/post/AskingServer.h"

namespace {

std::string Replaced(std::string text, const std::string& old, const std::string& present) {
    const size_t at = text.find(old);
    EXPECT_NE(at, text.npos) << old;
    return text.replace(at, old.size(), present);
}

std::string WithForm(const std::string& form) {
    return Sjis("<html><title>■ 書き込み確認 ■</title><body>規約です。" + form + "</body></html>");
}

TEST_F(Posting, AConfirmationThatCantBeShownSaysWhatToDo) {
    const std::string action = "../test/bbs.cgi?guid=ON";
    const char* const kNotHere = "この確認画面には、ここから答えられません";
    struct Case {
        std::string form;
        const char* words;
    };
    std::vector<Case> cases = {
        {"", "もう一度送ると、承諾したものとして書き込まれます"},
        {kForm + std::string(300 << 10, 'x'), kNotHere},
    };
    for (const char* other :
         {"", "/test/bbs.cgi", "//evil.test/x", "https://evil.test/x", "../../../x", "mailto:x@y",
          "javascript:x()", "?guid=ON", "\\\\evil.test/x"})
        cases.push_back({Replaced(kForm, action, other), kNotHere});
    for (const Case& row : cases) {
        fOrigin.Become([&row](const std::string&) { return Reply("200 OK", WithForm(row.form)); });
        for (int times = 0; times < 2; times++) { // nothing waits: each is sent
            const size_t sent = Sent();
            const std::string text = Text(fGate.Post(Program("一")));
            EXPECT_NE(text.find(row.words), std::string::npos) << row.form.substr(0, 80) << text;
            EXPECT_NE(text.find("規約です"), std::string::npos) << text;
            EXPECT_EQ(Sent(), sent + 1);
        }
    }
    EXPECT_TRUE(fGate.Opened().empty());
    fOrigin.Become([&](const std::string&) {
        return Reply("200 OK", WithForm(Replaced(kForm, action, " " + action + "\n")));
    });
    fGate.Post(Program("一"));
    EXPECT_EQ(fGate.Opened().size(), 1u);
}

TEST_F(Posting, WhatAsksForAHumanOrALoginEndsInTheBrowser) {
    const std::string address = "http://board.example/test/read.cgi/news/1012345678/";
    for (const char* page :
         {"<html><title>認証</title>字を入れてください<form method=post><input "
          "name=c></form></html>",
          "<html><title>ERROR</title>字を入れてください<div class=h-captcha></div></html>"}) {
        fOrigin.Become([page](const std::string&) { return Reply("200 OK", Sjis(page)); });
        for (const bool hasBrowser : {true, false}) {
            fGate.HaveBrowser(hasBrowser);
            const size_t sent = Sent();
            const std::string text = Text(fGate.Post(Program("一")));
            EXPECT_EQ(fGate.Opened().back(), address);
            for (const std::string& part :
                 {address, std::string("人であることの確認"), std::string("字を入れてください")})
                EXPECT_NE(text.find(part), std::string::npos) << text;
            EXPECT_EQ(text.find("開きました") != std::string::npos, hasBrowser);
            EXPECT_EQ(Sent(), sent + 1);
        }
    }
}

TEST_F(Posting, AFurtherPageTakesThePlaceOfTheAcceptedOne) {
    fOrigin.Become([](const std::string& request) {
        if (PathOf(request) == "/test/bbs.cgi")
            return Reply("200 OK", kConfirmation);
        return BodyOf(request).find("%3A0123") != std::string::npos
                   ? Reply("200 OK", Replaced(kConfirmation, ":0123", ":4567"))
                   : Reply("200 OK", kPosted);
    });
    fGate.Post(Program("やあ &"));
    const std::string further = Replaced(kConfirmation, ":0123", ":4567");
    EXPECT_EQ(Accept(Accepted()).body, further);
    EXPECT_EQ(Page().body, further);
    EXPECT_EQ(Accept(Accepted()).status, 403);
    EXPECT_EQ(Accept(Accepted("confirmed%3A4567")).body, kPosted);
    EXPECT_EQ(fGate.Opened().size(), 1u);
    EXPECT_TRUE(IsSuccess(fGate.Post(Program("やあ &"))));
    EXPECT_EQ(Sent(), 3u);
}

TEST_F(Posting, AnAcceptanceThatNeverReachedTheServerMayBeRepeated) {
    fGate.Post(Program("やあ &"));
    std::string& reach = fGate.Settings().families[0].reach;
    fGate.End();
    reach = "127.0.0.1:1";
    fGate.Start();
    const GateAnswer failed = Accept(Accepted());
    EXPECT_EQ(failed.status, 502);
    EXPECT_NE(failed.body.find("もう一度承諾できます"), std::string::npos) << failed.body;
    EXPECT_EQ(Page().body, kConfirmation);
    fGate.End();
    reach = fOrigin.Address();
    fGate.Start();
    EXPECT_EQ(Accept(Accepted()).body, kPosted);
    EXPECT_EQ(Sent(), 2u);
}

TEST_F(Posting, ASettingsFileTellsTheFormAndTheCookiesThatAreWanted) {
    ScratchFolder folder;
    const std::string family = "[[family]]\nname = \"test\"\n";
    const std::string good = folder.Write(
        "own.toml", family + "post = \"utf8\"\nwanted_cookies = [\"NAME\", \"MAIL\"]\n");
    const std::string bad = folder.Write("bad.toml", family + "post = \"letter\"\n");
    std::string error;
    std::vector<std::string> remarks;
    fGate.End();
    EXPECT_TRUE(gate::ReadSettings(good, &fGate.Settings(), &error, &remarks)) << error;
    EXPECT_TRUE(remarks.empty());
    EXPECT_FALSE(gate::ReadSettings(bad, &fGate.Settings(), &error, &remarks));
    EXPECT_NE(error.find("bad.toml:3"), std::string::npos) << error;
    fGate.Start();
    fGate.Post(Program("一"));
    const std::string sent = fOrigin.Requests().at(0);
    EXPECT_EQ(HeaderOf(sent, "Cookie"), "NAME=; MAIL=");
    EXPECT_EQ(gate::ValueOf(gate::ParseFormBody(BodyOf(sent)), "MESSAGE"), "一");
}

} // namespace
