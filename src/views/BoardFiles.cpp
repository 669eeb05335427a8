#include "views/BoardFiles.h"

#include "settings/ReplaceFile.h"
#include "text/PathNames.h"
#include "text/ToUtf8.h"
#include "text/Utf8Cut.h"

#include <Application.h>
#include <Entry.h>
#include <Path.h>
#include <Roster.h>

#include <cstdio>

namespace {

constexpr size_t kLongestCategory = 1024;
constexpr size_t kLongestLine = 4095;
constexpr size_t kLongestField = 1023;
constexpr std::string_view kWhiteSpace = " \t\r\v\f";

// Takes the next line off the text; false at its end, or at a line that ends the file's content:
// one that starts with a control character or no ASCII. Only a line feed lets a line start with
// DEL.
bool TakeLine(std::string_view* text, std::string_view* line) {
    const size_t feed = text->find('\n');
    *line = text->substr(0, feed);
    text->remove_prefix(feed == text->npos ? text->size() : feed + 1);
    const unsigned char last = feed == text->npos ? 0x7E : 0x7F;
    const unsigned char first = line->empty() ? '\0' : static_cast<unsigned char>((*line)[0]);
    return first >= 0x20 && first <= last;
}

std::string_view TakeWord(std::string_view* line) {
    const size_t start = line->find_first_not_of(kWhiteSpace);
    line->remove_prefix(start == line->npos ? line->size() : start);
    const std::string_view word = line->substr(0, line->find_first_of(kWhiteSpace));
    line->remove_prefix(word.size());
    return word;
}

bool ParseBoard(std::string_view line, BBSTable::Board* board) {
    if (line.size() > kLongestLine)
        return false;
    const std::string_view server = TakeWord(&line);
    const std::string_view folder = TakeWord(&line);
    const std::string_view title = TakeWord(&line);
    if (title.empty() || server.size() > kLongestField || folder.size() > kLongestField)
        return false;
    board->title = CutAtCharacter(std::string(title).c_str(), kLongestField);
    board->url = "http://" + std::string(server) + "/" + std::string(folder) + "/";
    return !board->title.empty(); // one that begins with a zero byte shows nothing
}

} // namespace

std::string BbsFolder() {
    app_info info;
    BPath path;
    if (be_app == nullptr || be_app->GetAppInfo(&info) != B_OK || path.SetTo(&info.ref) != B_OK ||
        path.GetParent(&path) != B_OK || path.Append("bbs") != B_OK)
        return "";
    return path.Path();
}

int32 ReadBoardMenu(const std::string& folder, std::vector<BBSTable::Category>* categories) {
    std::string page;
    if (folder.empty() || ReadWholeFile((folder + "/newbbsmenu.html").c_str(), &page) != B_OK)
        return -1;
    std::string utf8;
    if (!ToUtf8(page, &utf8))
        return -1;
    const BString text(utf8.data(), static_cast<int32>(utf8.size()));
    BBSTable table(&text);
    if (table.parseBBSTable() != 0)
        return -1;
    for (int32 i = 0; i < table.countCategories(); i++)
        categories->push_back(*table.categoryAt(i));
    return 0;
}

std::vector<BBSTable::Category> ReadExtraBoards(const std::string& folder) {
    std::vector<BBSTable::Category> categories;
    std::string list;
    if (ReadWholeFile((folder + "/bbs.list").c_str(), &list) != B_OK)
        return categories;
    for (const std::string& name : ParseBoardList(list)) {
        std::string text;
        BBSTable::Category category;
        if (!IsGoodComponent(name.c_str()))
            fprintf(stderr, "bbs.list: refused the file name \"%s\"\n", name.c_str());
        else if (ReadWholeFile(std::string(folder).append("/").append(name).c_str(), &text) ==
                     B_OK &&
                 ParseExtraBoards(text, &category))
            categories.push_back(std::move(category));
    }
    return categories;
}

std::vector<std::string> ParseBoardList(std::string_view text) {
    std::vector<std::string> names;
    std::string_view line;
    while (TakeLine(&text, &line))
        names.emplace_back(line);
    return names;
}

bool ParseExtraBoards(std::string_view text, BBSTable::Category* category) {
    const size_t feed = text.find('\n');
    if (feed > kLongestCategory)
        return false;
    category->name = text.substr(0, feed);
    text.remove_prefix(feed + 1);
    std::string_view line;
    while (TakeLine(&text, &line)) {
        BBSTable::Board board;
        if (ParseBoard(line, &board))
            category->boards.push_back(std::move(board));
    }
    return true;
}
