#include "server/Pages.h"

#include <array>
#include <string_view>

#include "server/Text.h"

namespace {

const char* const kHead = "<html>\n<head>\n<meta http-equiv=\"Content-Type\" "
                          "content=\"text/html; charset=Shift_JIS\">\n";

std::string pageHead(const std::string& title) {
    return kHead + ("<title>" + title + "</title>\n") + "</head>\n<body bgcolor=\"#efefef\">\n";
}

// The five fields of a dat line.
std::array<std::string, 5> fieldsOf(std::string_view line) {
    std::array<std::string, 5> fields;
    for (std::string& field : fields) {
        size_t end = line.find("<>");
        field = line.substr(0, end);
        line.remove_prefix(end == std::string_view::npos ? line.size() : end + 2);
    }
    return fields;
}

// A body that begins with a blank stands one blank further in, so that it is not lost.
std::string messagePart(std::string_view message) {
    if (message.starts_with(' '))
        message.remove_prefix(1);
    if (message.ends_with(' '))
        message.remove_suffix(1);
    bool beginsWithBlank = message.starts_with(' ');
    return std::string("<dd>") + (beginsWithBlank ? " " : "") + std::string(message) +
           (beginsWithBlank ? "  " : " ") + "<br><br>\n";
}

std::string postPart(int number, std::string_view line) {
    auto [name, mail, date, message, title] = fieldsOf(line);
    static const std::string kName = toCp932(" 名前：");
    static const std::string kPosted = toCp932(" 投稿日： ");
    std::string bold = "<b> " + name + " </b>";
    std::string link = mail.empty() ? "<font color=forestgreen>" + bold + "</font>"
                                    : "<a href=\"mailto:" + mail + "\">" + bold + "</a>";
    return "<dt>" + std::to_string(number) + kName + link + kPosted + date + "<br>" +
           messagePart(message);
}

} // namespace

std::string menuPage(const BoardSet& boards) {
    std::string page = pageHead(toCp932("板一覧"));
    for (const Category& category : boards.Categories()) {
        page += "<BR><BR><B>" + category.title + "</B><BR>\n";
        for (const Board& board : category.boards) {
            page += "<A HREF=http://" + category.host + "/" + board.Folder() + "/>" +
                    board.Title() + "</A>";
            // The line break is what says that another board of the category follows.
            page += &board == &category.boards.back() ? "\n" : "<br>\n";
        }
    }
    return page + "</body>\n</html>\n";
}

std::string boardPage(const Board& board) {
    std::string page = pageHead(board.Title()) + "<h1>" + board.Title() + "</h1>\n<ol>\n";
    for (const Thread& thread : board.Threads())
        page += "<li><a href=\"" + board.ThreadUrl(thread.key) + "\">" + thread.title + "</a> (" +
                std::to_string(thread.posts) + ")\n";
    return page + "</ol>\n</body>\n</html>\n";
}

std::string threadPage(const Thread& thread, int start) {
    std::string page =
        pageHead(thread.title) + "<dl>\n<font size=+1 color=red>" + thread.title + "</font>\n";
    int number = 1;
    for (size_t begin = 0; begin < thread.dat.size(); number++) {
        size_t end = thread.dat.find('\n', begin);
        if (number == 1 || number >= start)
            page += postPart(number, std::string_view(thread.dat).substr(begin, end - begin));
        begin = end + 1;
    }
    return page + "<table><tr><td>" + std::to_string(thread.posts) +
           "</td></tr></table>\n</dl>\n</body>\n</html>\n";
}

std::string postedPage(const std::string& boardUrl) {
    return kHead + ("<title>" + toCp932("書きこみました。") + "</title>\n") +
           "<META content=1;URL=" + boardUrl + " http-equiv=refresh>\n</head>\n<body>" +
           toCp932("書きこみが終わりました。") + "<br><br>\n</body>\n</html>\n";
}

std::string errorPage(const std::string& reason) {
    std::string text = toCp932("ＥＲＲＯＲ：" + reason);
    return pageHead(toCp932("ＥＲＲＯＲ！")) + "<b>" + text + "</b><br><br>\n</body>\n</html>\n";
}
