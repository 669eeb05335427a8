#include "server/MenuServer.h"

#include "interface/windows/WindowPrivate.h"
#include "server/NativeWindow.h"
#include "server/OpenMenu.h"
#include "server/Server.h"
#include "server/WindowLink.h"

namespace server {

namespace {

// Calls back once, also when the server drops the work without doing it.
class Answer {
public:
    explicit Answer(std::function<void(const MenuOutcome&)> done) : fDone(std::move(done)) {}
    ~Answer() {
        if (fDone)
            fDone(MenuOutcome());
    }
    std::function<void(const MenuOutcome&)> Take() { return std::exchange(fDone, nullptr); }

private:
    std::function<void(const MenuOutcome&)> fDone;
};

} // namespace

void ShowMenu(MenuRequest request) {
    std::shared_ptr<WindowLink> link;
    if (request.window != nullptr)
        link = BWindow::Private::Of(request.window).link;
    request.window = nullptr;
    auto answer = std::make_shared<Answer>(std::exchange(request.done, nullptr));
    Post([link, answer, request = std::move(request)]() mutable {
        request.done = answer->Take();
        OpenMenu::Show(std::move(request), link != nullptr ? NativeWindow::Of(*link) : nullptr);
    });
}

void UpdateMenu(const MenuSnapshot& menu) {
    Post([menu] {
        if (OpenMenu* open = OpenMenu::Current())
            open->Update(menu);
    });
}

void CloseMenu() {
    Post([] { OpenMenu::Dismiss(); });
}

} // namespace server
