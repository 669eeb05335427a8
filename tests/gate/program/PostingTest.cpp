#include "gate/program/BesideWebBrowser.h"
#include "support/AlertWatch.h"
#include "support/Browser.h"
#include "support/Writer.h"

using namespace server::testing;

namespace {

// With the program's own windows.
class ProgramPosts : public BesideWebBrowser {
protected:
    void SetUp() override {
        BesideWebBrowser::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        fBrowser = std::make_unique<Browser>(fPort);
        BMessage message(kMsgThreadSelected);
        message.AddString("dat", (std::string(kKey) + ".dat").c_str());
        message.AddString("url", (std::string("http://") + kHost + "/" + kBoard + "/").c_str());
        fBrowser->Messenger().SendMessage(&message);
        ASSERT_TRUE(WaitForAllPosts()) << fGate->Errors();
    }
    bool WaitForAllPosts() {
        const std::string ending = " (" + std::to_string(CountServed()) + ")";
        return fBrowser->WaitUntil(
            [&] { return std::string(fBrowser->Article()->GetTitle()).ends_with(ending); });
    }
    std::unique_ptr<Writer> Write(const char* text) {
        fBrowser->Locked(
            [this] {
                return fBrowser->Window()->PostMessage(kMsgOpenWriteWindow, fBrowser->Article());
            },
            status_t(B_OK));
        auto writer = std::make_unique<Writer>();
        writer->Type(text);
        return writer;
    }
    // The words of the alert that sending brings; the text stays.
    static std::string Refusal(Writer* writer) {
        const std::string text = writer->Text();
        writer->Send();
        std::string words = WaitForAlert();
        DismissAlert();
        EXPECT_TRUE(WaitUntil([&] { return writer->CanSend(); }));
        EXPECT_EQ(writer->Text(), text);
        return words;
    }
    // Sent, written once on the server, and on show.
    void ExpectPosted(Writer* writer, const char* text, int posts) {
        writer->Send();
        EXPECT_TRUE(writer->WaitUntilClosed());
        EXPECT_EQ(CountServed(), posts) << text;
        EXPECT_TRUE(WaitForAllPosts());
        EXPECT_NE(fBrowser->Text().find(text), std::string::npos) << text;
    }
    void AcceptInBrowser() {
        fWeb->Open(TakeOpened());
        EXPECT_EQ(fWeb->Title(), "■ 書き込み確認 ■");
        Picture("confirmation");
        EXPECT_TRUE(fWeb->Press("input[type=submit]"));
        EXPECT_EQ(fWeb->Title(), "書きこみました。") << fWeb->Text();
    }

    std::unique_ptr<Browser> fBrowser;
};

TEST_F(ProgramPosts, FromTheFirstPageToATicketThatExpiresWhileTheGateIsKilledNowAndThen) {
    const int before = CountServed();
    {
        const auto writer = Write("最初の書き込み");
        EXPECT_NE(Refusal(writer.get()).find("ブラウザで開きました"), std::string::npos);
        StartGate();
        EXPECT_NE(Refusal(writer.get()).find("承諾されるのを待っています"), std::string::npos);
        EXPECT_EQ(CountServed(), before);
        AcceptInBrowser();
        Picture("posted");
        StartGate();
        ExpectPosted(writer.get(), "最初の書き込み", before + 1);
    }
    ExpectPosted(Write("二つ目").get(), "二つ目", before + 2);
    EXPECT_EQ(TakeOpened(), "");

    fServer.ExpireTickets();
    {
        const auto writer = Write("三つ目");
        const std::string words = Refusal(writer.get());
        EXPECT_NE(words.find("チケット(MonaTicket)が無効です"), std::string::npos) << words;
        EXPECT_NE(words.find("MonaTicket を消しました"), std::string::npos) << words;
        EXPECT_NE(Refusal(writer.get()).find("ブラウザで開きました"), std::string::npos);
        AcceptInBrowser();
        ExpectPosted(writer.get(), "三つ目", before + 3);
    }
    const auto writer = Write("四つ目");
    for (const auto& [code, meaning] : {std::pair("9801 Too fast", "書き込みの間隔が短すぎます"),
                                        std::pair("1930 Withered", "どんぐり(acorn)が枯れています"),
                                        std::pair("9990 Banned", "書き込みが規制されています")}) {
        fServer.SetPostError(code, "サーバーの言葉");
        const std::string words = Refusal(writer.get());
        EXPECT_NE(words.find(meaning), std::string::npos) << words;
        EXPECT_NE(words.find("サーバーの言葉"), std::string::npos) << words;
    }
    fServer.SetPostError("", "");
    ExpectPosted(writer.get(), "四つ目", before + 4);
}

} // namespace
