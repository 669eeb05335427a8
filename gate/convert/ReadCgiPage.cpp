#include "convert/ReadCgiPage.h"

#include "convert/DatText.h"
#include "convert/Encodings.h"
#include "convert/Fields.h"
#include "convert/HtmlTree.h"
#include "convert/Words.h"

#include <algorithm>
#include <array>

namespace gate {

namespace {

constexpr std::string_view kDigits = "0123456789";

std::string Coded(std::string_view utf8) {
    return ToCp932(utf8, Charset::kUtf8);
}

// The first number in a text; 0 without one.
long FirstNumber(std::string_view text) {
    const size_t start = text.find_first_of(kDigits);
    if (start == text.npos)
        return 0;
    text.remove_prefix(start);
    return NumberOf(text.substr(0, text.find_first_not_of(kDigits)), kMostPosts).value_or(0);
}

std::string_view WithoutPrefix(std::string_view text, std::string_view prefix) {
    if (text.starts_with(prefix))
        text.remove_prefix(prefix.size());
    return text;
}

void AppendWord(std::string_view word, std::string* text) {
    if (!word.empty())
        *text += (text->empty() ? "" : " ") + std::string(word);
}

std::string TitleOf(HtmlNode* root, const PageMarks& marks) {
    HtmlNode* title = FindClass(root, marks.title);
    for (HtmlNode* node = root; title == nullptr && node != nullptr; node = NextNode(node, root)) {
        const std::string identity = AttributeOf(node, "id");
        if (!identity.empty() && std::ranges::find(marks.title, identity) != marks.title.end())
            title = node;
    }
    for (const std::string_view name : {"h1", "title"}) {
        if (title == nullptr)
            title = FindElement(root, name);
    }
    return title == nullptr ? "" : Coded(Escaped(Trimmed(TextOf(title))));
}

// Pages by classes: whatever the elements are, and however deep they stand.

long NumberOfPost(HtmlNode* post, const PageMarks& marks) {
    HtmlNode* element = FindClass(post, marks.number);
    long number = element == nullptr ? 0 : FirstNumber(TextOf(element));
    for (const char* attribute : {"data-id", "id"}) {
        if (number == 0)
            number = FirstNumber(AttributeOf(post, attribute));
    }
    return number;
}

// The date, the writer's sign and the writer's account, each where the page has it.
std::string DateOfPost(HtmlNode* post, const PageMarks& marks) {
    std::vector<std::string> others = marks.user;
    others.insert(others.end(), marks.be.begin(), marks.be.end());
    HtmlNode* date = FindClass(post, marks.date);
    HtmlNode* user = FindClass(post, marks.user);
    HtmlNode* account = FindClass(post, marks.be);
    std::string text = date == nullptr ? "" : DateOf(date, others);
    AppendWord(user == nullptr ? "" : DateOf(user, marks.be), &text);
    AppendWord(account == nullptr ? "" : AccountOf(account), &text);
    return Coded(text);
}

PostLine PostByClasses(HtmlNode* element, HtmlNode* message, const PageMarks& marks) {
    PostLine post;
    post.number = NumberOfPost(element, marks);
    if (HtmlNode* name = FindClass(element, marks.name)) {
        post.name = Coded(Trimmed(NameFieldOf(name)));
        post.mail = Coded(MailOf(name));
    }
    post.date = DateOfPost(element, marks);
    post.body = Coded(BodyOf(message, marks));
    return post;
}

// Pages of <dt> and <dd>: "N ：NAME：DATE" in the one, the text in the other.

bool IsNameElement(HtmlNode* node) {
    constexpr std::array<std::string_view, 3> kNames = {"a", "font", "b"};
    return std::ranges::find(kNames, NameOf(node)) != kNames.end() &&
           !Trimmed(TextOf(node)).empty();
}

// The element behind a heading; blanks and broken ends may stand between.
HtmlNode* TextBehind(HtmlNode* heading) {
    HtmlNode* node = NextSibling(heading);
    while (node != nullptr && NameOf(node) != "dd" && NameOf(node) != "dt")
        node = NextSibling(node);
    return node != nullptr && NameOf(node) == "dd" ? node : nullptr;
}

std::string DateBehind(HtmlNode* name) {
    std::string text;
    for (HtmlNode* node = NextSibling(name); node != nullptr; node = NextSibling(node)) {
        const std::string part = DateOf(node);
        if (NameOf(node) == "a")
            AppendWord(part, &text);
        else
            text += part;
    }
    std::string_view date = Trimmed(text);
    for (const std::string_view prefix : {"：", ":", "投稿日：", "投稿日:"})
        date = Trimmed(WithoutPrefix(date, prefix));
    return std::string(date);
}

// These pages end a text with two line breaks of their own.
std::string WithoutLastBreaks(std::string body) {
    constexpr std::string_view kBreak = " <br> ";
    for (int i = 0; i < 2 && body.ends_with(kBreak); i++)
        body.resize(body.size() - kBreak.size());
    return body;
}

PostLine PostByHeading(HtmlNode* heading, HtmlNode* text, const PageMarks& marks) {
    PostLine post;
    HtmlNode* node = FirstChild(heading);
    std::string before;
    while (node != nullptr && !IsNameElement(node)) {
        before += TextOf(node);
        node = NextSibling(node);
    }
    post.number = FirstNumber(before);
    post.body = WithoutLastBreaks(Coded(BodyOf(text, marks)));
    if (node == nullptr)
        return post;
    post.name = Coded(Trimmed(NameFieldOf(node)));
    post.mail = Coded(MailOf(node));
    post.date = Coded(DateBehind(node));
    return post;
}

// Where only the text is known by its class, the rest stands in a heading.
PostLine PostOf(HtmlNode* element, HtmlNode* message, const PageMarks& marks) {
    HtmlNode* heading = FindElement(element, "dt");
    return heading != nullptr && FindClass(element, marks.name) == nullptr
               ? PostByHeading(heading, message, marks)
               : PostByClasses(element, message, marks);
}

std::vector<PostLine> PostsByClasses(HtmlNode* root, const PageMarks& marks) {
    std::vector<PostLine> posts;
    for (HtmlNode* node = root; node != nullptr; node = NextNode(node, root)) {
        HtmlNode* message = HasClass(node, marks.post) ? FindClass(node, marks.message) : nullptr;
        if (message != nullptr)
            posts.push_back(PostOf(node, message, marks));
    }
    return posts;
}

std::vector<PostLine> PostsByHeadings(HtmlNode* root, const PageMarks& marks) {
    std::vector<PostLine> posts;
    for (HtmlNode* node = root; node != nullptr; node = NextNode(node, root)) {
        HtmlNode* text = NameOf(node) == "dt" ? TextBehind(node) : nullptr;
        if (text != nullptr)
            posts.push_back(PostByHeading(node, text, marks));
    }
    return posts;
}

// A page may name a post twice, as the first beside the last fifty.
void Sort(std::vector<PostLine>* posts) {
    std::erase_if(*posts, [](const PostLine& post) { return post.number == 0; });
    std::ranges::stable_sort(*posts, {}, &PostLine::number);
    const auto isSame = [](const PostLine& a, const PostLine& b) { return a.number == b.number; };
    posts->erase(std::unique(posts->begin(), posts->end(), isSame), posts->end());
}

bool HasEnd(const std::string& utf8, const PageMarks& marks) {
    return Lowered(utf8).find(Lowered(marks.end)) != std::string::npos;
}

int VersionOf(std::string_view utf8) {
    constexpr std::string_view kVersion = "read.cgi ver";
    const size_t at = utf8.rfind(kVersion);
    if (at == utf8.npos)
        return 0;
    const std::string_view number = Trimmed(utf8.substr(at + kVersion.size(), 8));
    return static_cast<int>(FirstNumber(number.substr(0, number.find_first_not_of("0123456789"))));
}

} // namespace

std::optional<ReadPage> ParseReadPage(std::string_view bytes, const PageMarks& marks) {
    const std::string utf8 = ToUtf8(bytes, GuessCharset(bytes));
    const HtmlTree tree(utf8);
    if (tree.Root() == nullptr)
        return std::nullopt;
    ReadPage page;
    page.posts = PostsByClasses(tree.Root(), marks);
    if (page.posts.empty())
        page.posts = PostsByHeadings(tree.Root(), marks);
    Sort(&page.posts);
    if (page.posts.empty())
        return std::nullopt;
    page.title = TitleOf(tree.Root(), marks);
    page.version = VersionOf(utf8);
    if (page.posts.front().number == 1)
        page.posts.front().title = page.title;
    page.isWhole = tree.IsWhole() && HasEnd(utf8, marks) &&
                   page.posts.back().number == static_cast<long>(page.posts.size());
    return page;
}

} // namespace gate
