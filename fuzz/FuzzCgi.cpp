// A read.cgi page, UTF-8, and each of its posts.
#include "Fuzz.h"

#include "net/CgiPage.h"

#include <String.h>

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string text = TextOf(data, size);
    BString block(text.c_str());
    Claim(TagToDat(&block) == block.Length(), "the length is the text's");
    CgiPage page;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size() - 1) + 1;
        if (page.TakeLine(text.substr(start, end - start))) {
            const std::string line = page.TakeDatLine();
            Claim(line.size() <= 8191, "the cache reads the line back");
            Claim(line.find('\n') == line.size() - 1, "a post is one line of the cache");
        }
        start = end;
    }
    return 0;
}
