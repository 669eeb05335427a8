#pragma once

#include "settings/Marks.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gate {

struct MenuBoard {
    std::string name; // UTF-8
    std::string url;  // "http://HOST/BOARD/", with "http" whatever the menu says
};

struct MenuCategory {
    std::string name; // UTF-8
    std::vector<MenuBoard> boards;
};

// A family's menu. What is no board (mail, portals' own pages, scripts) is left out, and so is a
// category without boards.
// Nothing when it is no JSON menu.
std::optional<std::vector<MenuCategory>> ParseJsonMenu(std::string_view json,
                                                       const MenuMarks& marks = {});
// In any charset.
std::vector<MenuCategory> ParseHtmlMenu(std::string_view html, const MenuMarks& marks = {});

// The page of cp932 from which the program makes its board pane. Without a board it is empty.
// Categories of names that the program hides are named otherwise.
std::string MakeMenuPage(const std::vector<MenuCategory>& menu, std::string_view title);

} // namespace gate
