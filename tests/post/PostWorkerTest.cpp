#include "post/PostWorker.h"
#include "messages/Messages.h"
#include "net/NPHttp.h"
#include "support/AlertWatch.h"
#include "support/RawServer.h"
#include "workers/WorkerThread.h"

#include "server/Testing.h"

#include <Looper.h>
#include <Message.h>
#include <String.h>

#include <gtest/gtest.h>

#include <cstring>
#include <mutex>

namespace {

constexpr PostFamily kBbsCgi = PostFamily::kBbsCgi;
constexpr PostFamily kWriteCgi = PostFamily::kWriteCgi;
constexpr time_t kNow = 1011789296;
const std::string kHead = "HTTP/1.1 200 OK\r\n\r\n";
const std::string kTaken = kHead + "<html><meta http-equiv=refresh content=1>\n";
const std::string kRefused = kHead + "<title>x</title>no<br>more\n";

// Takes the worker's messages in the place of a write window.
class Listener : public BLooper {
public:
    void MessageReceived(BMessage* message) override {
        std::string line(1, static_cast<char>(message->what)); // the last letter of the code
        BString text;
        bool flag = true;
        if (message->FindString("message", &text) == B_OK)
            line += " " + std::string(text.String());
        if (message->FindBool("unconfirmed", &flag) == B_OK)
            line += " unconfirmed";
        if (message->FindBool("dialog", &flag) == B_OK)
            line += " told";
        const std::lock_guard lock(fLock);
        fLines.push_back(line);
    }
    // Waits until as many messages have come.
    std::vector<std::string> Wait(size_t count) {
        server::testing::WaitUntil([&] {
            const std::lock_guard lock(fLock);
            return fLines.size() >= count;
        });
        const std::lock_guard lock(fLock);
        return fLines;
    }

private:
    std::mutex fLock;
    std::vector<std::string> fLines; // guarded by fLock
};

class PostWorker : public testing::Test {
protected:
    PostWorker() : fWindow(new Listener) { fWindow->Run(); }
    ~PostWorker() override {
        fWindow->Lock();
        fWindow->Quit();
    }
    void Post(const PostTarget& target, const WrittenPost& text, int port) {
        auto job = std::make_unique<PostJob>();
        job->target = target;
        EXPECT_EQ(MakePostForm(target, text, kNow, &job->form), PostCheck::kGood);
        job->proxy = {true, "127.0.0.1", std::to_string(port)};
        job->window = BMessenger(fWindow);
        job->control = fControl = std::make_shared<WorkerControl>("post_port");
        EXPECT_TRUE(SpawnWorker(postMessage, "postMessage", &job));
    }
    void Post(int port) { Post({kBbsCgi, "h.jp", "news", "1"}, {"", "", "text"}, port); }

    using Lines = std::vector<std::string>;
    const std::string fConnecting = "P h.jpへ接続中";
    const std::string fSending = "P h.jpへ送信中";
    Listener* fWindow;
    std::shared_ptr<WorkerControl> fControl;
};

} // namespace

TEST_F(PostWorker, TheRequestIsThatOfEachFamily) {
    const std::string agent = "User-Agent: " + std::string(get_user_agent()) + "\r\n";
    const std::string longName(5000, 'n');
    const std::string bbsCgiStart =
        "POST http://h.jp/test/bbs.cgi HTTP/1.0\r\nHost: h.jp\r\nConnection: close\r\n"
        "Referer: http://h.jp/news/index.html\r\n";
    const struct {
        PostTarget target;
        WrittenPost text;
        std::string start; // up to the cookies
        std::string cookies;
        std::string body;
    } cases[] = {
        {{kBbsCgi, "h.jp", "news", "12"},
         {"あ", "sage", "m"},
         bbsCgiStart,
         "Cookie: NAME=%82%A0\r\nCookie: MAIL=sage\r\n",
         "FROM=%82%A0&mail=sage&MESSAGE=m&bbs=news&key=12"},
        {{kBbsCgi, "h.jp", "news", "12"},
         {"", "", "m"},
         bbsCgiStart,
         "Cookie: NAME=&MAIL=\r\n",
         "FROM=&mail=&MESSAGE=m&bbs=news&key=12"},
        {{kBbsCgi, "h.jp", "news", "12"},
         {longName, "s", "m"},
         bbsCgiStart,
         "Cookie: MAIL=s\r\n",
         "FROM=" + longName + "&mail=s&MESSAGE=m&bbs=news&key=12"},
        {{kWriteCgi, "h.jp", "abc/xyz", "12"},
         {"", "s", "m"},
         "POST http://h.jp/abc/bbs/write.cgi HTTP/1.0\r\nHost: h.jp\r\nConnection: close\r\n"
         "Referer: http://h.jp/abc/xyz/index.html\r\n",
         "Cookie: MAIL=s\r\n",
         "NAME=&MAIL=s&MESSAGE=m&BBS=xyz&KEY=12"},
    };
    for (const auto& test : cases) {
        RawServer server({RawServer::Reply(kTaken)});
        Post(test.target, test.text, server.Port());
        const char* time = test.target.family == kBbsCgi ? "time" : "TIME";
        const std::string body =
            test.body + "&" + time + "=1011789296" + "&submit=%8F%91%82%AB%8D%9E%82%DE";
        EXPECT_EQ(server.WaitForRequest(),
                  test.start + test.cookies + agent +
                      "Content-type: application/x-www-form-urlencoded\r\nContent-length: " +
                      std::to_string(body.size()) + "\r\n\r\n" + body);
    }
}

