// A line of a dat file: as the server sends it, and as the cache holds it.
#include "Fuzz.h"

#include "net/lines.h"
#include "text/html.h"

namespace {

void Parse(const std::string& line, bool convert) {
    _ArticleOut out = {};
    if (parseArticle(line.c_str(), &out, convert) == 0)
        Claim(out.message && out.name && out.date, "a post has a text, a name and a date");
    ReleaseArticle(&out);
    Claim(!out.message && !out.title && !out.name && !out.mail && !out.date, "all is released");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    std::string line = TextOf(data, size);
    Parse(line, false);
    line.resize(size + 1);
    line.resize(TruncateNullChar(line.data(), static_cast<uint32>(size)));
    Parse(line, true);
    return 0;
}
