#include "check/Check.h"

#include "boards/Thread.h"
#include "convert/MenuPage.h"
#include "convert/SubjectList.h"
#include "convert/Words.h"
#include "origin/Location.h"
#include "origin/Way.h"

#include <algorithm>

namespace gate {

namespace {

constexpr size_t kMostRedirects = 5;

const char* NameOf(FamilyKind kind) {
    switch (kind) {
    case FamilyKind::kDat: return "dat files";
    case FamilyKind::kRawmode: return "rawmode.cgi";
    case FamilyKind::kOfflaw: break;
    }
    return "offlaw.cgi";
}

std::string Milliseconds(long count) {
    return "after " + std::to_string(count) + " ms";
}

std::string ValueOf(const OriginHead& head, std::string_view name, const char* otherwise) {
    const std::string* value = head.Find(name);
    return value == nullptr || value->empty() ? otherwise : *value;
}

std::string CookieNames(const OriginHead& head) {
    std::string names;
    for (const auto& [name, value] : head.headers) {
        if (name == "set-cookie")
            names += (names.empty() ? "" : ", ") + value.substr(0, value.find_first_of("=;"));
    }
    return names;
}

// One check: what it has learned so far.
class Check {
public:
    Check(Origin* origin, const Say& say) : fOrigin(origin), fSay(say) {}

    bool Run(const std::string& target);

private:
    bool _FindFamily(const std::string& host);
    std::string _FindBoard();
    std::string _FindBoardIn(const std::string& address);
    bool _Ask();
    void _TellWay(const Way& way);
    void _TellAnswer(const OriginHead& head, const Way& way, size_t size);
    bool _Follow(const std::string& location);
    bool _JudgeList(const std::string& body);

