#include "cache/Folders.h"

#include <Directory.h>

namespace {
constexpr mode_t kFolderMode = 0755;
}

std::string EnsureFolder(const char* path) {
    const status_t status = BDirectory(path).InitCheck();
    if (status == B_OK)
        return "";
    if (status != B_ENTRY_NOT_FOUND)
        return std::string(path) + "\nにアクセスできません。";
    return create_directory(path, kFolderMode) == B_OK
               ? ""
               : std::string(path) + "\nが作成できませんでした。";
}
