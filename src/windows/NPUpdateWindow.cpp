#include "windows/NPUpdateWindow.h"

#include "messages/Messages.h"
#include "settings/Services.h"
#include "views/BoardMenuStore.h"
#include "widgets/Alerts.h"
#include "workers/BoardMenuDownload.h"
#include "workers/WorkerThread.h"

#include <AppDefs.h>
#include <Message.h>
#include <String.h>

#include <ctime>

namespace {
constexpr float kWidth = 300;
} // namespace

NPUpdateWindow::NPUpdateWindow(const Setup& setup)
    : StopWindow("板(2ch)一覧の更新中…", kWidth, B_CLOSE_ON_ESCAPE), fSetup(setup) {
    CenterOnScreen();
}

void NPUpdateWindow::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgBeginUpdate: _Begin(); break;
    case kMsgUpdateStatus: _ShowStatus(message); break;
    case kMsgUpdateEnded: _PageReceived(message); break;
    default: StopWindow::MessageReceived(message);
    }
}

void NPUpdateWindow::_Begin() {
    if (fWorker != nullptr)
        return;
    auto job = std::make_unique<BoardMenuJob>();
    job->portal = ReadServices((fSetup.folder + "/services.txt").c_str()).portalHost;
    job->proxy = fSetup.proxy;
    job->window = BMessenger(this);
    job->control = fWorker = std::make_shared<WorkerControl>("update_port");
    if (SpawnWorker(UpdateBBSTable, "update_bbstable", &job))
        return;
    fWorker.reset();
    PostMessage(B_QUIT_REQUESTED);
}

int32 NPUpdateWindow::UpdateBBSTable(void* data) {
    return BoardMenuDownload(TakeOverJob<BoardMenuJob>(data, "Update bbstable")).Run();
}

void NPUpdateWindow::_ShowStatus(const BMessage* message) {
    BString text;
    if (message->FindString("text", &text) == B_OK)
        ShowStatus(text.String());
}

void NPUpdateWindow::_PageReceived(const BMessage* message) {
    const void* page = nullptr;
    ssize_t size = 0;
    if (fWorker == nullptr || message->FindData("menu", B_RAW_TYPE, &page, &size) != B_OK)
        return;
    fWorker.reset();
    fComplete = WriteBBSTable(std::string(static_cast<const char*>(page), size)) == 0;
    if (!fComplete)
        ShowAlert(this, "書き込みに失敗しました。");
    PostMessage(B_QUIT_REQUESTED);
}

int32 NPUpdateWindow::WriteBBSTable(const std::string& page) const {
    return !fSetup.folder.empty() && StoreBoardMenu(fSetup.folder, page, time(nullptr)) == B_OK
               ? 0
               : -1;
}

bool NPUpdateWindow::QuitRequested() {
    BMessage ended(kMsgUpdateEnded);
    ended.AddBool("complete", fComplete);
    fSetup.application.SendMessage(&ended);
    if (fWorker != nullptr)
        fWorker->Stop();
    fWorker.reset();
    return true;
}
