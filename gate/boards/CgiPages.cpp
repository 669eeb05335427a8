#include "boards/CgiPages.h"

#include "convert/Encodings.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace gate {

namespace {

constexpr std::string_view kScript = "/bbs/read.cgi?";

std::string_view ValueOf(std::string_view query, std::string_view name) {
    while (!query.empty()) {
        const std::string_view pair = query.substr(0, query.find('&'));
        query.remove_prefix(std::min(query.size(), pair.size() + 1));
        if (pair.starts_with(name) && pair.substr(name.size()).starts_with('='))
            return pair.substr(name.size() + 1);
    }
    return {};
}

// name, mail, date, body, title
std::array<std::string_view, 5> SplitLine(std::string_view line) {
    std::array<std::string_view, 5> fields;
    for (std::string_view& field : fields) {
        field = line.substr(0, line.find("<>"));
        line.remove_prefix(std::min(line.size(), field.size() + 2));
    }
    return fields;
}

std::string MakePost(std::string_view line, long number) {
    static const std::string kName = ToCp932(" 名前：", Charset::kUtf8);
    static const std::string kDate = ToCp932(" 投稿日： ", Charset::kUtf8);
    const auto [name, mail, date, body, title] = SplitLine(line);
    std::string post = "<dt>" + std::to_string(number) + kName;
    if (!mail.empty())
        post += "<a href=\"mailto:" + std::string(mail) + "\">";
    post += "<b> " + std::string(name) + " </b>" + (mail.empty() ? "" : "</a>");
    post += kDate + std::string(date) + "<br><dd>";
    // The body of a dat stands between blanks; the page has one more behind it.
    post += body.starts_with(' ') ? std::string(body) : " " + std::string(body) + " ";
    return post + " <br><br>\n";
}

} // namespace

std::optional<CgiAddress> ParseCgiPath(const Settings& settings, const std::string& host,
                                       std::string_view path) {
    const size_t script = path.find(kScript);
    CgiAddress address;
    address.thread.family = settings.FindFamily(host);
    if (script == std::string_view::npos || address.thread.family == nullptr)
        return std::nullopt;
    const std::string_view query = path.substr(script + kScript.size());
    const std::string prefix(path.substr(0, script));
    address.thread.asked = LowerCase(host);
    address.thread.host = address.thread.family->PresentHost(host);
    address.thread.server = address.thread.host;
    address.thread.board =
        (prefix.empty() ? "" : prefix.substr(1) + "/") + std::string(ValueOf(query, "BBS"));
    address.thread.key = ValueOf(query, "KEY");
    const std::string_view start = ValueOf(query, "START");
    std::from_chars(start.data(), start.data() + start.size(), address.start);
    const bool isGood = IsBoard(address.thread.board) && IsKey(address.thread.key);
    return isGood ? std::optional(address) : std::nullopt;
}

std::string MakeCgiPage(std::string_view dat, long start) {
    std::string page = "<html><body>\n<dl>\n";
    for (long number = 1; !dat.empty(); number++) {
        const std::string_view line = dat.substr(0, dat.find('\n'));
        dat.remove_prefix(std::min(dat.size(), line.size() + 1));
        if (number == 1)
            page += "<b>" + std::string(SplitLine(line)[4]) + "</b>\n";
        if (number == 1 || number >= start)
            page += MakePost(line, number);
    }
    return page + "<table></table>\n</body></html>\n";
}

} // namespace gate