TEST_F(PostWorker, AnAnswerThatSendsTheReaderBackIsSuccess) {
    const std::string unfinished = kTaken.substr(0, kTaken.size() - 1);
    size_t messages = 0;
    for (const RawServer::Script& script :
         {RawServer::Reply(kTaken), RawServer::Reply(unfinished), RawServer::Reset(unfinished),
          RawServer::EndlessLine(unfinished)}) {
        RawServer server({script});
        Post(server.Port());
        messages += 4;
        const Lines lines = fWindow->Wait(messages);
        EXPECT_EQ(Lines(lines.end() - 4, lines.end()), (Lines{fConnecting, fSending, "F", "P "}));
    }
}

TEST_F(PostWorker, AnAnswerCutBeforeItsHeaderCountsAsFinished) {
    size_t messages = 0;
    for (const RawServer::Script& script :
         {RawServer::Reset(), RawServer::CutAfter(10, kTaken), RawServer::Reply("")}) {
        RawServer server({script});
        Post(server.Port());
        messages += 4;
        EXPECT_EQ(fWindow->Wait(messages)[messages - 2], "F unconfirmed");
    }
}

TEST_F(PostWorker, ARefusedPostShowsTheServersWords) {
    RawServer server({RawServer::Reply(kRefused)});
    Post(server.Port());
    EXPECT_EQ(WaitForAlert(), "no\nmore");
    DismissAlert();
    EXPECT_EQ(fWindow->Wait(4), (Lines{fConnecting, fSending, "P ", "E told"}));
}

TEST_F(PostWorker, APageOfAnySizeIsJudged) {
    const std::string big = kHead + "<title></title>kept\n" + std::string(4000, 'x') + "\n" +
                            std::string(90, 'y') + "\nlast\n";
    RawServer server(
        {RawServer::Reply(big), RawServer::EndlessLine(kHead + "<title></title>ok\n")});
    Post(server.Port());
    EXPECT_EQ(WaitForAlert(), "kept" + std::string(4000, 'x') + "last");
    DismissAlert();
    Post(server.Port());
    EXPECT_EQ(WaitForAlert(), "ok" + std::string(4095 - strlen("<title></title>ok\n"), 'x'));
    DismissAlert();
}

TEST_F(PostWorker, ARefusalWithoutWordsSaysWhoAnsweredAndHow) {
    for (const char* page : {"", "no title", "<title></title> \n<br>&nbsp;"}) {
        RawServer server({RawServer::Reply("HTTP/1.1 503 Busy\r\n\r\n" + std::string(page))});
        Post(server.Port());
        EXPECT_EQ(WaitForAlert(), "h.jp: 503 Busy\n書き込まれたかどうかは分かりません。") << page;
        DismissAlert();
    }
}

TEST_F(PostWorker, ARefusedConnectionIsAnError) {
    int port = 0;
    {
        RawServer gone({RawServer::Reply("")});
        port = gone.Port();
    }
    Post(port);
    EXPECT_EQ(WaitForAlert(), "接続エラー");
    DismissAlert();
    EXPECT_EQ(fWindow->Wait(3), (Lines{fConnecting, "E", "P "}));
}

TEST_F(PostWorker, AStoppedOneEndsWithoutAWord) {
    RawServer server({RawServer::Stall(kHead + "<title></title>no\n"), RawServer::Reply(kRefused)});
    Post(server.Port());
    fWindow->Wait(2);
    server.WaitForRequest();
    fControl->Stop();
    Post(server.Port()); // its alert goes with the stop
    EXPECT_EQ(WaitForAlert(), "no\nmore");
    fControl->Stop();
    EXPECT_TRUE(server::testing::WaitUntil([&] { return fControl.use_count() == 1; }));
}
