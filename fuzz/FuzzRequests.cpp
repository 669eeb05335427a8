// What a client asks of the gate, and where a server sends it on to.
#include "Fuzz.h"

#include "boards/CgiPages.h"
#include "boards/Log.h"
#include "boards/Thread.h"
#include "front/Doorkeeper.h"
#include "origin/Location.h"

#include <algorithm>

namespace {

const gate::Settings& TheSettings() {
    static const gate::Settings kSettings = [] {
        gate::Settings settings;
        gate::Family family;
        family.hosts = {"*.example"};
        family.renamed = {{"old.test", "b.example"}};
        settings.families = {family};
        return settings;
    }();
    return kSettings;
}

// Nothing that reaches a server's request or a name in the store can end it or lead elsewhere.
bool IsOneWord(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c < 0x7F; });
}

void ClaimSafe(const gate::ThreadAddress& thread) {
    Claim(IsOneWord(thread.KeptName() + thread.DatPath()), "a thread's name is one word");
    Claim(("/" + thread.board + "/").find("/../") == std::string::npos, "no folder above");
    Claim(thread.family->Serves(thread.server), "the host is the family's");
}

void AskFor(const gate::Request& request) {
    const gate::Settings& settings = TheSettings();
    if (const auto thread = gate::ParseThreadPath(settings, request.host, request.path))
        ClaimSafe(*thread);
    if (const auto page = gate::ParseCgiPath(settings, request.host, request.path))
        ClaimSafe(page->thread);
    if (const auto wanted = gate::ParseWanted(request))
        Claim(wanted->start == -1 || wanted->start > 0, "a range begins behind the start");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string text = TextOf(data, size);
    gate::Request request;
    std::string reason;
    if (gate::ParseRequestHead(text, &request, &reason) == 0) {
        Claim(IsOneWord(request.path) && request.path.starts_with('/'), "a path is one word");
        Claim(gate::BodyLength(request) >= 0, "a length is known");
        if (gate::JudgeRequest(request, TheSettings(), 8080, &reason) == 0 && request.isAbsolute)
            AskFor(request);
    }
    if (const auto place = gate::ResolveLocation({"a.example", "/b/"}, text))
        Claim(IsOneWord(place->host + place->path) && place->path.starts_with('/') &&
                  place->host.find_first_of("/:@") == std::string::npos,
              "a place is a host and a path");
    const std::string page = gate::MakeCgiPage(text, 2);
    Claim(page.ends_with("</html>\n"), "a page is whole");
    return 0;
}
