#include "server/Board.h"

#include <algorithm>

#include "server/Text.h"

Thread* Board::Find(const std::string& key) {
    auto isWanted = [&](const Thread& thread) { return thread.key == key; };
    auto found = std::find_if(fThreads.begin(), fThreads.end(), isWanted);
    return found == fThreads.end() ? nullptr : &*found;
}

Thread& Board::AddThread(const std::string& key, const std::string& title, time_t modified) {
    Thread thread;
    thread.key = key;
    thread.title = escapeHtml(title);
    thread.modified = modified;
    fThreads.push_front(std::move(thread));
    return fThreads.front();
}

void Board::AddPost(Thread& thread, const Post& post, time_t now) {
    std::string name = post.name.empty() ? toCp932("名無しさん") : escapeHtml(post.name);
    std::string title = thread.posts == 0 ? thread.title : "";
    thread.dat += name + "<>" + escapeHtml(post.mail) + "<>" + escapeHtml(post.date) + "<> " +
                  datBody(post.body, ThreadUrl(thread.key)) + " <>" + title + "\n";
    thread.posts++;
    thread.modified = std::max(now, thread.modified + 1);
    if (post.mail.find("sage") != std::string::npos)
        return;
    auto isThis = [&](const Thread& other) { return &other == &thread; };
    fThreads.splice(fThreads.begin(), fThreads,
                    std::find_if(fThreads.begin(), fThreads.end(), isThis));
}

std::string Board::SubjectText() const {
    std::string extension = fKind == BoardKind::kDat ? ".dat" : ".cgi";
    std::string text;
    for (const Thread& thread : fThreads)
        text += thread.key + extension + "<>" + thread.title + " (" + std::to_string(thread.posts) +
                ")\n";
    return text;
}

std::string Board::ThreadUrl(const std::string& key) const {
    return "../test/read.cgi/" + fFolder + "/" + key + "/";
}

Board* BoardSet::Find(const std::string& boardFolder) {
    for (Category& category : fCategories) {
        for (Board& board : category.boards) {
            if (board.Folder() == boardFolder)
                return &board;
        }
    }
    return nullptr;
}
