#include "boards/Menus.h"

#include "origin/Location.h"

#include <cstdio>
#include <future>

namespace gate {

namespace {

constexpr const char* kTitle = "BBS MENU";

// What a page says that is no menu, or one without a board, is nothing.
std::vector<MenuCategory> ParseAny(const std::string& bytes, const MenuMarks& marks) {
    const size_t first = bytes.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
    if (first != std::string::npos && bytes[first] == '{')
        return ParseJsonMenu(bytes.substr(first), marks).value_or(std::vector<MenuCategory>());
    return ParseHtmlMenu(bytes, marks);
}

// Only boards that the gate can reach: other links are no boards, and a page with nothing else
// comes from a network that wants something of its user first.
std::vector<MenuCategory> Parse(const std::string& bytes, const Settings& settings) {
    std::vector<MenuCategory> menu = ParseAny(bytes, settings.menuMarks);
    for (MenuCategory& category : menu)
        std::erase_if(category.boards, [&settings](const MenuBoard& board) {
            const std::optional<Place> place = ParseAddress(board.url);
            return !place || settings.FindFamily(place->host) == nullptr;
        });
    std::erase_if(menu, [](const MenuCategory& category) { return category.boards.empty(); });
    return menu;
}

} // namespace

void Menus::Answer(Responder* responder) const {
    const Deadline deadline = fShop.AnswerDeadline();
    std::vector<std::future<std::vector<MenuCategory>>> parts;
    for (const std::string& address : fShop.settings.menus)
        parts.push_back(std::async(std::launch::async, [this, address, deadline] {
            return _FindMenu(address, deadline);
        }));
    std::vector<MenuCategory> menu;
    for (auto& part : parts) {
        std::vector<MenuCategory> categories = part.get();
        menu.insert(menu.end(), std::make_move_iterator(categories.begin()),
                    std::make_move_iterator(categories.end()));
    }
    AnswerHead head;
    head.type = "text/html; charset=Shift_JIS";
    head.lastModified = time(nullptr);
    if (menu.empty()) {
        head.status = 503;
        head.reason = "板一覧を取得できません";
    }
    responder->Reply(head, menu.empty() ? std::string() : MakeMenuPage(menu, kTitle));
}

std::vector<MenuCategory> Menus::_FindMenu(const std::string& address, Deadline deadline) const {
    const std::optional<Place> place = ParseAddress(address);
    const Family* family = place ? fShop.settings.FindFamily(place->host) : nullptr;
    if (family == nullptr) {
        fprintf(stderr, "%s belongs to no family of the settings\n", address.c_str());
    } else {
        const Place home{family->PresentHost(place->host), place->path};
        const std::optional<std::string> moved = fShop.store.FindMove(home.host, home.path);
        std::vector<MenuCategory> menu;
        if (moved)
            menu = _Fetch(address, {*moved, home.path}, home, FirstPart(deadline, 2));
        if (menu.empty())
            menu = _Fetch(address, home, home, deadline);
        if (!menu.empty())
            return menu;
    }
    const std::optional<std::string> last = fShop.store.FindMenu(address);
    return last ? Parse(*last, fShop.settings) : std::vector<MenuCategory>();
}

std::vector<MenuCategory> Menus::_Fetch(const std::string& address, const Place& place,
                                        const Place& home, Deadline deadline) const {
    OriginRequest request;
    request.family = fShop.settings.FindFamily(place.host);
    request.host = place.host;
    request.path = place.path;
    request.takesCompressed = true;
    if (request.family == nullptr)
        return {};
    const Fetched fetched = FetchFollowing(&fShop.origin, request, deadline);
    const bool isGood = fetched.failure.empty() && fetched.head.status == 200 &&
                        fetched.transfer->WaitForEnd(deadline) == Transfer::State::kWhole;
    if (!isGood) {
        const std::string failure = !fetched.failure.empty() ? fetched.failure
                                    : fetched.head.status != 200
                                        ? StatusText(fetched.place.host, fetched.head.status)
                                        : fetched.transfer->Failure("late");
        fprintf(stderr, "%s: %s\n", address.c_str(), failure.c_str());
        return {};
    }
    const std::string bytes = fetched.transfer->Body();
    std::vector<MenuCategory> menu = Parse(bytes, fShop.settings);
    if (menu.empty()) {
        fprintf(stderr, "%s is no board menu\n", address.c_str());
        return menu;
    }
    fShop.store.SetMenu(address, bytes);
    if (fetched.place.host != home.host && fetched.place.path == home.path)
        fShop.store.SetMove(home.host, home.path, fetched.place.host);
    return menu;
}

} // namespace gate
