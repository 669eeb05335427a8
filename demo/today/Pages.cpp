#include "server/Text.h"
#include "today/Families.h"

#include <iconv.h>

namespace today {

namespace {

// The date's last part, "ID:x", stands by itself in today's pages.
std::string cutIdentity(std::string* date) {
    const size_t mark = date->find(" ID:");
    std::string identity = mark == date->npos ? "" : date->substr(mark + 1);
    date->resize(std::min(mark, date->size()));
    return identity;
}

std::string nameOf(const Line& line) {
    return line.mail.empty()
               ? line.name
               : "<a rel=\"nofollow\" href=\"mailto:" + line.mail + "\">" + line.name + "</a>";
}

std::string article(Line line, int number) {
    const std::string identity = cutIdentity(&line.date);
    const std::string no = std::to_string(number);
    return "<article id=\"" + no + "\" data-date=\"NG\" data-userid=\"" + identity +
           "\" data-id=\"" + no +
           "\" class=\"clear post\"><details open class=\"post-header\"><summary><span "
           "class=\"postid\">" +
           no + "</span><span class=\"postusername\"><b>" + nameOf(line) +
           "</b></span></summary><span class=\"date\">" + line.date +
           "</span><span class=\"uid\">" + identity +
           "</span></details><section class=\"post-content\">" + line.body +
           "</section></article>\n";
}

} // namespace

std::string convert(const std::string& text, const char* from, const char* to) {
    const iconv_t way = iconv_open((std::string(to) + "//TRANSLIT").c_str(), from);
    if (way == reinterpret_cast<iconv_t>(-1))
        return {};
    std::string result(text.size() * 4 + 16, '\0');
    char* in = const_cast<char*>(text.data());
    char* out = result.data();
    size_t left = text.size(), room = result.size();
    iconv(way, &in, &left, &out, &room);
    iconv_close(way);
    result.resize(result.size() - room);
    return result;
}

Answer page(int status, std::string body) {
    Answer answer;
    answer.status = status;
    answer.body = std::move(body);
    return answer;
}

std::string errorPage(const std::string& text) {
    return toCp932("<html><head><title>ERROR!!</title></head>\n<body><font size=+1 "
                   "color=#FF0000><b>ERROR: " +
                   text + "</b></font></body></html>\n");
}

std::string threadPage(const Thread& thread) {
    std::string text = "<!DOCTYPE html><html lang=\"ja\"><head><title>" + thread.title +
                       "</title></head><body><div id=\"threadtitle\">" + thread.title + "</div>\n";
    int number = 0;
    for (const Line& line : linesOf(thread.dat))
        text += article(line, ++number);
    return text + "<footer>read.cgi ver 07.4.1</footer></body></html>\n";
}

std::string oldThreadPage(const Thread& thread) {
    static const std::string kColon = toCp932(" ：");
    std::string text = "<html><head><title>" + thread.title + "</title></head><body>\n<h1>" +
                       thread.title + "</h1><dl class=\"thread\">\n";
    int number = 0;
    for (const Line& line : linesOf(thread.dat))
        text +=
            "<dt>" + std::to_string(++number) + kColon +
            (line.mail.empty() ? "<font color=green>" : "<a href=\"mailto:" + line.mail + "\">") +
            "<b>" + line.name + "</b>" + (line.mail.empty() ? "</font>" : "</a>") +
            kColon.substr(1) + line.date + "<dd>" + line.body + "<br><br>\n";
    return text + "</dl><hr>read.cgi ver 05.04.00 2008/02/01</body></html>\n";
}

} // namespace today
