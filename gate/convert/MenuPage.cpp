#include "convert/MenuPage.h"

#include "convert/Encodings.h"
#include "convert/HtmlTree.h"
#include "convert/Words.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>

namespace gate {

namespace {

using nlohmann::json;

constexpr std::string_view kScheme = "http://";
constexpr size_t kMostBoards = 20'000;

// Names under which the program leaves a category out of its pane: a blank more and it is shown.
constexpr std::array<std::string_view, 6> kHiddenNames = {"チャット", "運営",       "ツール類",
                                                          "お絵かき", "他のサイト", "まちＢＢＳ"};

bool AreOf(std::string_view text, std::string_view characters) {
    return !text.empty() && text.find_first_not_of(characters) == text.npos;
}

// "http://HOST/FOLDER/", of one folder or of two where a family keeps its boards below a folder.
std::string BoardAddress(std::string_view address) {
    constexpr std::string_view kOfHost = "abcdefghijklmnopqrstuvwxyz0123456789.-";
    constexpr std::string_view kOfFolder = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                           "0123456789_-";
    const size_t scheme = address.find("//");
    const std::string before = Lowered(address.substr(0, scheme));
    if (scheme == address.npos || (before != "http:" && before != "https:" && !before.empty()))
        return "";
    address.remove_prefix(scheme + 2);
    const std::string host = Lowered(address.substr(0, address.find('/')));
    address.remove_prefix(host.size());
    if (!AreOf(host, kOfHost) || host.find('.') == host.npos || address.size() < 3 ||
        !address.ends_with('/'))
        return "";
    const std::string_view folders = address.substr(1, address.size() - 2);
    const size_t slash = folders.find('/');
    const bool areGood = AreOf(folders.substr(0, slash), kOfFolder) &&
                         (slash == folders.npos || AreOf(folders.substr(slash + 1), kOfFolder));
    return areGood ? std::string(kScheme) + host + "/" + std::string(folders) + "/" : "";
}

bool IsOfOtherHost(const std::string& address, const MenuMarks& marks) {
    const std::string_view host = std::string_view(address).substr(kScheme.size());
    return std::ranges::any_of(marks.otherHosts,
                               [host](auto& other) { return host.starts_with(other); });
}

void AddBoard(std::string_view name, std::string_view address, const MenuMarks& marks,
              MenuCategory* category) {
    const std::string board = BoardAddress(Trimmed(address));
    name = Trimmed(name);
    if (!name.empty() && !board.empty() && !IsOfOtherHost(board, marks))
        category->boards.push_back({std::string(name), board});
}

void AddCategory(MenuCategory category, std::vector<MenuCategory>* menu) {
    if (!category.boards.empty() && !category.name.empty())
        menu->push_back(std::move(category));
}

std::string TextIn(const json& object, const char* key) {
    const auto found = object.is_object() ? object.find(key) : object.end();
    return found != object.end() && found->is_string() ? found->get<std::string>() : "";
}

MenuCategory CategoryOf(const json& entry, const MenuMarks& marks) {
    MenuCategory category{std::string(Trimmed(TextIn(entry, "category_name"))), {}};
    const auto boards = entry.is_object() ? entry.find("category_content") : entry.end();
    if (boards == entry.end() || !boards->is_array())
        return category;
    for (const json& board : *boards)
        AddBoard(TextIn(board, "board_name"), TextIn(board, "url"), marks, &category);
    return category;
}

// A name in bold that is no part of a link.
bool IsHeading(HtmlNode* node) {
    if (NameOf(node) != "b" || FindElement(node, "a") != nullptr)
        return false;
    while (node != nullptr && NameOf(node) != "a")
        node = ParentOf(node);
    return node == nullptr;
}

// The program shows names as they stand: what would be a tag gets another form, not a reference.
std::string PageText(std::string_view utf8) {
    std::string text;
    for (const char byte : utf8) {
        if (byte == '<')
            text += "＜";
        else if (byte == '>')
            text += "＞";
        else
            text += byte == '\n' || byte == '\r' || byte == '\t' ? ' ' : byte;
    }
    return ToCp932(text, Charset::kUtf8);
}

std::string ShownName(std::string_view name) {
    const bool isHidden = std::ranges::find(kHiddenNames, name) != kHiddenNames.end();
    return std::string(name) + (isHidden ? " " : "");
}

std::string CategoryText(const MenuCategory& category) {
    std::string text;
    for (const MenuBoard& board : category.boards) {
        text += text.empty() ? "" : "<br>\n";
        text += "<A HREF=" + board.url + ">" + PageText(board.name) + "</A>";
    }
    return text;
}

} // namespace

std::optional<std::vector<MenuCategory>> ParseJsonMenu(std::string_view text,
                                                       const MenuMarks& marks) {
    const json page = json::parse(ToUtf8(text, Charset::kUtf8), nullptr, false);
    const auto list = page.is_object() ? page.find("menu_list") : page.end();
    if (list == page.end() || !list->is_array())
        return std::nullopt;
    std::vector<MenuCategory> menu;
    for (const json& entry : *list)
        AddCategory(CategoryOf(entry, marks), &menu);
    return menu;
}

std::vector<MenuCategory> ParseHtmlMenu(std::string_view html, const MenuMarks& marks) {
    const HtmlTree tree(ToUtf8(html, GuessCharset(html)));
    std::vector<MenuCategory> menu;
    MenuCategory category;
    size_t boards = 0;
    for (HtmlNode* node = tree.Root(); node != nullptr && boards < kMostBoards;
         node = NextNode(node, tree.Root())) {
        if (NameOf(node) == "a") {
            AddBoard(TextOf(node), AttributeOf(node, "href"), marks, &category);
            boards++;
        } else if (IsHeading(node)) {
            AddCategory(std::move(category), &menu);
            category = {std::string(Trimmed(TextOf(node))), {}};
        }
    }
    AddCategory(std::move(category), &menu);
    return menu;
}

std::string MakeMenuPage(const std::vector<MenuCategory>& menu, std::string_view title) {
    std::string categories;
    for (const MenuCategory& category : menu) {
        if (!category.boards.empty())
            categories += "<BR><BR><B>" + PageText(ShownName(category.name)) + "</B><br>\n" +
                          CategoryText(category) + "\n";
    }
    if (categories.empty())
        return "";
    return "<HTML><HEAD><TITLE>" + PageText(title) + "</TITLE></HEAD><BODY>\n" + categories +
           "</BODY></HTML>\n";
}

} // namespace gate
