#include "gate/GateProgram.h"
#include "gate/TestGate.h"

namespace {

GateAnswer Ask(int port, const std::string& path, const std::string& headers = "") {
    return Exchange(port, "GET http://board.example" + path +
                              " HTTP/1.1\r\nHost: board.example\r\n" + headers + "\r\n");
}

TEST(Program, ServesUntilItIsToldToEndAndLogsNoQuery) {
    OriginServer origin([](const std::string&) { return Reply("200 OK", "1.dat<>a (1)\n"); });
    ScratchFolder folder;
    GateProgram program(
        folder, {"--port", "0", "--config", folder.Write("own.toml", GateProgram::Config(origin))});
    const int port = program.WaitForPort();
    EXPECT_EQ(Ask(port, "/news/subject.txt").status, 200);
    EXPECT_EQ(Ask(port, "/news/x.cgi?secret").status, 404);
    EXPECT_EQ(program.Signal(SIGTERM), 0);
    EXPECT_NE(program.Errors().find("GET board.example/news/subject.txt 200 13 bytes"),
              std::string::npos)
        << program.Errors();
    EXPECT_EQ(program.Errors().find("secret"), std::string::npos);
}

// What a client sends can't look like lines of its own.
TEST(Program, LogsOneLineARequestWhateverItHolds) {
    OriginServer origin([](const std::string&) { return Reply("200 OK", "1.dat<>a (1)\n"); });
    ScratchFolder folder;
    const GateProgram program(
        folder, {"--port", "0", "--config", folder.Write("own.toml", GateProgram::Config(origin))});
    const int port = program.WaitForPort();
    const size_t before = program.Errors().size();
    EXPECT_EQ(Exchange(port, "GET\nGET forged / HTTP/1.1\r\n\r\n").status, 400);
    EXPECT_EQ(Exchange(port, "GET http://board.example/a\nforged\x1B[2J HTTP/1.1\r\n\r\n").status,
              400);
    const std::string log = program.Errors().substr(before);
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2) << log;
    EXPECT_EQ(log.find("forged"), std::string::npos) << log;
}

TEST(Program, EndsAtOnceThoughAllItsConnectionsWaitForAServer) {
    OriginServer origin([](const std::string&) { return std::string(OriginServer::kSilence); });
    ScratchFolder folder;
    GateProgram program(folder, {"--port", "0", "--config",
                                 folder.Write("own.toml", "[gate]\nconnections = 1\n" +
                                                              GateProgram::Config(origin))});
    const int port = program.WaitForPort();
    std::thread first([port] { Ask(port, "/news/subject.txt"); });
    while (origin.Requests().empty())
        poll(nullptr, 0, 5);
    std::thread second([port] { Ask(port, "/news/subject.txt"); });
    poll(nullptr, 0, 200); // until it waits to be accepted
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(program.Signal(SIGTERM), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    first.join();
    second.join();
}

TEST(Program, TakesASocketThatIsHandedOver) {
    OriginServer origin([](const std::string&) { return Reply("200 OK", "1.dat<>a (1)\n"); });
    ScratchFolder folder;
    gate::Listeners listeners;
    std::string error;
    ASSERT_TRUE(listeners.Open(0, &error));
    GateProgram program(folder, {"--config", folder.Write("own.toml", GateProgram::Config(origin))},
                        listeners.Handles()[0]);
    EXPECT_EQ(Ask(listeners.Port(), "/news/subject.txt").status, 200);
}

TEST(Program, WhatWasKeptOutlivesBeingKilledAtOnce) {
    const std::string log = "a<>b<>c<> d <>e\n";
    OriginServer origin([&](const std::string& request) {
        return HeaderOf(request, "Range").empty() ? Reply("200 OK", log) : Reply("404 Gone", "");
    });
    ScratchFolder folder;
    const std::string config =
        folder.Write("own.toml", GateProgram::Config(origin) +
                                     "archives = [{ dat = \"https://{host}/kako/{key}.dat\" }]\n");
    GateProgram first(folder, {"--port", "0", "--config", config});
    EXPECT_EQ(Ask(first.WaitForPort(), "/news/dat/1012345678.dat").body, log);
    EXPECT_EQ(first.Signal(SIGKILL), 128 + SIGKILL);
    GateProgram second(folder, {"--port", "0", "--config", config});
    const std::string range = "Range: bytes=" + std::to_string(log.size()) + "-\r\n";
    EXPECT_EQ(Ask(second.WaitForPort(), "/news/dat/1012345678.dat", range).status, 304);
    for (const auto& file : std::filesystem::directory_iterator(folder / "itamori-gate"))
        EXPECT_EQ(file.status().permissions() & std::filesystem::perms::all,
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write)
            << file.path();
}

struct WordsCase {
    std::vector<std::string> words;
    int status;
    const char* part;
};

TEST(Program, UnderstandsItsWordsOrSaysWhatItDoesNot) {
    ScratchFolder folder;
    const std::string broken = folder.Write("broken.toml", "[gate]\nport = 1\nport = 2\n");
    const std::string wrong = folder.Write("wrong.toml", "[gate]\n\nport = \"x\"\n");
    const WordsCase kCases[] = {{{"--help"}, 0, "--config FILE"},
                                {{"--version"}, 0, "itamori-gate 0."},
                                {{"--check", "none.example"}, 1, "it can't be read"},
                                {{"--port"}, 2, "--port"},
                                {{"--port", "70000"}, 2, "70000"},
                                {{"--fast"}, 2, "--fast"},
                                {{"--config", folder / "none.toml"}, 2, "none.toml"},
                                {{"--config", broken}, 2, "broken.toml:3"},
                                {{"--config", wrong}, 2, "wrong.toml:3"}};
    for (const WordsCase& now : kCases) {
        SCOPED_TRACE(now.words.back());
        GateProgram program(folder, now.words);
        EXPECT_EQ(program.Wait(), now.status);
        EXPECT_NE(program.Errors().find(now.part), std::string::npos) << program.Errors();
    }
}

} // namespace