    Origin* const fOrigin;
    const Say& fSay;
    const Family* fFamily = nullptr;
    Place fPlace;
    std::string fBoard;
    OriginHead fHead; // of the last answer
    std::string fBody;
};

bool Check::Run(const std::string& target) {
    const std::string host = target.substr(0, target.find('/'));
    if (!_FindFamily(host))
        return false;
    fBoard = target.size() > host.size() + 1 ? target.substr(host.size() + 1) : _FindBoard();
    while (fBoard.ends_with('/'))
        fBoard.pop_back();
    if (!fBoard.empty() && !IsBoard(fBoard)) {
        fSay("board", "\"" + fBoard + "\" can't be the name of one");
        return false;
    }
    fPlace.path = fBoard.empty() ? "/" : "/" + fBoard + "/subject.txt";
    for (size_t count = 0; _Ask(); count++) {
        const std::string* location = fHead.Find("location");
        if (!IsRedirect(fHead.status) || location == nullptr)
            return _JudgeList(fBody);
        if (count == kMostRedirects) {
            fSay("redirect", "that is one too many");
            return false;
        }
        if (!_Follow(*location))
            return false;
    }
    return false;
}

bool Check::_FindFamily(const std::string& host) {
    fFamily = fOrigin->Rules().FindFamily(host);
    if (fFamily == nullptr) {
        const bool isPortal = fOrigin->Rules().IsPortal(host);
        fSay("family", isPortal ? "none, but the program is given the board menu for it"
                                : "none: no [[family]] of the settings has this host");
        return false;
    }
    fPlace.host = fFamily->PresentHost(host);
    fSay("family", fFamily->name + ", read as " + NameOf(fFamily->kind));
    fSay("present name", fPlace.host);
    return true;
}

std::string Check::_FindBoard() {
    for (const std::string& menu : fOrigin->Rules().menus) {
        std::string board = _FindBoardIn(menu);
        if (!board.empty()) {
            std::string text = board;
            fSay("board", text.append(", found in the menu ") + menu);
            return board;
        }
    }
    fSay("board", "none of this host in the menus: name one as " + fPlace.host + "/BOARD");
    return "";
}

std::string Check::_FindBoardIn(const std::string& address) {
    const std::optional<Place> place = ParseAddress(address);
    OriginRequest request;
    request.family = place ? fOrigin->Rules().FindFamily(place->host) : nullptr;
    if (request.family == nullptr)
        return "";
    request.host = request.family->PresentHost(place->host);
    request.path = place->path;
    request.takesCompressed = true;
    const Deadline deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    const Fetched fetched = FetchFollowing(fOrigin, request, deadline);
    fetched.transfer->WaitForEnd(deadline);
    const std::string bytes = fetched.transfer->Body();
    const MenuMarks& marks = fOrigin->Rules().menuMarks;
    const auto menu = ParseJsonMenu(bytes, marks);
    const std::string start = "http://" + fPlace.host + "/";
    for (const MenuCategory& category : menu ? *menu : ParseHtmlMenu(bytes, marks)) {
        for (const MenuBoard& board : category.boards) {
            if (board.url.starts_with(start))
                return board.url.substr(start.size(), board.url.size() - start.size() - 1);
        }
    }
    return "";
}

// Whether there is an answer.
bool Check::_Ask() {
    fSay("asking", (fFamily->usesTls ? "https://" : "http://") + fPlace.host + fPlace.path);
    OriginRequest request;
    request.family = fFamily;
    request.host = fPlace.host;
    request.path = fPlace.path;
    request.takesCompressed = true;
    request.way = std::make_shared<Way>();
    const std::shared_ptr<Transfer> transfer = fOrigin->Start(request);
    const bool isWhole = transfer->WaitForEnd(Deadline::max()) == Transfer::State::kWhole;
    fHead = transfer->Head();
    fBody = transfer->Body();
    _TellWay(*request.way);
    if (fHead.status != 0)
        _TellAnswer(fHead, *request.way, fBody.size());
    if (!isWhole)
        fSay("failed", request.way->problem.empty() ? transfer->Failure() : request.way->problem);
    return isWhole;
}

void Check::_TellWay(const Way& way) {
    const std::string& proxy = fOrigin->Rules().outerProxy;
    if (!proxy.empty())
        fSay("proxy", proxy);
    else if (way.addresses.empty() && way.connectedMilliseconds == 0)
        fSay("address", "not found");
    for (const Way::Address& address : way.addresses)
        fSay("address",
             address.text + (address.isKeptAway ? ", kept away from: it is of this machine or its "
                                                  "network, and [origin] allowed_addresses lacks it"
                                                : ""));
    if (way.connectedMilliseconds > 0)
        fSay("connected", Milliseconds(way.connectedMilliseconds));
    if (fFamily->usesTls && !way.certificateEnd.empty())
        fSay("certificate", "verified, for " + way.certificateNames + ", until " +
                                way.certificateEnd + ", " + Milliseconds(way.secureMilliseconds));
}

void Check::_TellAnswer(const OriginHead& head, const Way& way, size_t size) {
    fSay("answer", "status " + std::to_string(head.status) + ", " +
                       ValueOf(head, "content-type", "no type") + ", " + std::to_string(size) +
                       " bytes " + Milliseconds(way.totalMilliseconds));
    const std::string names = CookieNames(head);
    if (!names.empty())
        fSay("cookies set", names);
}

// Goes only where the gate would.
bool Check::_Follow(const std::string& location) {
    const std::optional<Place> next = ResolveLocation(fPlace, location);
    const Family* family = next ? fOrigin->Rules().FindFamily(next->host) : nullptr;
    fSay("redirect", location + (family == nullptr ? ", not followed: no known host" : ""));
    if (family == nullptr)
        return false;
    fFamily = family;
    fPlace = {family->PresentHost(next->host), next->path};
    // A board's server sends on to its new one by the board's folder.
    if (!fBoard.empty() && fPlace.path == "/" + fBoard + "/")
        fPlace.path += "subject.txt";
    return true;
}

bool Check::_JudgeList(const std::string& body) {
    if (fHead.status != 200)
        return false;
    if (fBoard.empty())
        return true;
    const bool isEuc = fFamily->kind == FamilyKind::kRawmode;
    const std::string list =
        LooksLikePage(body) ? ""
                            : MakeSubjectList(body, isEuc ? Charset::kEucJp : GuessCharset(body));
    const auto count = std::count(list.begin(), list.end(), '\n');
    fSay("list", list.empty() ? "this is no list of threads" : std::to_string(count) + " threads");
    return count > 0;
}

} // namespace

bool CheckHost(Origin* origin, const std::string& target, const Say& say) {
    // What a server says must not steer the user's terminal.
    const Say sayPlainly = [&say](const std::string& step, const std::string& text) {
        say(step, WithoutControls(text));
    };
    const bool isReadable = Check(origin, sayPlainly).Run(target);
    say("result", isReadable ? "it can be read" : "it can't be read");
    return isReadable;
}

} // namespace gate
