#include "gate/TestGate.h"

#include <fcntl.h>
#include <sys/wait.h>

#include <csignal>
#include <filesystem>
#include <fstream>

namespace {

// The gate's own program, beside this one, with folders of its own.
class Program {
public:
    Program(const ScratchFolder& folder, std::vector<std::string> words, int listener = -1) {
        fErrors = folder / "errors";
        std::filesystem::remove(fErrors); // of another one
        fProcess = fork();
        if (fProcess != 0)
            return;
        const std::string file =
            std::filesystem::read_symlink("/proc/self/exe").parent_path() / "itamori-gate";
        setenv("XDG_DATA_HOME", folder.Path().c_str(), 1);
        if (listener >= 0) {
            dup2(listener, 3);
            setenv("LISTEN_FDS", "1", 1);
            setenv("LISTEN_PID", std::to_string(getpid()).c_str(), 1);
        }
        const int errors = open(fErrors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        dup2(errors, 1);
        dup2(errors, 2);
        std::vector<char*> pointers{const_cast<char*>(file.c_str())};
        for (std::string& word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        execv(file.c_str(), pointers.data());
        _exit(127);
    }
    ~Program() {
        if (fProcess > 0)
            Signal(SIGKILL);
    }
    int Signal(int number) {
        kill(fProcess, number);
        return Wait();
    }
    int Wait() {
        int status = 0;
        waitpid(fProcess, &status, 0);
        fProcess = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    std::string Errors() const {
        std::ifstream file(fErrors);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // The port it tells once it listens.
    int WaitForPort() const {
        const std::string mark = "localhost:";
        for (int i = 0; i < 3000; i++) {
            const std::string errors = Errors();
            const size_t at = errors.find(mark);
            if (at != std::string::npos && errors.ends_with('\n'))
                return atoi(errors.c_str() + at + mark.size());
            poll(nullptr, 0, 10);
        }
        return -1;
    }

private:
    pid_t fProcess;
    std::string fErrors;
};

std::string Config(const OriginServer& origin) {
    return "[[family]]\nname = \"test\"\nkind = \"dat\"\nscheme = \"http\"\nhosts = "
           "[\"*.example\"]\n"
           "reach = \"" +
           origin.Address() + "\"\n";
}

GateAnswer Ask(int port, const std::string& path, const std::string& headers = "") {
    return Exchange(port, "GET http://board.example" + path +
                              " HTTP/1.1\r\nHost: board.example\r\n" + headers + "\r\n");
}

TEST(Program, ServesUntilItIsToldToEndAndLogsNoQuery) {
    OriginServer origin([](const std::string&) { return Reply("200 OK", "1.dat<>a (1)\n"); });
    ScratchFolder folder;
    Program program(folder, {"--port", "0", "--config", folder.Write("own.toml", Config(origin))});
    const int port = program.WaitForPort();
    EXPECT_EQ(Ask(port, "/news/subject.txt").status, 200);
    EXPECT_EQ(Ask(port, "/news/x.cgi?secret").status, 404);
    EXPECT_EQ(program.Signal(SIGTERM), 0);
    EXPECT_NE(program.Errors().find("GET board.example/news/subject.txt 200 13 bytes"),
              std::string::npos)
        << program.Errors();
    EXPECT_EQ(program.Errors().find("secret"), std::string::npos);
}

TEST(Program, TakesASocketThatIsHandedOver) {
    OriginServer origin([](const std::string&) { return Reply("200 OK", "1.dat<>a (1)\n"); });
    ScratchFolder folder;
    gate::Listeners listeners;
    std::string error;
    ASSERT_TRUE(listeners.Open(0, &error));
    Program program(folder, {"--config", folder.Write("own.toml", Config(origin))},
                    listeners.Handles()[0]);
    EXPECT_EQ(Ask(listeners.Port(), "/news/subject.txt").status, 200);
}

TEST(Program, WhatWasKeptOutlivesBeingKilledAtOnce) {
    const std::string log = "a<>b<>c<> d <>e\n";
    OriginServer origin([&](const std::string& request) {
        return HeaderOf(request, "Range").empty() ? Reply("200 OK", log) : Reply("404 Gone", "");
    });
    ScratchFolder folder;
    const std::string config = folder.Write(
        "own.toml", Config(origin) + "archives = [{ dat = \"https://{host}/kako/{key}.dat\" }]\n");
    Program first(folder, {"--port", "0", "--config", config});
    EXPECT_EQ(Ask(first.WaitForPort(), "/news/dat/1012345678.dat").body, log);
    EXPECT_EQ(first.Signal(SIGKILL), 128 + SIGKILL);
    Program second(folder, {"--port", "0", "--config", config});
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
        Program program(folder, now.words);
        EXPECT_EQ(program.Wait(), now.status);
        EXPECT_NE(program.Errors().find(now.part), std::string::npos) << program.Errors();
    }
}

} // namespace
