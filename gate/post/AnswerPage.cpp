#include "convert/Words.h"
#include "post/Answer.h"
#include "post/PageWords.h"

namespace gate {

namespace {

// The program keeps 4,095 bytes of an answer as UTF-8, and leaves out a line that goes beyond.
constexpr size_t kLongestPage = 4095;
constexpr std::string_view kHead = "<html><head><title>ERROR</title></head><body>\n";
constexpr std::string_view kFoot = "</body></html>\n";
constexpr std::string_view kBreak = "<br>\n";

// The program takes tags out of the text but leaves references in, and looks for one word in it:
// nothing of the text may be any of these.
std::string Harmless(std::string_view text) {
    std::string harmless;
    for (const char byte : text) {
        switch (byte) {
        case '<': harmless += "＜"; break;
        case '>': harmless += "＞"; break;
        case '&': harmless += "＆"; break;
        case '=': harmless += "＝"; break;
        case '\t': harmless += ' '; break;
        default: harmless += byte;
        }
    }
    return harmless;
}

// With a mark for each character that cp932 lacks, and as the program will read it.
std::string AsTheProgramReads(std::string_view utf8) {
    constexpr std::string_view kMissing = "\x81\xAC"; // "〓"
    std::string cp932 = ToCp932(Harmless(utf8), Charset::kUtf8);
    for (size_t at = cp932.find("&#"); at != cp932.npos; at = cp932.find("&#", at))
        cp932.replace(at, cp932.find(';', at) - at + 1, kMissing);
    return ToUtf8(cp932, Charset::kCp932);
}

} // namespace

std::string MakePostedPage(std::string_view threadAddress) {
    const std::string address = Harmless(threadAddress);
    return ToCp932("<html><head><title>書きこみました。</title>\n"
                   "<meta http-equiv=refresh content=1;URL=" +
                       address + ">\n</head><body>\n書きこみが終わりました。<br>\n</body></html>\n",
                   Charset::kUtf8);
}

std::string MakeRefusalPage(std::string_view text) {
    const std::string readable = AsTheProgramReads(text);
    std::string_view rest = readable;
    std::string page(kHead);
    for (std::string_view line; TakeLine(&rest, &line);) {
        const size_t used = page.size() + kBreak.size() + kFoot.size();
        if (Trimmed(line).empty() || used >= kLongestPage)
            continue;
        page += CutUtf8(std::string(line), kLongestPage - used);
        page += kBreak;
    }
    if (page.size() == kHead.size())
        page += "サーバーは理由を書いていません。<br>\n";
    return ToCp932(page.append(kFoot), Charset::kUtf8);
}

} // namespace gate
