#include "server/Posting.h"

#include <algorithm>
#include <map>

#include "server/Pages.h"
#include "server/Text.h"

namespace {

constexpr size_t kMaxBody = 4096;
constexpr size_t kMaxName = 64;
constexpr int kMaxLines = 60;
constexpr int kMaxPosts = 1000;

// The two families of servers name the same fields in two ways.
struct FieldNames {
    const char* name;
    const char* mail;
    const char* message;
    const char* board;
    const char* key;
};
constexpr FieldNames kBbsNames = {"FROM", "mail", "MESSAGE", "bbs", "key"};
constexpr FieldNames kWriteNames = {"NAME", "MAIL", "MESSAGE", "BBS", "KEY"};

std::string withoutLineEnds(std::string text) {
    std::erase_if(text, [](char byte) { return byte == '\n' || byte == '\r' || byte == '\0'; });
    return text;
}

bool isBlank(const std::string& text) {
    return text.find_first_not_of(" \r\n\t") == std::string::npos;
}

// What is wrong with a post, "" when it is good. UTF-8.
std::string complaint(const Post& post, const Thread* thread, const std::string& referer) {
    if (!referer.starts_with("http://"))
        return "リンク元が送られてきません。";
    if (!thread)
        return "そんな板やスレッドはありません。";
    if (isBlank(post.body))
        return "本文がありません！";
    if (post.body.size() > kMaxBody ||
        std::count(post.body.begin(), post.body.end(), '\n') >= kMaxLines)
        return "本文が長すぎます！";
    if (post.name.size() > kMaxName || post.mail.size() > kMaxName)
        return "名前かメール欄が長すぎます！";
    if (thread->posts >= kMaxPosts)
        return "このスレッドは" + std::to_string(kMaxPosts) +
               "を超えました。<br>もう書けないです。";
    return {};
}

} // namespace

std::string takePost(BoardSet& boards, const PostRequest& request, time_t now) {
    std::map<std::string, std::string> form = parseForm(request.form);
    const FieldNames& names = request.kind == BoardKind::kDat ? kBbsNames : kWriteNames;
    Post post = {withoutLineEnds(form[names.name]), withoutLineEnds(form[names.mail]),
                 toCp932(postDate(now)), form[names.message]};
    std::string folder = request.prefix.empty() ? "" : request.prefix + "/";
    Board* board = boards.Find(folder + form[names.board]);
    if (!board && request.kind == BoardKind::kCgi)
        board = boards.Find("bbs/" + form[names.board]);
    Thread* thread = board ? board->Find(form[names.key]) : nullptr;
    std::string wrong = complaint(post, thread, request.referer);
    if (!wrong.empty())
        return errorPage(wrong);
    post.body.erase(post.body.find_last_not_of(" \r\n\t") + 1);
    board->AddPost(*thread, post, now);
    return postedPage("/" + board->Folder() + "/");
}

std::string styledPage(std::string page, PostStyle style) {
    const std::string kTitleEnd = "</title>";
    size_t title = page.find("<title>");
    size_t end = page.find(kTitleEnd);
    if (style == PostStyle::kUntitled && end != std::string::npos)
        page.erase(title, end + kTitleEnd.size() - title);
    if (style == PostStyle::kOverlong)
        page += std::string(20000, 'x') + "\n";
    return page;
}
