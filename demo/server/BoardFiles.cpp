#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include "server/Board.h"
#include "server/Text.h"

// The sample boards are text files; demo/README.md describes their form.

namespace fs = std::filesystem;

namespace {

constexpr const char* kListName = "boards.txt";

// Reads a file line by line and remembers where it is, for error messages.
class LineFile {
public:
    explicit LineFile(const fs::path& path) : fPath(path), fStream(path, std::ios::binary) {}

    bool IsOpen() const { return fStream.is_open(); }
    bool Next(std::string* line) {
        fNumber++;
        return static_cast<bool>(std::getline(fStream, *line));
    }
    std::string Error(const std::string& what) const {
        return fPath.string() + ":" + std::to_string(fNumber) + ": " + what;
    }

private:
    fs::path fPath;
    std::ifstream fStream;
    int fNumber = 0;
};

std::string trimmed(const std::string& text) {
    size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

// "a; b; c" gives three parts; what is missing is empty.
std::vector<std::string> threeParts(const std::string& text) {
    std::vector<std::string> parts;
    size_t begin = 0;
    for (int i = 0; i < 3; i++) {
        size_t end = i < 2 ? std::min(text.find(';', begin), text.size()) : text.size();
        parts.push_back(trimmed(text.substr(begin, end - begin)));
        begin = std::min(end + 1, text.size());
    }
    return parts;
}

bool isKey(const std::string& text) {
    auto isDigit = [](char byte) { return byte >= '0' && byte <= '9'; };
    return text.size() == 10 && std::all_of(text.begin(), text.end(), isDigit);
}

struct ThreadFile {
    std::string key;
    std::string title;
    std::vector<Post> posts;
};

bool readThread(const fs::path& path, ThreadFile* result, std::string* error) {
    LineFile file(path);
    std::string line;
    result->key = path.stem().string();
    if (!isKey(result->key) || !file.Next(&result->title) || result->title.empty()) {
        *error = file.Error("a thread is named by ten digits and begins with its title");
        return false;
    }
    while (file.Next(&line)) {
        if (line.starts_with("* ")) {
            std::vector<std::string> parts = threeParts(line.substr(2));
            result->posts.push_back({parts[0], parts[1], parts[2], ""});
        } else if (!result->posts.empty()) {
            result->posts.back().body += (line.starts_with("\\") ? line.substr(1) : line) + "\n";
        } else if (!trimmed(line).empty()) {
            *error = file.Error("text before the first post");
            return false;
        }
    }
    for (Post& post : result->posts)
        post.body.erase(post.body.find_last_not_of('\n') + 1);
    return true;
}

void addThread(Board& board, const ThreadFile& file) {
    time_t modified = static_cast<time_t>(std::stoll(file.key));
    Thread& thread = board.AddThread(file.key, toCp932(file.title), modified);
    for (const Post& post : file.posts)
        board.AddPost(
            thread,
            {toCp932(post.name), toCp932(post.mail), toCp932(post.date), toCp932(post.body)},
            modified);
}

// The threads in the order of their keys, so that the newest ends up first.
bool readBoard(const fs::path& folder, Board& board, std::string* error) {
    std::vector<fs::path> paths;
    std::error_code failure;
    for (const auto& entry : fs::directory_iterator(folder, failure)) {
        if (entry.path().extension() == ".txt")
            paths.push_back(entry.path());
    }
    if (failure) {
        *error = folder.string() + ": " + failure.message();
        return false;
    }
    std::sort(paths.begin(), paths.end());
    for (const fs::path& path : paths) {
        ThreadFile file;
        if (!readThread(path, &file, error))
            return false;
        addThread(board, file);
    }
    return true;
}

// "[title] host" begins a category, "folder title" is a board of it, "cgi folder title" one that is
// read through read.cgi alone.
bool readListLine(const std::string& line, std::list<Category>& categories) {
    size_t close = line.find(']');
    if (line[0] == '[' && close != std::string::npos) {
        categories.push_back(
            {toCp932(line.substr(1, close - 1)), trimmed(line.substr(close + 1)), {}});
        return !categories.back().host.empty();
    }
    BoardKind kind = line.starts_with("cgi ") ? BoardKind::kCgi : BoardKind::kDat;
    std::string rest = kind == BoardKind::kCgi ? line.substr(4) : line;
    size_t blank = rest.find(' ');
    if (categories.empty() || blank == std::string::npos)
        return false;
    std::string title = toCp932(trimmed(rest.substr(blank)));
    categories.back().boards.emplace_back(rest.substr(0, blank), title, kind);
    return true;
}

} // namespace

bool BoardSet::Load(const std::string& folder, std::string* error) {
    fCategories.clear();
    LineFile list(fs::path(folder) / kListName);
    if (!list.IsOpen()) {
        *error = list.Error("cannot be opened");
        return false;
    }
    std::string line;
    while (list.Next(&line)) {
        if (line.empty() || line[0] == '#')
            continue;
        if (!readListLine(line, fCategories)) {
            *error = list.Error("neither a category nor a board");
            return false;
        }
    }
    for (Category& category : fCategories) {
        for (Board& board : category.boards) {
            if (!readBoard(fs::path(folder) / board.Folder(), board, error))
                return false;
        }
    }
    return true;
}
