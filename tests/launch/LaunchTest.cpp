#include "settings/ProxySetting.h"
#include "settings/SettingsFile.h"
#include "support/ScratchFolder.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

// A port of this machine that is bound, and taken by something that is no gate if it listens.
class Port {
public:
    explicit Port(bool listens) {
        sockaddr_in address = Address(0);
        socklen_t size = sizeof(address);
        const int yes = 1;
        setsockopt(fHandle, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
        bind(fHandle, reinterpret_cast<sockaddr*>(&address), size);
        getsockname(fHandle, reinterpret_cast<sockaddr*>(&address), &size);
        number = ntohs(address.sin_port);
        if (listens)
            listen(fHandle, 1);
        else
            Leave();
    }
    ~Port() { Leave(); }
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;

    void Leave() {
        close(fHandle);
        fHandle = -1;
    }
    static sockaddr_in Address(int port) {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<in_port_t>(port));
        return address;
    }
    static bool Answers(int port) {
        const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const sockaddr_in address = Address(port);
        const bool answers =
            connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
        close(handle);
        return answers;
    }

    int number = 0;

private:
    int fHandle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

bool WaitUntil(const std::function<bool()>& holds) {
    for (int i = 0; i < 3000; i++) {
        if (holds())
            return true;
        poll(nullptr, 0, 10);
    }
    return false;
}

// What is installed, but for the program: in its place stands one that tells that it runs and ends
// once its file is removed.
class Installed : public testing::Test {
protected:
    Installed() {
        const fs::path built = fs::read_symlink("/proc/self/exe").parent_path();
        for (const char* name : {"itamori-launch", "keep-gate", "itamori-gate", "itamori-setup"})
            fs::copy(built / name, fFolder / name);
        fs::create_directory(fFolder / "gate");
        fs::copy(built / "gate" / "gate.toml", fFolder / "gate/gate.toml");
        fFolder.Write("bbs/services.txt",
                      "# remark\nportal_host = portal.itamori.example\nsearch_page = x\n");
        fFolder.Write("itamori", "#!/bin/sh\n: >\"$0.$1\"\n"
                                 "while [ -e \"$0.$1\" ]; do sleep 0.02; done\nexit 7\n");
        fs::permissions(fFolder / "itamori", fs::perms::owner_all);
    }
    ~Installed() override {
        for (const auto& [name, process] : fRunning)
            End(name, process);
        WaitUntil([this] { return !Port::Answers(fPort); });
    }

