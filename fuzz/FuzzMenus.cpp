// A family's menu: JSON, or a page.
#include "Fuzz.h"

#include "convert/Encodings.h"
#include "convert/MenuPage.h"
#include "views/BBSTable.h"

namespace {

// The program finds in the page what the menu holds.
void Read(const std::vector<gate::MenuCategory>& menu) {
    const std::string page = gate::MakeMenuPage(menu, "menu");
    const std::string utf8 = gate::ToUtf8(page, gate::Charset::kCp932);
    Claim(gate::ToCp932(utf8, gate::Charset::kUtf8) == page, "a menu is good cp932");
    const BString text(utf8.data(), static_cast<int32>(utf8.size()));
    BBSTable table(&text);
    Claim(table.parseBBSTable() == 0, "the program reads a menu");
    Claim(table.countCategories() == static_cast<int32>(menu.size()), "all categories arrive");
    for (size_t i = 0; i < menu.size(); i++) {
        const auto& boards = table.categoryAt(static_cast<int32>(i))->boards;
        Claim(boards.size() == menu[i].boards.size(), "all boards arrive");
        for (size_t j = 0; j < boards.size(); j++)
            Claim(boards[j].url == menu[i].boards[j].url, "a board has its address");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string text = TextOf(data, size);
    Read(gate::ParseHtmlMenu(text));
    if (const auto menu = gate::ParseJsonMenu(text))
        Read(*menu);
    return 0;
}
