#pragma once

#include <String.h>
#include <SupportDefs.h>

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

// The portal's board menu: categories of boards, read from its HTML page. Owns what it parsed; the
// text is borrowed. UTF-8 throughout.
class BBSTable {
public:
    struct Board {
        std::string title;
        std::string url; // just what stood after "<A HREF=", quotes and all
    };
    struct Category {
        std::string name;
        std::vector<Board> boards;
    };

    // Borrows the text until the table is gone.
    explicit BBSTable(const BString* text) : fText(text) {}

    // 0, or −1 when a mark has no end; what stood before it has then been read.
    int32 parseBBSTable();
    int32 countCategories() const { return static_cast<int32>(fCategories.size()); }
    // Null when there is no such category.
    const Category* categoryAt(int32 index) const;
    // A listing for standard error.
    void printBBSTable() const;

private:
    size_t _ParseBoards(std::string_view text, size_t position, Category* category) const;

    const BString* fText;
    std::vector<Category> fCategories;
};
