#include "app/NPApp.h"
#include "app/NPWindow.h"
#include "windows/NPWriteWindow.h"

#include <Application.h>

namespace {
// Null as the program ends.
NPApp* Application() {
    return dynamic_cast<NPApp*>(be_app);
}
} // namespace

void NPWindow::OpenWriteWindow(const PostTarget& target, const char* title, int32 posts) {
    WriteWindowSetup setup;
    setup.target = target;
    setup.title = title;
    setup.res = posts;
    setup.browser = BMessenger(this);
    if (!_ReadProxy(&setup.proxy))
        return;
    char family[64];
    char style[64];
    float size = setup.font.Size();
    GetFontInfo(&family, &style, &size);
    setup.font.SetFamilyAndStyle(family, style);
    if (size > 0)
        setup.font.SetSize(size);
    if (GetWriteKeyBinding() == 1)
        setup.bindings = NPWriteTextView::Bindings::kEmacs;
    if (const NPApp* application = Application())
        application->GetWriteWindowRect(&setup.frame);
    setup.keepFrame = [](BRect frame) {
        if (NPApp* application = Application())
            application->SetWriteWindowRect(frame);
    };
    NPWriteWindow::Open(setup);
}
