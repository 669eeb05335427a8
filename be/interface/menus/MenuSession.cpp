#include "interface/menus/MenuSession.h"

#include <Looper.h>
#include <Message.h>
#include <Messenger.h>
#include <OS.h>

#include <atomic>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace {

constexpr uint32 kMsgMenuEnded = '_MNE';

// The menu that the server shows; only compared, never followed.
std::atomic<const BMenu*> sOpen{nullptr};

void NoLongerOpen(const BMenu* menu) {
    sOpen.compare_exchange_strong(menu, nullptr);
}

// Brings the outcome from the server's thread to the looper that opened the menu, and deletes
// itself there.
class EndingHandler : public BHandler {
public:
    EndingHandler(const BMenu* menu, MenuSession::Ending ending)
        : BHandler("menu ending"), fMenu(menu), fEnding(std::move(ending)) {}

    void MessageReceived(BMessage* message) override {
        if (message->what != kMsgMenuEnded) {
            BHandler::MessageReceived(message);
            return;
        }
        server::MenuOutcome outcome;
        int32 kind = 0;
        message->FindInt32("kind", &kind);
        outcome.kind = static_cast<server::MenuOutcome::Kind>(kind);
        message->FindInt32("token", &outcome.token);
        message->FindInt32("title", &outcome.title);
        message->FindBool("by_key", &outcome.byKey);
        NoLongerOpen(fMenu);
        Looper()->RemoveHandler(this);
        Forget(this);
        const MenuSession::Ending ending = std::move(fEnding);
        delete this;
        ending(outcome);
    }

    // Those whose looper went before the outcome came are deleted when the next one is kept.
    static void Keep(EndingHandler* handler) {
        std::vector<std::unique_ptr<EndingHandler>> orphans;
        Waiting& waiting = TheWaiting();
        std::lock_guard lock(waiting.lock);
        std::erase_if(waiting.handlers, [&](const auto& entry) {
            if (entry.second.IsValid())
                return false;
            orphans.emplace_back(entry.first);
            return true;
        });
        waiting.handlers.emplace(handler, BMessenger(handler));
    }

private:
    struct Waiting {
        std::mutex lock;
        std::map<EndingHandler*, BMessenger> handlers; // guarded by lock
    };

    // Never destroyed: menus may be open while the process ends.
    static Waiting& TheWaiting() {
        static Waiting* waiting = new Waiting;
        return *waiting;
    }
    static void Forget(EndingHandler* handler) {
        std::lock_guard lock(TheWaiting().lock);
        TheWaiting().handlers.erase(handler);
    }

    const BMenu* fMenu;
    MenuSession::Ending fEnding;
};

void SendOutcome(const BMessenger& messenger, const server::MenuOutcome& outcome) {
    BMessage message(kMsgMenuEnded);
    message.AddInt32("kind", static_cast<int32>(outcome.kind));
    message.AddInt32("token", outcome.token);
    message.AddInt32("title", outcome.title);
    message.AddBool("by_key", outcome.byKey);
    messenger.SendMessage(&message);
}

} // namespace

void MenuSession::Open(const BMenu* menu, server::MenuRequest request, Ending ending) {
    BLooper* looper = BLooper::LooperForThread(find_thread(nullptr));
    if (looper == nullptr)
        return;
    EndingHandler* handler = new EndingHandler(menu, std::move(ending));
    looper->AddHandler(handler);
    EndingHandler::Keep(handler);
    request.done = [messenger = BMessenger(handler)](const server::MenuOutcome& outcome) {
        SendOutcome(messenger, outcome);
    };
    sOpen = menu;
    server::ShowMenu(std::move(request));
}

server::MenuOutcome MenuSession::OpenAndWait(const BMenu* menu, server::MenuRequest request) {
    struct Waiting {
        std::mutex lock;
        std::condition_variable ended;
        bool hasEnded = false;
        server::MenuOutcome outcome;
    };
    auto waiting = std::make_shared<Waiting>();
    request.done = [waiting](const server::MenuOutcome& outcome) {
        std::lock_guard lock(waiting->lock);
        waiting->outcome = outcome;
        waiting->hasEnded = true;
        waiting->ended.notify_all();
    };
    sOpen = menu;
    server::ShowMenu(std::move(request));
    std::unique_lock lock(waiting->lock);
    waiting->ended.wait(lock, [&] { return waiting->hasEnded; });
    NoLongerOpen(menu);
    return waiting->outcome;
}

bool MenuSession::IsOpen(const BMenu* menu) {
    return sOpen.load() == menu;
}

void MenuSession::Forget(const BMenu* menu) {
    if (!IsOpen(menu))
        return;
    NoLongerOpen(menu);
    server::CloseMenu();
}
