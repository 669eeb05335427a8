#include "gate/today/TodayGate.h"

#include "check/Check.h"

namespace {

struct CheckCase {
    const char* target;
    bool isReadable;
    std::vector<std::string> parts; // of what is told, in order
};

class Check : public TodayGate {
protected:
    void Run(const CheckCase& now) {
        SCOPED_TRACE(now.target);
        std::string told;
        gate::Origin origin(fGate->Settings());
        const bool isReadable =
            gate::CheckHost(&origin, now.target, [&](const auto& step, const auto& text) {
                told += step + ": " + text + "\n";
            });
        EXPECT_EQ(isReadable, now.isReadable) << told;
        size_t at = 0;
        for (const std::string& part : now.parts) {
            at = told.find(part, at);
            ASSERT_NE(at, std::string::npos) << part << " in\n" << told;
        }
    }
};

TEST_F(Check, TellsEachStepOfTheWayToAHost) {
    const CheckCase kCases[] = {
        {"news.today.example",
         true,
         {"family: today, read as dat files", "board: living, found in the menu https://menu.",
          "asking: https://news.today.example/living/subject.txt", "address: 127.0.0.1\n",
          "connected: after", "certificate: verified, for DNS:today.example", "until ",
          "answer: status 200, text/plain; charset=utf-8, ", "list: ", "it can be read"}},
        {"news.yesterday.example/living", true, {"present name: news.today.example"}},
        {"rooms.example/room/101", true, {"rawmode.cgi", "list: ", " threads"}},
        {"town.example/town", true, {"offlaw.cgi", "list: ", " threads"}},
        {"news.today.example/none", false, {"answer: status 404", "it can't be read"}},
        {"news.today.example/../x", false, {"can't be the name"}},
        {"evil.test", false, {"family: none"}}};
    for (const CheckCase& now : kCases)
        Run(now);
}

TEST_F(Check, TellsWhyThereIsNoAnswer) {
    gate::Settings& settings = fGate->Settings();
    const std::string reach = settings.families[0].reach;
    settings.certificates.clear();
    Run({"news.today.example/living", false, {"address: 127.0.0.1", "failed: SSL cert"}});
    fServer.Stop();
    Run({"news.today.example/living", false, {"address: 127.0.0.1", "failed: Failed to connect"}});
    settings.families[0].reach = "";
    Run({"nowhere.today.example/living", false, {"address: not found", "failed: "}});
    settings.families[0].hosts = {"localhost"};
    settings.allowedAddresses.clear();
    Run({"localhost/living", false, {"kept away from", "failed: "}});
}

// A server of its own way: it gives cookies and sends its reader round.
TEST_F(Check, NamesCookiesAndRedirects) {
    OriginServer server([](const std::string& request) {
        if (HeaderOf(request, "Host") == "old.test")
            return Reply("301 Moved", "",
                         "Location: http://new.test/b/\r\nSet-Cookie: a=secret\r\n");
        return PathOf(request) == "/b/subject.txt"
                   ? Reply("200 OK", "12345.dat<>t (1)\n", "Content-Type: a\x1B[2J\r\n")
                   : Reply("302 Found", "", "Location: /loop\r\n");
    });
    gate::Family& family = fGate->Settings().families[0];
    family.hosts = {"*.test"};
    family.usesTls = false;
    family.reach = server.Address();
    Run({"old.test/b",
         true,
         {"cookies set: a\n", "redirect: http://new.test/b/\n", "a [2J", "1 threads"}});
    Run({"new.test/c", false, {"redirect: /loop\n", "one too many"}});
}

} // namespace
