// A dat on its way through the gate, in pieces and in ranges.
#include "Fuzz.h"

#include "convert/SameLength.h"

namespace {

std::string Rewritten(std::string_view before, std::string_view first, std::string_view second) {
    gate::SameLengthRewriter rewriter(before);
    std::string output = rewriter.Feed(first);
    output += rewriter.Feed(second);
    return output + rewriter.Finish();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size == 0)
        return 0;
    const std::string file = TextOf(data + 1, size - 1);
    const std::string_view text = file;
    const std::string whole = Rewritten("", text, "");
    Claim(whole.size() == text.size(), "no byte moves");
    const size_t cut = text.empty() ? 0 : data[0] % text.size();
    Claim(Rewritten("", text.substr(0, cut), text.substr(cut)) == whole, "pieces make the whole");
    const size_t line = text.rfind('\n', cut);
    const size_t start = line == text.npos ? 0 : line + 1;
    Claim(Rewritten("", text.substr(start), "") == whole.substr(start), "a line stands alone");
    return 0;
}