    // The launcher, with this as the gate's usual port, until the program runs.
    void Launch(const std::string& name, int port) {
        fPort = port;
        const pid_t process = fork();
        if (process == 0) {
            setenv("ITAMORI_GATE_PORT", std::to_string(port).c_str(), 1);
            setenv("XDG_DATA_HOME", (fFolder / "data").c_str(), 1);
            if (!fHasHome)
                for (const char* variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"})
                    unsetenv(variable);
            setenv("PATH", (fFolder / "bin:/usr/bin:/bin").c_str(), 1);
            const std::string launcher = fFolder / "itamori-launch";
            execl(launcher.c_str(), launcher.c_str(), name.c_str(), nullptr);
            _exit(127);
        }
        fRunning.emplace_back(name, process);
        EXPECT_TRUE(WaitUntil([&] { return fFolder.Has("itamori." + name); }));
    }
    int End(const std::string& name) {
        const auto found = std::find_if(fRunning.begin(), fRunning.end(),
                                        [&](const auto& one) { return one.first == name; });
        const pid_t process = found->second;
        fRunning.erase(found);
        return End(name, process);
    }
    int End(const std::string& name, pid_t process) const {
        int status = 0;
        fs::remove(fFolder / ("itamori." + name));
        waitpid(process, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    ProxySetting Proxy() const {
        SettingsFile settings("Itamori", "2ch");
        settings.Load();
        ProxySetting proxy;
        FindProxy(settings, &proxy);
        return proxy;
    }
    static void Set(bool use, const char* host, int port) {
        SettingsFile settings("Itamori", "2ch");
        settings.AddBool("proxy", use);
        settings.AddString("proxy_host", host);
        settings.AddString("proxy_port", std::to_string(port).c_str());
        settings.Save();
    }
    std::string Portal() const { return fFolder.Read("bbs/services.txt"); }

    ScratchFolder fFolder;
    std::vector<std::pair<std::string, pid_t>> fRunning;
    int fPort = 0;
    bool fHasHome = true;
};

constexpr const char* kShipped = "portal_host = portal.itamori.example\n";

TEST_F(Installed, TheGateRunsAsLongAsAProgramUsesIt) {
    const Port port(false);
    Launch("first", port.number);
    EXPECT_TRUE(Port::Answers(port.number));
    Launch("second", port.number);
    EXPECT_EQ(End("first"), 7);
    EXPECT_TRUE(Port::Answers(port.number));
    EXPECT_EQ(End("second"), 7);
    EXPECT_TRUE(WaitUntil([&] { return !Port::Answers(port.number); }));
    Launch("third", port.number);
    EXPECT_TRUE(Port::Answers(port.number));
    EXPECT_EQ(Proxy().port, std::to_string(port.number));
}

TEST_F(Installed, AFirstStartTurnsTheProxyOnAndNamesAPortal) {
    const Port port(false);
    Launch("first", port.number);
    EXPECT_TRUE(Proxy().use);
    EXPECT_EQ(Proxy().host, "localhost");
    EXPECT_EQ(Proxy().port, std::to_string(port.number));
    EXPECT_NE(Portal().find("\nportal_host = menu.5ch.io\nsearch_page = x\n"), std::string::npos);
}

TEST_F(Installed, SettingsOfTheUsersOwnStay) {
    const Port port(false);
    Set(true, "proxy.example", port.number);
    Launch("elsewhere", port.number);
    EXPECT_FALSE(Port::Answers(port.number));
    EXPECT_EQ(Proxy().host, "proxy.example");
    End("elsewhere");
    Set(false, "localhost", port.number);
    Launch("off", port.number);
    EXPECT_FALSE(Proxy().use);
    EXPECT_FALSE(Port::Answers(port.number));
    EXPECT_NE(Portal().find(kShipped), std::string::npos);
}

// Without the gate the real portal's answer would become the board menu.
TEST_F(Installed, ARealPortalIsNamedOnlyWhileTheGateIsTheProxy) {
    const Port port(false);
    const std::string shipped = Portal();
    Launch("first", port.number);
    const std::string named = Portal();
    End("first");
    Set(false, "localhost", port.number);
    Launch("off", port.number);
    EXPECT_EQ(Portal(), shipped);
    End("off");
    Set(true, "localhost", port.number);
    Launch("on", port.number);
    EXPECT_EQ(Portal(), named);
    End("on");
    // One of the user's own.
    fFolder.Write("bbs/services.txt", "portal_host = menu.5ch.io\n");
    Set(true, "proxy.example", port.number);
    Launch("own", port.number);
    EXPECT_EQ(Portal(), "portal_host = menu.5ch.io\n");
}

// Nobody can tell it to end its gate.
TEST_F(Installed, AKilledLauncherLeavesNoGateBehind) {
    const Port port(false);
    Launch("first", port.number);
    kill(fRunning[0].second, SIGKILL);
    EXPECT_TRUE(WaitUntil([&] { return !Port::Answers(port.number); }));
    EXPECT_EQ(End("first"), 128 + SIGKILL);
}

TEST_F(Installed, ATakenPortIsLeftForTheNextFreeOne) {
    const Port taken(true);
    Set(true, "localhost", taken.number);
    Launch("first", taken.number);
    fPort = atoi(Proxy().port.c_str());
    EXPECT_GT(fPort, taken.number);
    EXPECT_TRUE(Port::Answers(fPort));
}

TEST_F(Installed, AProxyOfTheUsersOwnOnThisMachineIsLeftAlone) {
    const Port own(false);
    const Port usual(false);
    Set(true, "127.0.0.1", own.number);
    Launch("first", usual.number);
    EXPECT_FALSE(Port::Answers(own.number));
    EXPECT_EQ(Proxy().port, std::to_string(own.number));
}

TEST_F(Installed, WithoutAGateTheProgramStartsAllTheSame) {
    const Port port(false);
    fFolder.Write("gate/gate.toml", "no settings");
    Launch("first", port.number);
    EXPECT_FALSE(Proxy().use);
    EXPECT_NE(Portal().find(kShipped), std::string::npos);
    fs::remove(fFolder / "itamori-gate");
    fs::remove(fFolder / "itamori-setup");
    Launch("second", port.number);
    fHasHome = false;
    Launch("third", port.number);
}

// A manager of services that has the gate's, at a port that it listens on itself.
TEST_F(Installed, WhereSystemdHasTheGateItsSocketIsUsed) {
    const Port port(true);
    fFolder.Write("bin/systemctl",
                  "#!/bin/sh\ncase $* in\n*ExecStart*) echo \"{ path=" + fFolder.Path() +
                      "/itamori-gate ; argv[]=x }\" ;;\n*Listen*) echo \"127.0.0.1:" +
                      std::to_string(port.number) +
                      " (Stream)\" ;;\n*'--user start itamori-gate.socket') : >\"$0.started\" ;;\n"
                      "esac\n");
    fs::permissions(fFolder / "bin/systemctl", fs::perms::owner_all);
    Launch("first", port.number);
    EXPECT_TRUE(fFolder.Has("bin/systemctl.started"));
    EXPECT_EQ(Proxy().port, std::to_string(port.number));
    EXPECT_FALSE(fFolder.Has("data/itamori-gate/log")); // no gate of the launcher's
    fPort = 0;
}

TEST_F(Installed, TheUnitsAreGood) {
    if (system("command -v systemd-analyze >/dev/null") != 0)
        GTEST_SKIP() << "there is no systemd";
    const std::string make =
        "cd " + fFolder.Path() +
        " && mkdir -p units lib/itamori && cp itamori-gate lib/itamori/ && cp " UNITS
        "/itamori-gate.socket units/ && sed \"s|@CMAKE_INSTALL_PREFIX@|$PWD|\" " UNITS
        "/itamori-gate.service.in >units/itamori-gate.service && "
        "XDG_RUNTIME_DIR=$PWD systemd-analyze verify --user --man=no units/* >said 2>&1";
    EXPECT_EQ(system(make.c_str()), 0);
    EXPECT_EQ(fFolder.Read("said"), "");
}

TEST_F(Installed, WhatTheLauncherIsToldGoesToTheProgram) {
    const Port port(false);
    Launch("first", port.number);
    kill(fRunning[0].second, SIGTERM);
    EXPECT_EQ(WaitUntil([&] { return !Port::Answers(port.number); }), true);
    EXPECT_EQ(End("first"), 128 + SIGTERM);
}

} // namespace
