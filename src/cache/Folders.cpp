#include "cache/Folders.h"

#include "widgets/Alerts.h"

#include <Directory.h>

namespace {
constexpr mode_t kFolderMode = 0755;
}

int32 EnsureFolder(const char* path) {
    const BDirectory folder(path);
    const status_t status = folder.InitCheck();
    if (status == B_OK)
        return 0;
    if (status != B_ENTRY_NOT_FOUND)
        ShowAlert("%s\nにアクセスできません。", path);
    else if (create_directory(path, kFolderMode) != B_OK)
        ShowAlert("%s\nが作成できませんでした。", path);
    else
        return 0;
    return -1;
}
