// Threads and lists of the families that have interfaces of their own, and the search for a post in
// any family's thread.
#include "FuzzLines.h"

#include "convert/OfflawLines.h"
#include "convert/RawmodeLines.h"
#include "convert/SubjectList.h"
#include "convert/Words.h"
#include "post/ThreadSearch.h"

namespace {

void ReadList(const std::string& text, gate::Charset charset) {
    const std::string list = gate::MakeSubjectList(text, charset);
    std::string_view rest = list;
    for (std::string_view line; gate::TakeLine(&rest, &line);) {
        _SubjectOut subject;
        Claim(parseSubject(std::string(line).c_str(), &subject) == 0, "the program reads a thread");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string text = TextOf(data, size);
    ClaimLines(gate::ParseRawmode(text));
    ClaimLines(gate::ParseOfflaw(text).posts);
    for (const auto charset : {gate::Charset::kCp932, gate::Charset::kEucJp, gate::Charset::kUtf8})
        ReadList(text, charset);
    for (const auto kind :
         {gate::FamilyKind::kDat, gate::FamilyKind::kRawmode, gate::FamilyKind::kOfflaw})
        gate::HoldsPost(text, kind, {"", "", "text", "board", "1712000000"}, 1712000000);
    return 0;
}
