#include "convert/DatText.h"

#include "convert/Words.h"

#include <fnmatch.h>

#include <algorithm>
#include <charconv>

namespace gate {

namespace {

constexpr std::string_view kMailTo = "mailto:";
constexpr std::string_view kHiddenMail = "/cdn-cgi/l/email-protection";

std::string_view DigitsBehind(std::string_view text, std::string_view mark) {
    const size_t at = text.find(mark);
    if (at == text.npos)
        return "";
    text.remove_prefix(at + mark.size());
    return text.substr(0, text.find_first_not_of("0123456789"));
}

// Content networks hide what looks like mail: hex bytes, each but the first mixed with the first.
std::string UnhiddenMail(std::string_view hex) {
    std::string text;
    unsigned key = 0;
    for (size_t i = 0; i + 2 <= hex.size(); i += 2) {
        unsigned byte = 0;
        const char* end = hex.data() + i + 2;
        if (std::from_chars(hex.data() + i, end, byte, 16).ptr != end)
            return "";
        if (i == 0)
            key = byte;
        else
            text += static_cast<char>(byte ^ key);
    }
    return text;
}

std::string HiddenMailOf(HtmlNode* node) {
    const std::string own = AttributeOf(node, "data-cfemail");
    if (!own.empty())
        return UnhiddenMail(own);
    const std::string target = AttributeOf(node, "href");
    const size_t hex = target.find('#');
    return target.starts_with(kHiddenMail) && hex != target.npos
               ? UnhiddenMail(std::string_view(target).substr(hex + 1))
               : "";
}

// Blanks that only lay out the page's source.
bool IsLayout(std::string_view text) {
    return text.find('\n') != text.npos && Trimmed(text).empty();
}

bool IsReply(std::string_view text, std::string_view target) {
    return (text.starts_with(">") || text.starts_with("＞")) &&
           (target.find("read.cgi") != target.npos || target.starts_with("#"));
}

// The one form of link that the program takes for a reply.
std::string ReplyLink(std::string_view text, std::string_view target) {
    constexpr std::string_view kPlain =
        "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ/_-,";
    const size_t script = target.find("read.cgi");
    std::string_view place = script == target.npos ? "" : target.substr(script + 8);
    place = place.substr(0, place.find_first_not_of(kPlain));
    return "<a href=\"../test/read.cgi" + std::string(place) + "\" target=\"_blank\">" +
           Escaped(text) + "</a>";
}

std::string LinkText(HtmlNode* link) {
    const std::string text = TextOf(link);
    const std::string target = AttributeOf(link, "href");
    if (IsReply(text, target))
        return ReplyLink(text, target);
    const std::string mail = HiddenMailOf(link);
    return Escaped(mail.empty() ? text : mail);
}

// Only the boards' own small pictures are worth their address.
std::string PictureText(HtmlNode* picture, const PageMarks& marks) {
    const std::string attribute = AttributeOf(picture, "src");
    const size_t host = attribute.find("//");
    if (host == attribute.npos)
        return "";
    const std::string source = attribute.substr(host);
    const bool isKnown = std::ranges::any_of(marks.pictures, [&source](const std::string& form) {
        return fnmatch(form.c_str(), source.c_str(), FNM_NOESCAPE) == 0;
    });
    return isKnown ? "sssp:" + Escaped(source) : "";
}

// Collects the lines of a body.
class BodyWriter {
public:
    void Add(std::string_view text) { fLine += text; }

    // One blank on each side of a line only keeps it apart from the line break.
    void EndLine() {
        std::string_view line = fLine;
        if (line.starts_with(' '))
            line.remove_prefix(1);
        if (line.ends_with(' '))
            line.remove_suffix(1);
        fLines.emplace_back(line);
        fLine.clear();
    }

