// The program's board-menu update and preferences, driven from beside it.
#include "app/ChildDrivers.h"

#include "app/NPWindow.h"
#include "messages/Messages.h"
#include "support/AlertWatch.h"
#include "support/OpenWindow.h"
#include "views/NPArticleView.h"
#include "views/NPBoardListView.h"
#include "views/NPTextView.h"
#include "windows/NPAboutWindow.h"
#include "windows/NPPrefsWindow.h"
#include "windows/NPSearchWindow.h"
#include "windows/NPUpdateWindow.h"
#include "windows/NPWriteWindow.h"

#include <AppDefs.h>
#include <Application.h>
#include <Font.h>
#include <StringView.h>

#include <cstdio>
#include <string>

using namespace server::testing;

namespace {

NPBoardListView* BoardsOf(NPWindow* window) {
    return static_cast<NPBoardListView*>(window->FindView("board list"));
}

// Two browser windows, idle.
std::pair<NPWindow*, NPWindow*> OpenTwo() {
    NPWindow* first = WaitForBrowser();
    BMessenger(first).SendMessage(kMsgNewWindow);
    WaitUntil([] { return be_app->CountWindows() == 2; });
    NPWindow* second = static_cast<NPWindow*>(be_app->WindowAt(1));
    WaitUntilIdle(second);
    return {first, second};
}

void Expand(NPWindow* window, int32 category) {
    Do(window, [&] { BoardsOf(window)->SetCategoryExpanded(category, true); });
}

int32 CountCategories(NPWindow* window) {
    int32 count = 0;
    Do(window, [&] { count = BoardsOf(window)->CountCategories(); });
    return count;
}

void PrintCategories(NPWindow* window) {
    Do(window, [&] {
        NPBoardListView* boards = BoardsOf(window);
        for (int32 i = 0; i < boards->CountCategories(); i++)
            printf("%s%s ", boards->CategoryNameAt(i), boards->CategoryExpandedAt(i) ? "+" : "");
        printf("\n");
    });
}

void PrintFontOf(NPWindow* window) {
    Do(window, [&] {
        const auto* pane = static_cast<NPArticleView*>(window->FindView("article pane"));
        BFont font;
        font_family family;
        font_style style;
        pane->TextView()->GetFontAndColor(0, &font);
        font.GetFamilyAndStyle(&family, &style);
        printf("%s/%s %g\n", family, style, font.Size());
    });
}

// "Family/Style" of the last installed one, which nobody has by chance.
std::string LastFont() {
    font_family family;
    font_style style;
    get_font_family(count_font_families() - 1, &family);
    get_font_style(family, count_font_styles(family) - 1, &style);
    return std::string(family) + "/" + style;
}

void ChooseFromFocus(BWindow* window, const std::string& line) {
    Key(window, B_SPACE);
    WaitUntil([] { return MenuIsOpen(); });
    ChooseMenuLine(line);
    WaitUntilIdle(window);
}

} // namespace

int32 UpdateBoardMenu(void*) {
    const auto [first, second] = OpenTwo();
    Expand(first, 0);
    Expand(second, 1);
    const int32 before = CountCategories(first);
    be_app_messenger.SendMessage(kMsgUpdateBoardMenu);
    for (NPWindow* window : {first, second}) {
        WaitUntil([&, shown = window] { return CountCategories(shown) != before; });
        PrintCategories(window);
    }
    WaitForClosed<NPUpdateWindow>();
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    return 0;
}

// With every kind of auxiliary window open.
int32 QuitInTheUpdate(void*) {
    const BMessenger browser(WaitForBrowser());
    browser.SendMessage(kMsgOpenPrefs);
    browser.SendMessage(kMsgOpenSearch);
    be_app_messenger.SendMessage(B_ABOUT_REQUESTED);
    be_app_messenger.SendMessage(kMsgUpdateBoardMenu);
    WaitForOpen<NPPrefsWindow>();
    WaitForOpen<NPSearchWindow>();
    WaitForOpen<NPAboutWindow>();
    WaitUntil([] {
        std::string shown;
        WithOpen<NPUpdateWindow>([&](NPUpdateWindow* window) {
            shown = static_cast<BStringView*>(window->FindView("status"))->Text();
        });
        return shown == "受信中…";
    });
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    return 0;
}

int32 ChooseFont(void*) {
    const auto [first, second] = OpenTwo();
    BMessenger(first).SendMessage(kMsgOpenPrefs);
    NPPrefsWindow* prefs = WaitForOpen<NPPrefsWindow>();
    Activate(prefs, true);
    ChooseFromFocus(prefs, LastFont());
    Key(prefs, B_TAB);
    ChooseFromFocus(prefs, "20");
    Key(prefs, B_ENTER);
    WaitForClosed<NPPrefsWindow>();
    for (NPWindow* window : {first, second}) {
        WaitUntilIdle(window);
        PrintFontOf(window);
    }
    printf("%s 20\n", LastFont().c_str());
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    return 0;
}

int32 PrintFont(void*) {
    PrintFontOf(WaitForBrowser());
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    return 0;
}

// A text that can't be kept: its draft's folder is a file.
int32 QuitUnderAnAlert(void*) {
    WaitForBrowser();
    be_app_messenger.SendMessage(kMsgUpdateBoardMenu);
    printf("%s", WaitForAlert().c_str());
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    return 0;
}

int32 QuitWithAText(void*) {
    NPWindow* browser = WaitForBrowser();
    WriteWindowSetup setup;
    setup.target = {PostFamily::kBbsCgi, "h.jp", "news", "12"};
    NPWriteWindow::Open(setup);
    NPWriteWindow* writer = WaitForOpen<NPWriteWindow>();
    Activate(writer, true);
    Type(writer, "text");
    WaitUntilIdle(writer);
    const auto report = [](const char* what) {
        printf("%s: %s\n", what, WaitForAlert().c_str());
        DismissAlert();
        WaitUntil([] { return find_thread("alert") < 0; });
        printf("%d windows\n", be_app->CountWindows());
        fflush(stdout);
    };
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    report("the program");
    CloseByUser(browser);
    report("the last window");
    return 0;
}
