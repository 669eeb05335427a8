#include "gate/GateProgram.h"
#include "gate/post/AskingServer.h"

#include "convert/HtmlTree.h"
#include "post/Ledger.h"

#include <sys/resource.h>

namespace {

using gate::Ledger;
using State = gate::PostState;

constexpr time_t kMinute = 60;
constexpr time_t kHour = 60 * kMinute;
const std::string kSecret(32, 'a');

class Restart : public testing::Test {
protected:
    Restart() {
        gate::Family family;
        family.name = "test";
        family.hosts = {"*.example"};
        fSettings.families = {family};
        fDraft.thread.family = &fSettings.families[0];
        fDraft.thread.asked = fDraft.thread.host = fDraft.thread.server = "board.example";
        fDraft.thread.board = "game/12";
        fDraft.thread.key = "1012345678";
        fDraft.post = {"", "sage", std::string("a\0\x82\xA0", 4), "game/12", "1012345678"};
    }
    gate::ConfirmationPage Page() const {
        const gate::HtmlTree tree(Utf8(kConfirmation));
        return {kSecret,
                kConfirmation,
                gate::Charset::kCp932,
                *gate::FormToSend(gate::ParseForms(tree)),
                {"board.example", "/test/bbs.cgi?guid=ON"},
                {"board.example", "/test/bbs.cgi"},
                fDraft};
    }
    // What the next run knows.
    State After() {
        gate::Store store(fFile);
        return Ledger(fSettings, &store).Begin(fDraft).state;
    }

