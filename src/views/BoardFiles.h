#pragma once

#include "views/BBSTable.h"

#include <SupportDefs.h>

#include <string>
#include <string_view>
#include <vector>

// The files in the folder "bbs" beside the executable, without any view.

// That folder; empty when it can't be told.
std::string BbsFolder();

// Reads the portal's menu ("newbbsmenu.html", cp932): 0, or −1 when it can't be read, does not
// convert or is malformed; nothing is delivered then.
int32 ReadBoardMenu(const std::string& folder, std::vector<BBSTable::Category>* categories);

// Reads the extra board files that "bbs.list" names; what is missing is left out. UTF-8.
std::vector<BBSTable::Category> ReadExtraBoards(const std::string& folder);

// The names in the text of a "bbs.list": a line each, up to the first that does not start with an
// ASCII character from the space on.
std::vector<std::string> ParseBoardList(std::string_view text);

// The text of an extra board file: a line with the category's name, then a line a board with
// server, folder and title divided by white space. False without a first line of at most 1,024
// bytes.
bool ParseExtraBoards(std::string_view text, BBSTable::Category* category);
