#include "views/OpenInBrowser.h"

#include "text/Utf8Cut.h"
#include "widgets/Alerts.h"

#include <OS.h>
#include <Roster.h>

#include <memory>
#include <string>

namespace {

constexpr size_t kLongestShown = 300; // bytes

// The desktop may take its time.
int32 Open(void* data) {
    const std::unique_ptr<std::string> address(static_cast<std::string*>(data));
    const char* const arguments[] = {address->c_str()};
    if (be_roster->Launch("application/x-vnd.Be.URL.http", 1, arguments) != B_OK)
        ShowAlertToAll("リンクを開けませんでした。\n" +
                       CutAtCharacter(address->c_str(), kLongestShown));
    return 0;
}

} // namespace

void OpenInBrowser(const char* address) {
    auto text = std::make_unique<std::string>(address);
    const thread_id thread = spawn_thread(Open, "open_url", B_NORMAL_PRIORITY, text.get());
    std::string* const handedOver = text.release();
    if (thread >= 0 && resume_thread(thread) == B_OK)
        return;
    kill_thread(thread);
    Open(handedOver);
}
