// An extra board file, and the list that names such files.
#include "Fuzz.h"

#include "net/NPUrl.h"
#include "net/ThreadAddress.h"
#include "text/PathNames.h"
#include "views/BoardFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string text = TextOf(data, size);
    for (const std::string& name : ParseBoardList(text)) {
        Claim(!name.empty() && name.find('\n') == name.npos, "a file name is one line");
        if (IsGoodComponent(name.c_str()))
            Claim(name.c_str() != std::string("..") && name.c_str()[0] != '/', "it stays inside");
    }
    BBSTable::Category category;
    if (!ParseExtraBoards(text, &category))
        return 0;
    Claim(category.name.size() <= 1024, "a category's name is bounded");
    for (const BBSTable::Board& board : category.boards) {
        Claim(!board.title.empty(), "a board has a title");
        const NPUrl url(board.url.c_str());
        MakeThreadAddress(board.url.c_str(), board.title.c_str());
        if (url.Status() == 0 && IsGoodBoardFolder(url.Board()))
            Claim(url.Board()[0] != '/', "a good folder is no absolute path");
    }
    return 0;
}
