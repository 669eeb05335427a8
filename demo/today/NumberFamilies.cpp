#include "today/Families.h"

#include <climits>
#include <cstdlib>
#include <string_view>

// The families whose threads are asked for by the numbers of their posts.

namespace today {

namespace {

constexpr const char* kEuc = "EUC-JP-MS";

// "KEY.cgi,TITLE(N)"; the first line stands once more at the end.
std::string listOf(const World& world, const Board& board) {
    std::string first, list;
    for (const Thread& thread : board.Threads()) {
        if (!world.IsThere(thread.key))
            continue;
        const std::string line =
            thread.key + ".cgi," + thread.title + "(" + std::to_string(thread.posts) + ")\n";
        if (first.empty())
            first = line;
        list += line;
    }
    return list + first;
}

Answer text(std::string body, const char* type) {
    Answer answer = page(200, std::move(body));
    answer.type = type;
    return answer;
}

// The posts that "", "a-b", "a-", "a" or "lN" names, with a trailing "n" without the first.
struct Wanted {
    long first = 1, last = LONG_MAX;
    bool hasFirstPost = true;
};

Wanted parseWanted(std::string words, long count) {
    Wanted wanted;
    if (words.ends_with('n')) {
        wanted.hasFirstPost = false;
        words.pop_back();
    }
    const size_t dash = words.find('-');
    if (words.starts_with('l')) {
        wanted.first = std::max(1L, count - atol(words.c_str() + 1) + 1);
    } else if (!words.empty()) {
        wanted.first = std::max(1L, atol(words.c_str()));
        wanted.last = dash == words.npos         ? wanted.first
                      : dash + 1 == words.size() ? LONG_MAX
                                                 : atol(words.c_str() + dash + 1);
    }
    return wanted;
}

bool isWanted(const Wanted& wanted, long number) {
    return (number >= wanted.first && number <= wanted.last) ||
           (number == 1 && wanted.hasFirstPost);
}

// "BOARD/KEY/WORDS"; a board may be of two folders.
struct Place {
    std::string board, key, words;
};

Place parsePlace(const std::string& path, std::string_view start) {
    const std::string rest = path.substr(start.size());
    const size_t last = rest.rfind('/');
    const size_t before = last == rest.npos || last == 0 ? rest.npos : rest.rfind('/', last - 1);
    if (before == rest.npos)
        return {};
    return {rest.substr(0, before), rest.substr(before + 1, last - before - 1),
            rest.substr(last + 1)};
}

std::string cutIdentity(std::string* date) {
    constexpr std::string_view kMark = " ID:";
    const size_t mark = date->find(kMark);
    if (mark == date->npos)
        return "";
    std::string identity = date->substr(mark + kMark.size());
    date->resize(mark);
    return identity;
}

std::string withoutBlanks(const std::string& body) {
    return body.size() > 1 && body.front() == ' ' && body.back() == ' '
               ? body.substr(1, body.size() - 2)
               : body;
}

// "no<>name<>mail<>date<>body<>title<>last", `last` being the identity or, where the date has it,
// nothing. A deleted post's number is missing.
std::string postsOf(const Thread& thread, const Wanted& wanted, bool identityStandsApart) {
    std::string posts;
    long number = 0;
    for (Line& line : linesOf(thread.dat)) {
        if (!isWanted(wanted, ++number) || line.isDeleted)
            continue;
        const std::string identity = identityStandsApart ? cutIdentity(&line.date) : "";
        posts += std::to_string(number) + "<>" + line.name + "<>" + line.mail + "<>" + line.date +
                 "<>" + withoutBlanks(line.body) + "<>" + line.title + "<>" + identity + "\n";
    }
    return posts;
}

Answer storage(const World& world, const std::string& key) {
    Answer answer = text("", "text/plain; charset=EUC-JP");
    const auto fall = world.falls.find(key);
    answer.headers.emplace_back("ERROR", fall != world.falls.end() && fall->second.hasPage
                                             ? "STORAGE IN"
                                             : "THREAD NOT FOUND");
    return answer;
}

Answer list(World& world, const std::string& path) {
    Board* board = world.boards.Find(path.substr(1, path.rfind('/') - 1));
    return board != nullptr ? text(listOf(world, *board), "text/plain")
                            : page(404, errorPage("ありません。"));
}

} // namespace

Answer roomAnswer(World& world, const Question& question) {
    constexpr std::string_view kRawmode = "/bbs/rawmode.cgi/";
    constexpr std::string_view kArchive = "/bbs/read_archive.cgi/";
    if (question.path.ends_with("/subject.txt")) {
        Answer answer = list(world, question.path);
        answer.body = convert(answer.body, "CP932", kEuc);
        return answer;
    }
    if (question.path.starts_with(kRawmode)) {
        const Place place = parsePlace(question.path, kRawmode);
        const Thread* thread = world.Find(place.board, place.key);
        if (thread == nullptr || !world.IsThere(place.key))
            return storage(world, place.key);
        const Wanted wanted = parseWanted(place.words, thread->posts);
        return text(convert(postsOf(*thread, wanted, true), "CP932", kEuc),
                    "text/plain; charset=EUC-JP");
    }
    if (!question.path.starts_with(kArchive))
        return page(404, errorPage("ありません。"));
    const Place place = parsePlace(question.path, kArchive);
    const Thread* thread = world.Find(place.board, place.key);
    const auto fall = world.falls.find(place.key);
    if (thread == nullptr || fall == world.falls.end() || !fall->second.hasPage)
        return page(404, errorPage("ありません。"));
    return text(convert(oldThreadPage(*thread), "CP932", kEuc), "text/html; charset=EUC-JP");
}

Answer townAnswer(World& world, const Question& question) {
    constexpr std::string_view kOfflaw = "/bbs/offlaw.cgi/2/";
    if (question.path.ends_with("/subject.txt"))
        return list(world, question.path);
    if (!question.path.starts_with(kOfflaw))
        return page(404, errorPage("ありません。"));
    const Place place = parsePlace(question.path, kOfflaw);
    const Thread* thread = world.Find(place.board, place.key);
    if (thread == nullptr || !world.IsThere(place.key))
        return text(convert("<ERROR>該当スレッドがありません</ERROR>\n", "UTF-8", "CP932"),
                    "text/plain; charset=Shift_JIS");
    Wanted wanted = parseWanted(place.words, thread->posts);
    wanted.hasFirstPost = false;
    return text(postsOf(*thread, wanted, false), "text/plain; charset=Shift_JIS");
}

} // namespace today
