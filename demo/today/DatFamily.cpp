#include "server/Text.h"
#include "today/Families.h"

#include <nlohmann/json.hpp>
#include <parsedate.h>

#include <algorithm>
#include <cstdio>

namespace today {

namespace {

std::string tagOf(const Thread& thread) {
    char text[64];
    snprintf(text, sizeof(text), "\"%zx-%llx\"", thread.dat.size(),
             static_cast<unsigned long long>(thread.modified));
    return text;
}

// Cuts the answer to "bytes=N-" or "bytes=N-M"; other forms are as none.
void applyRange(const std::string& range, Answer* answer) {
    unsigned long long first = 0, last = ~0ULL;
    if (sscanf(range.c_str(), "bytes=%20llu-%20llu", &first, &last) < 1)
        return;
    const size_t size = answer->body.size();
    if (first >= size) {
        answer->status = 416;
        answer->body.clear();
        answer->headers.emplace_back("Content-Range", "bytes */" + std::to_string(size));
        return;
    }
    last = std::min<unsigned long long>(last, size - 1);
    answer->status = 206;
    answer->body = answer->body.substr(first, last - first + 1);
    answer->headers.emplace_back("Content-Range", "bytes " + std::to_string(first) + "-" +
                                                      std::to_string(last) + "/" +
                                                      std::to_string(size));
}

Answer datFile(const Thread& thread, const Question& question) {
    Answer answer;
    answer.status = 200;
    answer.type = "text/plain";
    answer.headers = {{"ETag", tagOf(thread)}, {"Last-Modified", httpDate(thread.modified)}};
    const bool isSame = question.noneMatch.empty()
                            ? parsedate(question.modifiedSince.c_str(), -1) >= thread.modified
                            : question.noneMatch == tagOf(thread);
    if (isSame) {
        answer.status = 304;
        return answer;
    }
    answer.body = thread.dat;
    applyRange(question.range, &answer);
    return answer;
}

Answer fallen(const Fall& fall, const std::string& board, const std::string& key) {
    Answer answer = page(fall.status, errorPage("そんなスレッドはありません。"));
    if (fall.status == 301 || fall.status == 302)
        answer.headers.emplace_back("Location", std::string("https://") + kArchiveHost +
                                                    "/test/read.cgi/" + board + "/" + key + "/");
    return answer;
}

// "/BOARD/FOLDER/…/KEY.dat": board, folder, key.
bool splitDatPath(const std::string& path, std::string* board, std::string* folder,
                  std::string* key) {
    const size_t first = path.find('/', 1);
    const size_t second = first == path.npos ? first : path.find('/', first + 1);
    const size_t last = path.rfind('/');
    if (second == path.npos || !path.ends_with(".dat"))
        return false;
    *board = path.substr(1, first - 1);
    *folder = path.substr(first + 1, last - first - 1);
    *key = path.substr(last + 1, path.size() - last - 5);
    return true;
}

Answer threadFile(World& world, const Question& question) {
    std::string board, folder, key;
    if (!splitDatPath(question.path, &board, &folder, &key))
        return page(404, errorPage("ありません。"));
    const Thread* thread = world.Find(board, key);
    const auto fall = world.falls.find(key);
    const bool isFallen = fall != world.falls.end();
    if (thread != nullptr && folder == "dat")
        return isFallen ? fallen(fall->second, board, key) : datFile(*thread, question);
    if (thread != nullptr && isFallen && fall->second.hasDat &&
        folder == "oyster/" + key.substr(0, 4))
        return datFile(*thread, question);
    return page(404, errorPage("ありません。"));
}

// "/test/read.cgi/BOARD/KEY/": on the board's own host while the thread is there, later in the
// archive.
Answer readCgi(World& world, const Question& question) {
    constexpr std::string_view kStart = "/test/read.cgi/";
    const std::string rest = question.path.substr(kStart.size());
    const size_t slash = rest.find('/');
    const std::string board = rest.substr(0, slash);
    const std::string key = slash == rest.npos ? "" : rest.substr(slash + 1, 10);
    const Thread* thread = world.Find(board, key);
    const bool isArchive = question.host == kArchiveHost;
    const auto fall = world.falls.find(key);
    const bool isHere =
        isArchive ? fall != world.falls.end() && fall->second.hasPage : fall == world.falls.end();
    return thread != nullptr && isHere ? page(200, threadPage(*thread))
                                       : page(404, errorPage("ありません。"));
}

} // namespace

Answer menuAnswer(const World& world) {
    using nlohmann::json;
    json list = json::array();
    int number = 0;
    for (const Category& category : world.boards.Categories()) {
        json boards = json::array();
        for (const Board& board : category.boards)
            boards.push_back({{"url", "https://" + category.host + "/" + board.Folder() + "/"},
                              {"board_name", convert(board.Title(), "CP932", "UTF-8")},
                              {"directory_name", board.Folder()}});
        // Not all that a menu leads to is a board.
        boards.push_back({{"url", "https://today.example/"}, {"board_name", "総合案内"}});
        list.push_back({{"category_name", convert(category.title, "CP932", "UTF-8")},
                        {"category_number", std::to_string(++number)},
                        {"category_total", boards.size()},
                        {"category_content", boards}});
    }
    Answer answer;
    answer.status = 200;
    answer.type = "application/json; charset=utf-8";
    answer.body = json{{"last_modify", 1772755200}, {"menu_list", list}}.dump();
    return answer;
}

Answer datFamilyAnswer(World& world, const Question& question) {
    if (question.path.starts_with("/test/read.cgi/"))
        return readCgi(world, question);
    constexpr std::string_view kList = "/subject.txt";
    if (!question.path.ends_with(kList))
        return threadFile(world, question);
    Board* board =
        world.boards.Find(question.path.substr(1, question.path.size() - kList.size() - 1));
    if (board == nullptr)
        return page(404, errorPage("ありません。"));
    Answer answer = page(200, "");
    answer.type = "text/plain; charset=utf-8"; // some servers say so, and it is not
    for (const Thread& thread : board->Threads()) {
        if (world.IsThere(thread.key))
            answer.body +=
                thread.key + ".dat<>" + thread.title + " (" + std::to_string(thread.posts) + ")\n";
    }
    return answer;
}

} // namespace today
