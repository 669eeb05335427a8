// The portal's board menu, a page in cp932.
#include "Fuzz.h"

#include "net/NPUrl.h"
#include "text/cp932.h"
#include "views/BBSTable.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string page = TextOf(data, size);
    std::string utf8(size * 3 + 3, '\0');
    int32 length = static_cast<int32>(size);
    int32 written = 0;
    cp932_conv_to_utf8(page.data(), &length, utf8.data(), &written);
    const BString text(utf8.data(), written);
    BBSTable table(&text);
    table.parseBBSTable();
    for (int32 i = 0; i < table.countCategories(); i++) {
        for (const BBSTable::Board& board : table.categoryAt(i)->boards) {
            const NPUrl url(board.url.c_str());
            Claim((url.Host() != nullptr) == (url.Status() == 0), "a good address has a host");
        }
    }
    table.printBBSTable();
    Claim(table.categoryAt(table.countCategories()) == nullptr, "past the last there is none");
    return 0;
}
