#include "windows/NPAboutWindow.h"

#include "windows/WindowSlot.h"

#include <AppDefs.h>
#include <Button.h>
#include <Font.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <StringView.h>
#include <View.h>

#include <iterator>

namespace {

constexpr float kWidth = 360;
constexpr float kInset = 16;
constexpr float kNameHeight = 32;
constexpr float kNameSize = 22;
constexpr float kLineHeight = 20;
constexpr float kButtonWidth = 88;
constexpr float kButtonHeight = 24;

// Paragraphs are divided by empty lines.
constexpr const char* kLines[] = {
    ("バージョン " ITAMORI_VERSION),
    "",
    "2ch型掲示板を読み書きするプログラム",
    "",
    "使用している部品：",
    "Qt 6（画面表示と入力） — GNU LGPL 3",
    "PCRE2（正規表現） — BSD",
    "GNU C++ ライブラリ — GNU GPL 3 とランタイム例外",
};

constexpr float kHeight =
    2 * kInset + kNameHeight + std::size(kLines) * kLineHeight + kInset + kButtonHeight;

WindowSlot& Slot() {
    static WindowSlot& slot = *new WindowSlot;
    return slot;
}

} // namespace

void NPAboutWindow::Open() {
    Slot().Open([] { return new NPAboutWindow; });
}

bool NPAboutWindow::QuitRequested() {
    Slot().Leave(BMessenger(this));
    return true;
}

NPAboutWindow::NPAboutWindow()
    : OnceWindow(BRect(0, 0, kWidth - 1, kHeight - 1), "Itamoriについて", B_TITLED_WINDOW,
                 B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_ASYNCHRONOUS_CONTROLS | B_CLOSE_ON_ESCAPE) {
    BView* view = new BView(Bounds(), "view", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    view->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    AddChild(view);
    _AddLines(view);
    BRect frame = view->Bounds().InsetByCopy(kInset, kInset);
    frame.left = frame.right - kButtonWidth + 1;
    frame.top = frame.bottom - kButtonHeight + 1;
    BButton* ok = new BButton(frame, "ok", "OK", new BMessage(B_QUIT_REQUESTED));
    view->AddChild(ok);
    ok->MakeDefault(true);
    ok->MakeFocus(true);
    CenterOnScreen();
}

void NPAboutWindow::_AddLines(BView* view) {
    BRect row = view->Bounds().InsetByCopy(kInset, kInset);
    row.bottom = row.top + kNameHeight - 1;
    BStringView* name = new BStringView(row, "name", "Itamori");
    BFont font(be_bold_font);
    font.SetSize(kNameSize);
    name->SetFont(&font);
    view->AddChild(name);
    row.OffsetBy(0, kNameHeight);
    row.bottom = row.top + kLineHeight - 1;
    for (const char* line : kLines) {
        view->AddChild(new BStringView(row, nullptr, line));
        row.OffsetBy(0, kLineHeight);
    }
}