    ScratchFolder fFolder;
    const std::string fFile = fFolder / "gate.db";
    gate::Settings fSettings;
    gate::Draft fDraft;
};

TEST_F(Restart, EachStateOutlivesARunAndWhatWasBeingSentIsUnclear) {
    const struct {
        const char* what;
        std::function<void(Ledger&)> rest; // after the first sending began
        State then;
    } kCases[] = {
        {"being sent", [](Ledger&) {}, State::kUnclear},
        {"unclear", [&](Ledger& ledger) { ledger.End(fDraft, State::kUnclear); }, State::kUnclear},
        {"refused", [&](Ledger& ledger) { ledger.End(fDraft, State::kNew); }, State::kNew},
        {"posted", [&](Ledger& ledger) { ledger.End(fDraft, State::kPosted); }, State::kPosted},
        {"told once more",
         [&](Ledger& ledger) {
             ledger.End(fDraft, State::kPosted);
             ledger.Begin(fDraft);
         },
         State::kNew},
        {"awaiting", [&](Ledger& ledger) { ledger.Await(Page()); }, State::kAwaiting},
        {"accepted, being sent",
         [&](Ledger& ledger) {
             ledger.Await(Page());
             ledger.TakePage(kSecret);
         },
         State::kUnclear},
    };
    for (const auto& row : kCases) {
        {
            gate::Store store(fFile);
            Ledger ledger(fSettings, &store);
            EXPECT_EQ(ledger.Begin(fDraft).state, State::kNew) << row.what;
            row.rest(ledger);
        }
        {
            gate::Store store(fFile);
            Ledger ledger(fSettings, &store);
            EXPECT_EQ(ledger.FindPage(kSecret).has_value(), row.then == State::kAwaiting);
            EXPECT_EQ(ledger.Begin(fDraft).state, row.then) << row.what;
            ledger.End(fDraft, State::kNew);
        }
        EXPECT_EQ(After(), State::kNew) << row.what;
        std::filesystem::remove(fFile);
    }
}

TEST_F(Restart, APageIsThereAgainAsItWas) {
    {
        gate::Store store(fFile);
        Ledger ledger(fSettings, &store);
        ledger.Begin(fDraft);
        ledger.Await(Page());
    }
    gate::Store store(fFile);
    const auto page = Ledger(fSettings, &store).TakePage(kSecret);
    ASSERT_TRUE(page);
    EXPECT_EQ(page->bytes, kConfirmation);
    EXPECT_EQ(page->action, Page().action);
    EXPECT_EQ(page->answered, Page().answered);
    EXPECT_TRUE(page->draft.IsSame(fDraft));
    EXPECT_EQ(page->draft.thread.family, fDraft.thread.family);
    EXPECT_TRUE(gate::IsOfForm(gate::ParseFormBody(Accepted()), page->form, page->charset));
}

TEST_F(Restart, OldPostsAreForgottenAndUnclearOnesAfterADay) {
    const struct {
        State state;
        time_t age;
        std::function<void(gate::KeptPost*)> change;
        State then;
    } kCases[] = {
        {State::kPosted, 29 * kMinute, {}, State::kPosted},
        {State::kPosted, 31 * kMinute, {}, State::kNew},
        {State::kPosted, -kHour, {}, State::kPosted}, // the clock was ahead
        {State::kAwaiting, 29 * kMinute, {}, State::kAwaiting},
        {State::kAwaiting, 31 * kMinute, {}, State::kNew},
        {State::kSending, 23 * kHour, {}, State::kUnclear},
        {State::kUnclear, 23 * kHour, {}, State::kUnclear},
        {State::kUnclear, 25 * kHour, {}, State::kNew},
        {static_cast<State>(77), 0, {}, State::kNew},
        {State::kPosted, 0, [](gate::KeptPost* post) { post->host = "x.test"; }, State::kNew},
        {State::kAwaiting, 0, [](gate::KeptPost* post) { post->page = "x"; }, State::kNew},
        {State::kAwaiting, 0, [](gate::KeptPost* post) { post->charset = 9; }, State::kNew},
    };
    for (const auto& row : kCases) {
        gate::PostRecord record{fDraft, row.state, time(nullptr) - row.age, 0, Page()};
        gate::KeptPost kept = gate::MakeKept(record);
        if (row.change)
            row.change(&kept);
        gate::Store store(fFile);
        store.KeepPost(0, kept);
        EXPECT_EQ(Ledger(fSettings, &store).Begin(fDraft).state, row.then)
            << static_cast<int>(row.state) << " " << row.age;
        for (const auto& [left, post] : store.ListPosts())
            store.DropPost(left);
    }
}

TEST_F(Restart, WithoutRoomOnTheDiskPostsAreKnownUntilTheEnd) {
    const pid_t child = fork();
    if (child == 0) {
        gate::Store store(fFile);
        signal(SIGXFSZ, SIG_IGN);
        const rlimit full = {0, 0};
        setrlimit(RLIMIT_FSIZE, &full);
        Ledger ledger(fSettings, &store);
        const bool isNew = ledger.Begin(fDraft).state == State::kNew;
        ledger.Await(Page());
        const bool isShown = ledger.TakePage(kSecret).has_value();
        ledger.End(fDraft, State::kPosted);
        _exit(isNew && isShown && store.ListPosts().empty() &&
                      ledger.Begin(fDraft).state == State::kPosted &&
                      ledger.Begin(fDraft).state == State::kNew
                  ? 0
                  : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST_F(Restart, PagesKeepTheirPortAsLongAsItIsFree) {
    std::string error;
    const auto open = [&](gate::Listeners* listeners) {
        gate::Store store(fFile);
        EXPECT_TRUE(gate::OpenPagePort(listeners, &store, &error)) << error;
        return listeners->Port();
    };
    const int first = open(std::make_unique<gate::Listeners>().get());
    gate::Listeners again;
    EXPECT_EQ(open(&again), first);
    const int other = open(std::make_unique<gate::Listeners>().get());
    EXPECT_NE(other, first);
    EXPECT_EQ(open(std::make_unique<gate::Listeners>().get()), other);
}

// The gate's own program, killed wherever a post may stand.
TEST(KilledGate, AnOpenPageStillWorksAndAnAcceptedPostIsLookedFor) {
    OriginServer origin(AskFirst);
    ScratchFolder folder;
    setenv("PATH", folder.Path().c_str(), 1); // no web browser
    const std::vector<std::string> words{"--port", "0", "--config",
                                         folder.Write("own.toml", GateProgram::Config(origin))};
    const std::string post = Program("やあ &");
    std::string address;
    std::string log;
    std::thread acceptor;
    const auto run = [&](auto steps) {
        GateProgram gate(folder, words);
        steps(gate.WaitForPort());
        EXPECT_EQ(gate.Signal(SIGKILL), 128 + SIGKILL);
        log += gate.Errors();
    };
    const auto toPage = [&](const std::string& start, const std::string& rest) {
        const std::string place = address.substr(address.find("localhost:"));
        const std::string host = place.substr(0, place.find('/'));
        const std::string secret = place.substr(place.find('/'), 33);
        return Exchange(atoi(host.c_str() + 10),
                        start + " " + secret + "/test/bbs.cgi?guid=ON HTTP/1.1\r\nHost: " + host +
                            "\r\n" + rest);
    };
    const auto accept = [&] {
        return toPage("POST",
                      "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: " +
                          std::to_string(Accepted().size()) + "\r\n\r\n" + Accepted());
    };

    run([&](int port) {
        const std::string text = Utf8(PostTo(port, post).body);
        const size_t start = text.find("http://localhost:");
        ASSERT_NE(start, std::string::npos) << text;
        address = text.substr(start, text.find('<', start) - start);
    });
    run([&](int port) {
        EXPECT_EQ(toPage("GET", "\r\n").body, kConfirmation);
        EXPECT_NE(Utf8(PostTo(port, post).body).find(address), std::string::npos);
        EXPECT_EQ(origin.Requests().size(), 1u);
        origin.Become([](const std::string&) { return OriginServer::kSilence; });
        acceptor = std::thread([&] { accept(); });
        for (int i = 0; i < 3000 && origin.Requests().size() < 2; i++)
            poll(nullptr, 0, 10);
    });
    acceptor.join();
    ASSERT_EQ(origin.Requests().size(), 2u);
    origin.Become([](const std::string&) {
        return Reply("200 OK", Sjis("a<>sage<>2099/01/01(木) 00:00:00<> やあ &amp; <>t\n"));
    });
    run([&](int port) {
        EXPECT_EQ(accept().status, 404);
        EXPECT_TRUE(IsSuccess(PostTo(port, post)));
        EXPECT_EQ(PathOf(origin.Requests().back()), "/news/dat/1012345678.dat");
    });
    EXPECT_EQ(origin.Requests().size(), 3u);
    EXPECT_EQ(log.find("やあ"), std::string::npos);
    EXPECT_EQ(log.find(Sjis("やあ")), std::string::npos);
    EXPECT_EQ(log.find("MESSAGE"), std::string::npos);
}

} // namespace
