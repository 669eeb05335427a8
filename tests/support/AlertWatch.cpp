#include "support/AlertWatch.h"

#include "server/Testing.h"

#include <Alert.h>
#include <AppDefs.h>
#include <Application.h>
#include <InterfaceDefs.h>
#include <Messenger.h>
#include <TextView.h>
#include <Window.h>

namespace {

// Calls with the open alert locked; false without one.
template <typename Call>
bool WithAlert(Call call) {
    for (int32 i = 0; i < be_app->CountWindows(); i++) {
        BAlert* alert = dynamic_cast<BAlert*>(be_app->WindowAt(i));
        if (alert == nullptr || !alert->Lock())
            continue;
        call(alert);
        alert->Unlock();
        return true;
    }
    return false;
}

} // namespace

std::string WaitForAlert() {
    std::string text;
    server::testing::WaitUntil(
        [&] { return WithAlert([&](BAlert* alert) { text = alert->TextView()->Text(); }); });
    return text;
}

int CountAlerts() {
    int count = 0;
    for (int32 i = 0; i < be_app->CountWindows(); i++)
        count += dynamic_cast<BAlert*>(be_app->WindowAt(i)) != nullptr;
    return count;
}

void DismissAlert() {
    BMessenger messenger;
    WithAlert([&](BAlert* alert) { messenger = BMessenger(alert); });
    WithAlert([](BAlert* alert) { alert->PostMessage(B_QUIT_REQUESTED); });
    server::testing::WaitUntil([&] { return !messenger.IsValid(); });
}

void AnswerAlert(char key) {
    BAlert* open = nullptr;
    WithAlert([&](BAlert* alert) { open = alert; });
    const BMessenger messenger(open);
    server::testing::Key(open, key);
    server::testing::WaitUntil([&] { return !messenger.IsValid(); });
}
