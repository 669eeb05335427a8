#include "server/Text.h"
#include "today/Families.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>

namespace today {

namespace {

constexpr const char* kWrite = "書き込む";
constexpr const char* kAccept = "上記全てを承諾して書き込む";
constexpr const char* kFeature = "confirmed:";
constexpr int kTicketDays = 14, kAcornDays = 5;
constexpr time_t kDay = 24 * 60 * 60;

std::string randomHex(size_t digits) {
    static std::random_device device;
    std::string text;
    while (text.size() < digits)
        text += "0123456789abcdef"[device() % 16];
    return text;
}

// In their order, decoded.
Fields fieldsOf(const std::string& body) {
    Fields fields;
    for (size_t begin = 0; begin < body.size();) {
        const size_t end = std::min(body.find('&', begin), body.size());
        const auto one = parseForm(body.substr(begin, end - begin));
        if (!one.empty())
            fields.emplace_back(*one.begin());
        begin = end + 1;
    }
    return fields;
}

std::string find(const Fields& fields, const char* name) {
    for (const auto& [key, value] : fields) {
        if (key == name)
            return value;
    }
    return {};
}

std::string cookie(const std::string& header, const std::string& name) {
    const std::string text = "; " + header;
    const size_t place = text.find("; " + name + "=");
    if (place == text.npos)
        return {};
    const size_t start = place + name.size() + 3;
    return text.substr(start, text.find(';', start) - start);
}

Answer refusal(const std::string& code, const std::string& text) {
    Answer answer = page(200, errorPage(text));
    if (!code.empty())
        answer.headers.emplace_back("X-Chx-Error", code);
    return answer;
}

std::string escapeValue(const std::string& text) {
    std::string escaped;
    for (const char c : text)
        escaped += c == '&'    ? "&amp;"
                   : c == '"'  ? "&quot;"
                   : c == '<'  ? "&lt;"
                   : c == '>'  ? "&gt;"
                   : c == '\n' ? "&#10;"
                   : c == '\r' ? "&#13;"
                               : std::string(1, c);
    return escaped;
}

// One line, as the servers send it; what is accepted must be what stands here.
Answer confirmation(World& world, const Fields& post) {
    const std::string feature = kFeature + randomHex(40);
    Fields hidden;
    for (const char* name : {"FROM", "mail", "MESSAGE", "bbs", "time", "key", "oekaki_thread1"})
        hidden.emplace_back(name, find(post, name));
    hidden.emplace_back("feature", feature);
    std::string text =
        toCp932("<html><head><title>■ 書き込み確認 ■</title></head><body>"
                "<!-- _X:cookie --><b>書き込み確認</b><br>"
                "投稿者は、投稿に関して発生する責任が全て投稿者に帰すことを承諾します。"
                "<br><form method=POST action=\"../test/bbs.cgi?guid=ON\">");
    for (const auto& [name, value] : hidden)
        text += "<input type=hidden name=" + name +
                (value.empty() ? " value" : " value=\"" + escapeValue(value) + "\"") + ">";
    text += toCp932(std::string("<input type=submit name=submit value=\"") + kAccept +
                    "\"></form></body></html>");
    world.confirmations[feature] = hidden;
    Answer answer = page(200, text);
    answer.headers.emplace_back("X-Chx-Error", "0000 Confirmation");
    return answer;
}

std::string newDate(time_t now, const std::string& who) {
    char seconds[16];
    snprintf(seconds, sizeof(seconds), ":%02d.00", static_cast<int>(now % 60));
    const size_t number = std::hash<std::string>()(who);
    char identity[16];
    snprintf(identity, sizeof(identity), " ID:%08zx", number & 0xFFFFFFFF);
    return toCp932(postDate(now)) + seconds + identity;
}

struct Written {
    std::string board, key, name, mail, message, host;
};

bool write(World& world, const Written& post, const std::string& who, time_t now) {
    Board* board = world.boards.Find(post.board);
    Thread* thread = board != nullptr ? board->Find(post.key) : nullptr;
    if (thread == nullptr || !world.IsThere(post.key))
        return false;
    std::string message = post.message;
    std::erase(message, '\r');
    board->AddPost(*thread, {post.name, post.mail, newDate(now, who), message}, now);
    return true;
}

Answer success(const Thread& thread, const Written& post, const char* refresh) {
    Answer answer =
        page(200, toCp932("<html><head><title>書きこみました。</title>"
                          "<meta content=\"1;URL=https://") +
                      post.host + "/" + post.board + "/\" http-equiv=\"" + refresh +
                      toCp932("\"></head><body>書きこみが終わりました。</body></html>\n"));
    answer.headers.emplace_back("X-Resnum", std::to_string(thread.posts));
    return answer;
}

Answer writeOr(World& world, const Written& post, const std::string& who, const char* refresh,
               time_t now) {
    if (std::all_of(post.message.begin(), post.message.end(),
                    [](char c) { return c == ' ' || c == '\r' || c == '\n'; }))
        return refusal("", "本文がありません！");
    if (!write(world, post, who, now))
        return refusal("", "該当するスレッドがありません。");
    return success(*world.Find(post.board, post.key), post, refresh);
}

Written bbsPost(const Question& question, const Fields& fields) {
    Written post = {find(fields, "bbs"),  find(fields, "key"),     find(fields, "FROM"),
                    find(fields, "mail"), find(fields, "MESSAGE"), question.host};
    if (question.type.find("UTF-8") != question.type.npos) {
        for (std::string* text : {&post.name, &post.mail, &post.message})
            *text = toCp932(*text);
    }
    return post;
}

void giveCookies(World& world, time_t now, Answer* answer) {
    const std::string ticket = randomHex(25);
    world.tickets.good.insert(ticket);
    const std::string rest = "; path=/; domain=.today.example; expires=";
    answer->headers.emplace_back("Set-Cookie", "MonaTicket=" + ticket + rest +
                                                   httpDate(now + kTicketDays * kDay));
    answer->headers.emplace_back("Set-Cookie", "acorn=" + randomHex(400) + rest +
                                                   httpDate(now + kAcornDays * kDay));
}

// What the page's button sends: its fields as they are, in their order, and the button.
Answer accept(World& world, const Question& question, const Fields& fields, time_t now) {
    const auto waiting = world.confirmations.find(find(fields, "feature"));
    if (waiting == world.confirmations.end())
        return refusal("E3100", "確認画面が古くなりました。");
    Fields expected = waiting->second;
    expected.emplace_back("submit", toCp932(kAccept));
    if (fields != expected || question.referer != "https://" + question.host + "/test/bbs.cgi" ||
        question.query != "guid=ON")
        return refusal("E4000", "送信された内容が確認画面と違います。");
    world.confirmations.erase(waiting);
    Answer answer = writeOr(world, bbsPost(question, fields), question.userAgent, "refresh", now);
    giveCookies(world, now, &answer);
    return answer;
}

bool namesProduct(const std::string& agent) {
    const size_t slash = agent.find('/');
    return slash != agent.npos && slash > 0 && slash + 1 < agent.size() &&
           isdigit(static_cast<unsigned char>(agent[slash + 1]));
}

Answer takeBbsPost(World& world, const Question& question, time_t now) {
    const Fields fields = fieldsOf(question.body);
    if (!namesProduct(question.userAgent))
        return refusal("", "不正な UserAgent です。");
    if (!question.referer.starts_with("https://" + question.host + "/"))
        return refusal("", "送信された内容が破損しています。");
    if (atoll(find(fields, "time").c_str()) > now)
        return refusal("", "時計が合っていません。");
    if (!find(fields, "feature").empty())
        return accept(world, question, fields, now);
    if (find(fields, "submit") != toCp932(kWrite) && find(fields, "submit") != kWrite)
        return refusal("", "送信された内容が破損しています。");
    const std::string ticket = cookie(question.cookie, "MonaTicket");
    if (world.tickets.overdue.contains(ticket))
        return refusal("E3000", "クッキーの期限が切れています。[Broken MonaTicket]");
    if (!world.tickets.good.contains(ticket))
        return confirmation(world, fields);
    return writeOr(world, bbsPost(question, fields), question.userAgent, "refresh", now);
}

// DIR BBS KEY TIME NAME MAIL MESSAGE, in the family's own charset.
Answer takeWritePost(World& world, const Question& question, const char* charset, time_t now) {
    auto fields = parseForm(question.body);
    for (auto& [name, value] : fields)
        value = convert(value, charset, "CP932");
    if (!question.referer.starts_with("https://" + question.host + "/"))
        return refusal("", "リンク元が正しくありません。");
    const std::string board = (fields["DIR"].empty() ? "" : fields["DIR"] + "/") + fields["BBS"];
    Answer answer = writeOr(
        world,
        {board, fields["KEY"], fields["NAME"], fields["MAIL"], fields["MESSAGE"], question.host},
        question.userAgent, "Refresh", now);
    answer.body = convert(answer.body, "CP932", charset);
    answer.type = std::string("text/html; charset=") +
                  (charset == std::string("CP932") ? "Shift_JIS" : "EUC-JP");
    return answer;
}

} // namespace

Answer takePost(World& world, const Question& question, time_t now) {
    if (!world.errorCode.empty())
        return refusal(world.errorCode, world.errorText);
    switch (kindOfHost(question.host)) {
    case Kind::kDat:
        if (question.path == "/test/bbs.cgi")
            return takeBbsPost(world, question, now);
        break;
    case Kind::kRoom:
        if (question.path.starts_with("/bbs/write.cgi/"))
            return takeWritePost(world, question, "EUC-JP-MS", now);
        break;
    case Kind::kTown:
        if (question.path == "/bbs/write.cgi")
            return takeWritePost(world, question, "CP932", now);
        break;
    }
    return page(404, errorPage("ありません。"));
}

} // namespace today
