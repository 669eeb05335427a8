#include "storage/PathText.h"

#include <climits>
#include <cstdlib>
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

#include <StorageDefs.h>

#include "support/Errno.h"

namespace {

constexpr int kMaxLinks = 32;

struct FreeText {
    void operator()(char* text) const { free(text); }
};
using OwnText = std::unique_ptr<char, FreeText>;

std::string withoutExtraSlashes(const std::string& path) {
    std::string result;
    for (char byte : path) {
        if (byte != '/' || result.empty() || result.back() != '/')
            result += byte;
    }
    if (result.size() > 1 && result.back() == '/')
        result.pop_back();
    return result;
}

status_t realFolder(const std::string& folder, std::string* result) {
    OwnText real(realpath(folder.c_str(), nullptr));
    if (!real)
        return lastError();
    struct stat info;
    if (stat(real.get(), &info) != 0)
        return lastError();
    if (!S_ISDIR(info.st_mode))
        return B_NOT_A_DIRECTORY;
    *result = real.get();
    return B_OK;
}

// Where a link leads, "" for what is no link.
std::string linkTarget(const std::string& path) {
    char target[PATH_MAX];
    ssize_t length = readlink(path.c_str(), target, sizeof(target));
    return length > 0 ? std::string(target, static_cast<size_t>(length)) : std::string();
}

} // namespace

std::string absolutePath(const std::string& path) {
    if (!path.empty() && path[0] == '/')
        return withoutExtraSlashes(path);
    OwnText current(getcwd(nullptr, 0));
    return current ? withoutExtraSlashes(std::string(current.get()) + "/" + path) : std::string();
}

std::string folderOf(const std::string& absolute) {
    size_t slash = absolute.rfind('/');
    return slash == 0 ? "/" : absolute.substr(0, slash);
}

std::string leafOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

std::string joinPath(const std::string& folder, const std::string& leaf) {
    if (leaf.empty())
        return folder;
    return folder == "/" ? folder + leaf : folder + "/" + leaf;
}

bool hasDotComponents(const std::string& path) {
    std::string all = "/" + path + "/";
    return all.find("/./") != std::string::npos || all.find("/../") != std::string::npos;
}

status_t resolveEntry(const std::string& path, Traverse traverse, std::string* result) {
    std::string current = path;
    for (int links = 0; links < kMaxLinks; links++) {
        std::string absolute = absolutePath(current);
        if (current.empty() || absolute.empty())
            return B_ENTRY_NOT_FOUND;
        std::string leaf = leafOf(absolute);
        if (leaf.size() >= B_FILE_NAME_LENGTH)
            return B_NAME_TOO_LONG;
        bool isFolderItself = leaf.empty() || leaf == "." || leaf == "..";
        std::string folder;
        status_t status = realFolder(isFolderItself ? absolute : folderOf(absolute), &folder);
        if (status != B_OK)
            return status;
        *result = isFolderItself ? folder : joinPath(folder, leaf);
        std::string target = traverse == Traverse::kYes ? linkTarget(*result) : std::string();
        if (target.empty())
            return B_OK;
        current = target[0] == '/' ? target : joinPath(folder, target);
    }
    return B_LINK_LIMIT;
}
