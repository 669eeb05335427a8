#include "Posts.h"

#include "server/Text.h"

namespace {

constexpr unsigned kText = 0x000000;
constexpr unsigned kName = 0x228B22;
constexpr unsigned kMail = 0x2222EF;
constexpr unsigned kLink = 0x0000FF;

constexpr const char* kSentences[] = {
    "今日は朝から雨だったので、近所の図書館で一日本を読んで過ごしました。",
    "このあいだ教わった店に行ってみたけれど、定休日でした… 残念。",
    "それ、うちの Linux 2.4 でも動きましたよ。make のあとに一行足すだけです。",
    "ねこがひざの上で寝てしまい、一時間ほど動けませんでした (´∀｀)",
    "詳しい説明ありがとうございます。さっそく今晩ためしてみます！",
    "毎年この時期になると、駅前の並木がいっせいに色づいて本当にきれいです。",
    "写真は苦手ですが、カメラを持って歩くだけで景色が違って見えますね。",
};
constexpr int kSentenceCount = sizeof(kSentences) / sizeof(kSentences[0]);

// Where the next link of a text starts, and its length.
bool FindLink(std::string_view text, size_t* start, size_t* length) {
    *start = text.find(">>");
    const size_t url = text.find("http://");
    const bool isUrl = url < *start;
    *start = isUrl ? url : *start;
    if (*start == text.npos)
        return false;
    const char* const kInside = isUrl ? " \n" : "0123456789";
    const size_t end =
        isUrl ? text.find_first_of(kInside, *start) : text.find_first_not_of(kInside, *start + 2);
    *length = (end == text.npos ? text.size() : end) - *start;
    return true;
}

} // namespace

SamplePost MakePost(int number) {
    SamplePost post{"名無しさん", number % 3 == 0 ? "" : "sage", "02/01/24 00:40 ID:e5Tr", ""};
    if (number % 5 == 2)
        post.body = ">>" + std::to_string(number - 1) + "\n";
    for (int line = 0; line < 3 + number % 2; line++) {
        post.body += kSentences[(number * 3 + line) % kSentenceCount];
        post.body += "\n";
    }
    if (number % 10 == 7)
        post.body += "http://board.example/news/" + std::to_string(number) + ".html\n";
    post.body.pop_back();
    return post;
}

std::vector<SamplePost> MakePosts(int count) {
    std::vector<SamplePost> posts;
    for (int i = 1; i <= count; i++)
        posts.push_back(MakePost(i));
    return posts;
}

std::string BodyWithLinks(const SamplePost& post) {
    std::string text = post.body;
    for (size_t start = text.find(">>"); start != text.npos; start = text.find(">>", start)) {
        const size_t end = text.find('\n', start);
        const std::string number = text.substr(start + 2, end - start - 2);
        const std::string link = "<a href=\"../test/read.cgi/news/1011800000/" + number +
                                 "\" target=\"_blank\">>>" + number + "</a>";
        text.replace(start, number.size() + 2, link);
        start += link.size();
    }
    return text;
}

std::vector<ColoredText> ColoredPost(const SamplePost& post, int number) {
    std::vector<ColoredText> pieces = {
        {std::to_string(number) + " 名前：", kText},
        {post.name, kName},
        {" E-mail：", kText},
        {post.mail, kMail},
        {" 投稿日：" + post.date + "\n", kText},
    };
    const std::string body = post.body + "\n\n";
    std::string_view rest = body;
    size_t start = 0;
    size_t length = 0;
    while (FindLink(rest, &start, &length)) {
        pieces.push_back({std::string(rest.substr(0, start)), kText});
        pieces.push_back({std::string(rest.substr(start, length)), kLink});
        rest.remove_prefix(start + length);
    }
    pieces.push_back({std::string(rest), kText});
    return pieces;
}

std::string MakeDat(size_t bytes) {
    std::string dat;
    for (int i = 1; dat.size() < bytes; i++) {
        const SamplePost post = MakePost(i);
        dat += toCp932(post.name + "<>" + post.mail + "<>" + post.date + "<> ") +
               datBody(toCp932(post.body), "../test/read.cgi/news/1011800000/") + " <>\n";
    }
    return dat;
}
