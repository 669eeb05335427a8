// A thread's HTML page, of a server or an archive.
#include "Fuzz.h"
#include "FuzzLines.h"

#include "convert/ReadCgiPage.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const auto page = gate::ParseReadPage(TextOf(data, size));
    if (!page)
        return 0;
    Claim(!page->posts.empty(), "a page has posts");
    ClaimLines(page->posts);
    const auto last = page->posts.back().number;
    Claim(!page->isWhole || last == static_cast<long>(page->posts.size()),
          "a whole page has no hole");
    return 0;
}
