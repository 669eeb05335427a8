#include "windows/OnceWindow.h"

#include "messages/Messages.h"

#include <Message.h>

void OnceWindow::MessageReceived(BMessage* message) {
    if (message->what == kMsgActivateWindow)
        ComeToFront();
    else
        BWindow::MessageReceived(message);
}
