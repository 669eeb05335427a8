#include "views/BBSTable.h"

namespace {

constexpr std::string_view kCategoryMark = "<BR><BR><B>";
constexpr std::string_view kCategoryEnd = "</B>";
constexpr std::string_view kAnchor = "<A HREF=";
constexpr std::string_view kAnchorEnd = "</A>";
constexpr size_t kMissing = std::string_view::npos;

// A mark at the very start of the text counts as missing.
size_t Find(std::string_view text, std::string_view what, size_t from) {
    const size_t at = text.find(what, from);
    return at == 0 ? kMissing : at;
}

} // namespace

const BBSTable::Category* BBSTable::categoryAt(int32 index) const {
    return index >= 0 && index < countCategories() ? &fCategories[index] : nullptr;
}

int32 BBSTable::parseBBSTable() {
    const std::string_view text(fText->String(), fText->Length());
    size_t position = 0;
    for (;;) {
        const size_t header = Find(text, kCategoryMark, position);
        if (header == kMissing)
            return 0;
        const size_t end = Find(text, kCategoryEnd, header);
        if (end == kMissing)
            return -1;
        const size_t nameStart = header + kCategoryMark.size();
        Category category;
        category.name = text.substr(nameStart, end - nameStart);
        position = _ParseBoards(text, end, &category);
        if (position == kMissing)
            return -1;
        fCategories.push_back(std::move(category));
    }
}

// The boards of one category, from where its header ended; returns where the last one ended. A
// category goes on while a board is followed by a lower-case line break tag.
size_t BBSTable::_ParseBoards(std::string_view text, size_t position, Category* category) const {
    for (;;) {
        const size_t anchor = Find(text, kAnchor, position);
        if (anchor == kMissing)
            return position;
        const size_t urlEnd = Find(text, ">", anchor);
        const size_t end = urlEnd == kMissing ? kMissing : Find(text, kAnchorEnd, urlEnd + 1);
        if (end == kMissing)
            return kMissing;
        const size_t url = anchor + kAnchor.size();
        category->boards.push_back({std::string(text.substr(urlEnd + 1, end - urlEnd - 1)),
                                    std::string(text.substr(url, urlEnd - url))});
        position = end;
        const size_t next = end + kAnchorEnd.size() + 1;
        if (next >= text.size() || text[next] != 'b')
            return position;
    }
}

void BBSTable::printBBSTable() const {
    long number = 0;
    for (const Category& category : fCategories) {
        fprintf(stderr, "%ld: %s\n", ++number, category.name.c_str());
        long boardNumber = 0;
        for (const Board& board : category.boards) {
            fprintf(stderr, "    %ld: %s - %s\n", ++boardNumber, board.title.c_str(),
                    board.url.c_str());
        }
    }
}
