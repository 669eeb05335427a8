#pragma once

#include "server/MenuServer.h"

#include <functional>

class BMenu;

// One showing of a menu by the server. The menu is only a name here: what it shows comes with the
// request, and nothing of it is read.
class MenuSession {
public:
    // Called once, on the thread of the looper that opened the menu, with the looper locked.
    using Ending = std::function<void(const server::MenuOutcome&)>;

    // The calling thread must be a looper's. `request.done` is filled in here. If the looper goes
    // before the menu ends, `ending` is dropped.
    static void Open(const BMenu* menu, server::MenuRequest request, Ending ending);
    // Waits for the choice; any thread.
    static server::MenuOutcome OpenAndWait(const BMenu* menu, server::MenuRequest request);

    // Whether it is the one that is shown.
    static bool IsOpen(const BMenu* menu);
    // The menu goes.
    static void Forget(const BMenu* menu);
};
