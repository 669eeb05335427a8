#include "boards/Boards.h"
#include "check/Check.h"
#include "front/Listeners.h"
#include "front/Server.h"
#include "post/Confirmations.h"
#include "post/PostRoom.h"
#include "settings/Places.h"

#include <malloc.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <thread>

namespace {

constexpr const char* kHelp =
    "itamori-gate: a proxy on this machine through which Itamori reads today's boards.\n"
    "\n"
    "  --port N        listen on port N of 127.0.0.1 and ::1 instead of the settings' one\n"
    "  --config FILE   read FILE as the user's own settings (else\n"
    "                  ~/.config/itamori-gate/gate.toml, where it is there)\n"
    "  --check HOST    tell step by step how a host of the boards answers, and end; with 0\n"
    "                  when it can be read. HOST/BOARD asks for a certain board\n"
    "  --version       print the version\n"
    "  --help          print this\n"
    "\n"
    "http://localhost:8080/ shows what it does. A socket that is handed over (LISTEN_FDS) goes\n"
    "before the port. One line a request is written to standard error. SIGTERM and SIGINT end\n"
    "it.\n";

struct Options {
    int port = -1;
    std::string config;
    std::string check;
};

int Complain(const std::string& text) {
    fprintf(stderr, "itamori-gate: %s\n", text.c_str());
    return 2;
}

// The exit status, when it is all done already.
std::optional<int> ReadOptions(int count, char** words, Options* options) {
    for (int i = 1; i < count; i++) {
        const std::string word = words[i];
        if (word == "--help") {
            fputs(kHelp, stdout);
            return 0;
        }
        if (word == "--version") {
            puts("itamori-gate " ITAMORI_VERSION);
            return 0;
        }
        if ((word != "--port" && word != "--config" && word != "--check") || i + 1 == count)
            return Complain("can't understand \"" + word + "\"; --help tells what there is");
        const char* value = words[++i];
        if (word != "--port") {
            (word == "--config" ? options->config : options->check) = value;
            continue;
        }
        char* end = nullptr;
        const long port = strtol(value, &end, 10);
        if (*end != '\0' || end == value || port < 0 || port > 65535)
            return Complain("\"" + std::string(value) + "\" is no port");
        options->port = static_cast<int>(port);
    }
    return std::nullopt;
}

int Check(const gate::Settings& settings, const std::string& target) {
    gate::Origin origin(settings);
    const gate::Say say = [](const std::string& step, const std::string& text) {
        printf("%-14s%s\n", step.c_str(), text.c_str());
        fflush(stdout);
    };
    return gate::CheckHost(&origin, target, say) ? 0 : 1;
}

gate::Server* sServer = nullptr;

void StopServer(int) {
    sServer->Stop();
}

void StopOnSignals(gate::Server* server) {
    sServer = server;
    struct sigaction stop = {};
    stop.sa_handler = StopServer;
    sigaction(SIGTERM, &stop, nullptr);
    sigaction(SIGINT, &stop, nullptr);
    signal(SIGPIPE, SIG_IGN);
}

} // namespace

int main(int count, char** words) {
    Options options;
    if (const std::optional<int> status = ReadOptions(count, words, &options))
        return *status;
    mallopt(M_ARENA_MAX, 2); // many short threads, each with little
    // What one answer took serves the next; what is left over goes back when nothing is under way.
    mallopt(M_MMAP_THRESHOLD, 4 << 20);
    mallopt(M_TRIM_THRESHOLD, 4 << 20);
    gate::Settings settings;
    std::string error;
    if (!gate::ReadAllSettings(options.config, &settings, &error))
        return Complain(error);
    if (options.port >= 0)
        settings.port = options.port;
    if (!options.check.empty())
        return Check(settings, options.check);
    gate::Listeners listeners;
    if (!listeners.Adopt(&error) && (!error.empty() || !listeners.Open(settings.port, &error)))
        return Complain(error);
    // Servers' confirmation pages stand at a port of their own, apart from the gate's pages.
    gate::Store store(gate::StoreFile());
    gate::Listeners pageListeners;
    if (!gate::OpenPagePort(&pageListeners, &store, &error))
        return Complain(error);
    gate::Origin origin(settings);
    gate::Journal journal;
    const gate::Shop shop{settings, origin, store};
    gate::CookieShelf cookies(settings, &store);
    gate::PostRoom posts(shop, &cookies, gate::OpenInBrowser, pageListeners.Port());
    gate::Confirmations confirmations(&posts);
    gate::Boards boards(shop, &journal, &cookies, &posts);
    gate::Server pageServer(settings, &pageListeners, &confirmations, &journal);
    gate::Server server(settings, &listeners, &boards, &journal);
    StopOnSignals(&server);
    fprintf(stderr, "itamori-gate: listening on localhost:%d\n", listeners.Port());
    std::thread pages([&pageServer] { pageServer.Run(); });
    server.Run();
    pageServer.Stop();
    pages.join();
    origin.End();
    return 0;
}
