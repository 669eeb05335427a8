#include "cache/NPCache.h"
#include "cache/TextAttribute.h"
#include "messages/Messages.h"
#include "widgets/Alerts.h"
#include "workers/SubjectWorkers.h"

#include <Directory.h>
#include <Entry.h>
#include <Node.h>

#include <cstdio>

int32 SubjectCacheListing::Run() {
    if (fUrl.Status() != 0) {
        Fail(kMsgBoardComplete);
        return -1;
    }
    const std::string place = std::string(fUrl.Host()) + "/" + fUrl.Board();
    BDirectory folder;
    const status_t status = NPCache::FindDatDirectory(fUrl.Host(), fUrl.Board(), &folder);
    if (status != B_OK && status != B_ENTRY_NOT_FOUND) {
        ShowAlert(this, "読み込み失敗：" + place);
        Fail(kMsgBoardComplete);
        return -1;
    }
    BeginList();
    ShowProgress(place + "を読み込み中");
    fprintf(stderr, "reading: %s\n", place.c_str());
    BEntry entry;
    while (status == B_OK && folder.GetNextEntry(&entry) == B_OK) {
        if (MustStop())
            return 0;
        _AddFile(entry);
    }
    ShowCount();
    BMessage complete(kMsgBoardComplete);
    complete.AddString("board", fJob.board.c_str());
    complete.AddString("url", fJob.url.c_str());
    complete.AddBool("sort_modification", true);
    Complete(&complete);
    ClearProgress();
    return 0;
}

void SubjectCacheListing::_AddFile(const BEntry& entry) {
    char name[B_FILE_NAME_LENGTH];
    const BNode node(&entry);
    if (node.InitCheck() != B_OK || !node.IsFile() || entry.GetName(name) != B_OK)
        return;
    int32 count = 0;
    node.ReadAttr("res_num", B_INT32_TYPE, 0, &count, sizeof(count));
    char countText[16];
    snprintf(countText, sizeof(countText), "%ld", static_cast<long>(count));
    AddThread(++fCount, ReadTitle(node, "title").c_str(), countText, name);
}
