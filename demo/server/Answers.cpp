#include "server/Answers.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "server/Pages.h"
#include "server/Text.h"

namespace {

Answer notFound() {
    Answer answer;
    answer.body = errorPage("ありません。");
    return answer;
}

Answer page(std::string body, const char* type = "text/html") {
    Answer answer;
    answer.status = 200;
    answer.type = type;
    answer.body = std::move(body);
    return answer;
}

// The first byte that "bytes=N-" asks for, or the two ends of "bytes=N-M"; false for other forms.
bool parseRange(const std::string& text, size_t* first, size_t* last) {
    unsigned long long begin = 0, end = ~0ULL;
    char rest = 0;
    if (sscanf(text.c_str(), "bytes=%20llu-%c", &begin, &rest) < 1)
        return false;
    if (rest != 0 && sscanf(text.c_str(), "bytes=%20llu-%20llu%c", &begin, &end, &rest) != 2)
        return false;
    *first = begin;
    *last = end;
    return begin <= end;
}

// Cuts the answer's body to what was asked for. A range that makes no sense is as none.
void applyRange(const std::string& range, Answer* answer) {
    size_t first = 0, last = 0;
    size_t size = answer->body.size();
    if (range.empty() || !parseRange(range, &first, &last))
        return;
    if (first >= size) {
        answer->status = 416;
        answer->body.clear();
        answer->contentRange = "bytes */" + std::to_string(size);
        return;
    }
    last = std::min(last, size - 1);
    answer->status = 206;
    answer->body = answer->body.substr(first, last - first + 1);
    answer->contentRange =
        "bytes " + std::to_string(first) + "-" + std::to_string(last) + "/" + std::to_string(size);
}

// What is said of a thread that is not served where it was.
Answer datElsewhere(const Board& board, const Thread& thread) {
    Answer answer = notFound();
    answer.stalls = thread.fate == Fate::kStalled;
    if (thread.fate != Fate::kMoved && thread.fate != Fate::kMovedForGood)
        return answer;
    answer.status = thread.fate == Fate::kMoved ? 302 : 301;
    answer.location = "/" + board.Folder() + "/kako/" + thread.key + ".dat";
    return answer;
}

Answer datFile(const Thread& thread, const Question& question) {
    Answer answer = page(thread.dat, "text/plain");
    answer.modified = thread.modified;
    if (question.ifModifiedSince >= thread.modified) {
        answer.status = 304;
        answer.body.clear();
    } else {
        applyRange(question.range, &answer);
    }
    return answer;
}

bool cutEnd(std::string* text, const std::string& end) {
    if (!text->ends_with(end))
        return false;
    text->resize(text->size() - end.size());
    return true;
}

std::string cutAtLast(std::string* text, char separator) {
    size_t place = text->rfind(separator);
    std::string tail = place == std::string::npos ? "" : text->substr(place + 1);
    text->resize(place == std::string::npos ? 0 : place);
    return tail;
}

Answer threadAnswer(BoardSet& boards, const std::string& folder, const std::string& key,
                    int start) {
    Board* board = boards.Find(folder);
    Thread* thread = board ? board->Find(key) : nullptr;
    if (!thread)
        return notFound();
    Answer answer = page(threadPage(*thread, start));
    answer.modified = thread->modified;
    return answer;
}

// "[/prefix]/bbs/read.cgi?BBS=board&KEY=key&START=n"; `prefix` ends with a slash or is empty.
Answer readCgi(BoardSet& boards, const std::string& prefix, const std::string& query) {
    auto form = parseForm(query);
    std::string folder = prefix + form["BBS"];
    if (!boards.Find(folder))
        folder = "bbs/" + form["BBS"];
    return threadAnswer(boards, folder, form["KEY"], atoi(form["START"].c_str()));
}

// "board/key/" or "board/key/12-", as the links between posts say it.
Answer readPath(BoardSet& boards, std::string path) {
    int start = atoi(cutAtLast(&path, '/').c_str());
    std::string key = cutAtLast(&path, '/');
    return threadAnswer(boards, path, key, start);
}

} // namespace

Answer answerTo(BoardSet& boards, const Question& question) {
    const std::string kReadPath = "test/read.cgi/";
    std::string path = question.path.empty() ? "" : question.path.substr(1);
    if (path == "newbbsmenu.html")
        return page(menuPage(boards));
    if (path.starts_with(kReadPath))
        return readPath(boards, path.substr(kReadPath.size()));
    if (cutEnd(&path, "bbs/read.cgi"))
        return readCgi(boards, path, question.query);
    if (cutEnd(&path, ".dat")) {
        std::string key = cutAtLast(&path, '/');
        Board* board = cutEnd(&path, "/dat") ? boards.Find(path) : nullptr;
        Thread* thread = board && board->Kind() == BoardKind::kDat ? board->Find(key) : nullptr;
        if (!thread)
            return notFound();
        return thread->fate == Fate::kServed ? datFile(*thread, question)
                                             : datElsewhere(*board, *thread);
    }
    bool isSubject = cutEnd(&path, "/subject.txt");
    if (!isSubject && !cutEnd(&path, "/index.html"))
        cutEnd(&path, "/");
    Board* board = boards.Find(path);
    if (!board)
        return notFound();
    return isSubject ? page(board->SubjectText(), "text/plain") : page(boardPage(*board));
}