    std::string Finish() {
        EndLine();
        std::string body;
        for (const std::string& line : fLines)
            body += (body.empty() && &line == &fLines.front() ? "" : " <br> ") + line;
        return body;
    }

private:
    std::vector<std::string> fLines;
    std::string fLine;
};

bool IsBold(HtmlNode* node, HtmlNode* top) {
    for (HtmlNode* above = node; above != nullptr; above = ParentOf(above)) {
        if (NameOf(above) == "b" || NameOf(above) == "strong")
            return true;
        if (above == top)
            return false;
    }
    return false;
}

// An account's number stands in its link, to a page or a script.
std::string AccountOfLink(HtmlNode* link) {
    const std::string target = AttributeOf(link, "href");
    std::string_view number = DigitsBehind(target, "be(");
    if (number.empty())
        number = DigitsBehind(target, "user/");
    std::string_view rank;
    const std::string text = TextOf(link);
    rank = Trimmed(text);
    if (number.empty() || rank.empty())
        return "";
    rank.remove_prefix(rank.starts_with('?') ? 1 : 0);
    return "BE:" + std::string(number) + "-" + Escaped(rank);
}

void AppendWord(std::string_view word, std::string* text) {
    if (!word.empty() && !text->empty() && !text->ends_with(' '))
        *text += ' ';
    *text += word;
}

bool IsNextPost(HtmlNode* node, const std::vector<std::string>& posts) {
    return NameOf(node) == "dt" || NameOf(node) == "dd" || HasClass(node, posts);
}

} // namespace

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char byte : text) {
        if (byte != '\t' && byte != '\r' && byte != '\n')
            AppendEscaped(byte, &escaped);
    }
    return escaped;
}

std::string BodyOf(HtmlNode* message, const PageMarks& marks) {
    BodyWriter writer;
    for (HtmlNode* node = NextNode(message, message); node != nullptr;) {
        const std::string_view name = NameOf(node);
        const bool isLink = name == "a" || HasAttribute(node, "data-cfemail");
        if (name == "br")
            writer.EndLine();
        else if (isLink)
            writer.Add(LinkText(node));
        else if (name == "img")
            writer.Add(PictureText(node, marks));
        else if (!IsLayout(ContentOf(node)))
            writer.Add(Escaped(ContentOf(node)));
        const bool isPassed = isLink || IsHidden(node) || IsNextPost(node, marks.post);
        node = isPassed ? NodeAfter(node, message) : NextNode(node, message);
    }
    return writer.Finish();
}

std::string NameFieldOf(HtmlNode* name) {
    const bool hasBold = NameOf(name) == "b" || FindElement(name, "b") != nullptr;
    std::string field;
    for (HtmlNode* node = name; node != nullptr;) {
        const std::string hidden = HiddenMailOf(node);
        const std::string text = Escaped(hidden.empty() ? ContentOf(node) : hidden);
        const bool isApart = hasBold && !IsBold(node, name);
        if (!isApart)
            field += text;
        else if (!Trimmed(text).empty())
            field += "</b>" + text + "<b>";
        const bool isDone = IsHidden(node) || !hidden.empty();
        node = isDone ? NodeAfter(node, name) : NextNode(node, name);
    }
    return field;
}

std::string MailOf(HtmlNode* name) {
    HtmlNode* link = NameOf(name) == "a" ? name : FindElement(name, "a");
    if (link == nullptr)
        return "";
    const std::string target = AttributeOf(link, "href");
    if (target.starts_with(kMailTo))
        return Escaped(std::string_view(target).substr(kMailTo.size()));
    return Escaped(HiddenMailOf(link));
}

std::string AccountOf(HtmlNode* account) {
    if (NameOf(account) == "a")
        return AccountOfLink(account);
    HtmlNode* link = FindElement(account, "a");
    return link != nullptr ? AccountOfLink(link) : Escaped(Trimmed(TextOf(account)));
}

std::string DateOf(HtmlNode* date, const std::vector<std::string>& without) {
    std::string text;
    for (HtmlNode* node = date; node != nullptr;) {
        const bool isLink = NameOf(node) == "a";
        const bool isLeftOut = node != date && (IsHidden(node) || HasClass(node, without));
        if (isLink)
            AppendWord(AccountOfLink(node), &text);
        else if (!isLeftOut && !IsLayout(ContentOf(node)))
            text += Escaped(ContentOf(node));
        node = isLink || isLeftOut ? NodeAfter(node, date) : NextNode(node, date);
    }
    return std::string(Trimmed(text));
}

std::string CleanBody(std::string_view html) {
    const HtmlTree tree("<div>" + std::string(html) + "</div>");
    return tree.Root() == nullptr ? "" : BodyOf(tree.Root());
}

std::string CleanName(std::string_view html) {
    const HtmlTree tree("<div><b>" + std::string(html) + "</b></div>");
    return tree.Root() == nullptr ? "" : NameFieldOf(tree.Root());
}

} // namespace gate
