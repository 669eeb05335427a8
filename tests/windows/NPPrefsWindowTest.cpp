#include "windows/NPPrefsWindow.h"

#include "app/DefaultSettings.h"
#include "messages/Messages.h"
#include "settings/SettingsFile.h"
#include "support/OpenWindow.h"
#include "support/ScratchFolder.h"
#include "windows/NPFontMenu.h"

#include <Application.h>
#include <Autolock.h>
#include <Locker.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <Message.h>
#include <MessageFilter.h>
#include <TextControl.h>

#include <gtest/gtest.h>

#include <mutex>
#include <optional>

using namespace server::testing;

namespace {

// Keeps the font that a window sends to the application.
class FontWatch : public BMessageFilter {
public:
    FontWatch() : BMessageFilter(kMsgFontChanged) {
        _WaitForAll(); // of an earlier test too
        const BAutolock lock(be_app);
        be_app->AddCommonFilter(this);
    }
    ~FontWatch() override {
        const BAutolock lock(be_app);
        be_app->RemoveCommonFilter(this);
    }
    filter_result Filter(BMessage* message, BHandler**) override {
        std::lock_guard lock(fLock);
        fSent = *message;
        return B_SKIP_MESSAGE;
    }
    // "family/style size", without what was not sent.
    std::string WaitForFont() {
        EXPECT_TRUE(WaitUntil([this] {
            std::lock_guard lock(fLock);
            return fSent.has_value();
        }));
        std::lock_guard lock(fLock);
        BString family;
        BString style;
        float size = 0;
        std::string text;
        if (fSent->FindString("family", &family) == B_OK &&
            fSent->FindString("style", &style) == B_OK)
            text = std::string(family.String()) + "/" + style.String();
        if (fSent->FindFloat("size", &size) == B_OK)
            text += " " + std::to_string(static_cast<int>(size));
        return text;
    }
    bool HasSent() {
        _WaitForAll();
        std::lock_guard lock(fLock);
        return fSent.has_value();
    }

private:
    // Until the application has handled what it was sent: it answers in turn.
    static void _WaitForAll() {
        BMessage ask('ask?');
        BMessage answer;
        EXPECT_EQ(be_app_messenger.SendMessage(&ask, &answer), B_OK);
    }

    std::mutex fLock;
    std::optional<BMessage> fSent; // guarded by fLock
};

// The first family that has so many styles, and that style.
std::pair<std::string, std::string> FontWithStyle(int32 index) {
    font_family family;
    font_style style;
    for (int32 i = 0; get_font_family(i, &family) == B_OK; i++) {
        if (get_font_style(family, index, &style) == B_OK)
            return {family, style};
    }
    return {};
}

// The preferences on settings of their own, driven by keys.
class Prefs : public testing::Test {
protected:
    Prefs() : fSettings("Itamori", "2ch") {
        AddPrefsIfNotExists(&fSettings);
        const auto [family, style] = FontWithStyle(0);
        fSettings.Replace("font_family", family.c_str());
        fSettings.Replace("font_style", style.c_str());
        fSettings.Replace("font_size", 12.0f);
        fFont = family + "/" + style;
    }
    ~Prefs() override {
        BMessenger(fWindow).SendMessage(B_QUIT_REQUESTED);
        WaitForClosed<NPPrefsWindow>();
    }
    void Open() {
        NPPrefsWindow::Open(&fSettings);
        fWindow = WaitForOpen<NPPrefsWindow>();
        ASSERT_NE(fWindow, nullptr);
        Activate(fWindow, true);
        Settle();
    }
    void Settle() { EXPECT_TRUE(WaitUntilIdle(fWindow)); }
    void Press(char key, uint32 modifiers = 0) {
        Key(fWindow, key, modifiers);
        Settle();
    }
    void Accept() {
        Key(fWindow, B_ENTER);
        EXPECT_TRUE(WaitForClosed<NPPrefsWindow>());
        fWindow = nullptr;
    }
    // From the font menu, which has the focus at first.
    void GoToNetwork() {
        Press(B_TAB, B_SHIFT_KEY);
        Press(B_RIGHT_ARROW);
    }
    void ChooseFromFocus(const std::string& line) {
        Press(B_SPACE);
        ASSERT_TRUE(WaitUntil([] { return MenuIsOpen(); }));
        EXPECT_TRUE(ChooseMenuLine(line)) << line;
        Settle();
    }
    template <typename Call>
    auto With(const char* name, Call call) {
        fWindow->Lock();
        const auto result = call(fWindow->FindView(name));
        fWindow->Unlock();
        return result;
    }
    std::string FieldLabel(const char* name) {
        return With(name, [](BView* view) {
            return std::string(static_cast<BMenuField*>(view)->MenuItem()->Label());
        });
    }
    void SetText(const char* name, const std::string& text) {
        With(name, [&](BView* view) {
            static_cast<BTextControl*>(view)->SetText(text.c_str());
            return true;
        });
    }
    bool IsEnabled(const char* name) {
        return With(name, [](BView* view) { return static_cast<BControl*>(view)->IsEnabled(); });
    }
    std::string Setting(const char* key) const {
        BString text;
        fSettings.Get(key, &text);
        return text.String();
    }
    bool UsesProxy() const {
        bool use = false;
        return fSettings.Get("proxy", &use) == B_OK && use;
    }
    int32 Bindings() const {
        int32 value = -1;
        fSettings.Get("key_binding", &value);
        return value;
    }

    ScratchFolder fFolder;
    SettingsFile fSettings;
    std::string fFont;
    FontWatch fWatch;
    NPPrefsWindow* fWindow = nullptr;
};

} // namespace

TEST_F(Prefs, AreChosenByKeysAlone) {
    Open();
    const auto [family, style] = FontWithStyle(1);
    ChooseFromFocus(family + "/" + style);
    EXPECT_EQ(FieldLabel("font"), family);
    Press(B_TAB);
    ChooseFromFocus("16");
    Press(B_TAB);
    ChooseFromFocus("Emacs");
    for (int i = 0; i < 3; i++) // Cancel, OK, the tabs
        Press(B_TAB);
    Press(B_RIGHT_ARROW);
    EXPECT_FALSE(IsEnabled("host"));
    Press(B_TAB);
    Press(B_SPACE);
    EXPECT_TRUE(IsEnabled("host"));
    Press(B_TAB);
    Press('A', B_COMMAND_KEY);
    Type(fWindow, "プロキシ.example");
    Settle();
    Accept();
    EXPECT_EQ(fWatch.WaitForFont(), family + "/" + style + " 16");
    EXPECT_EQ(Bindings(), 1);
    EXPECT_TRUE(UsesProxy());
    EXPECT_EQ(Setting("proxy_host"), "プロキシ.example");
    EXPECT_EQ(Setting("proxy_port"), "8080");
}

TEST_F(Prefs, AFamilyItselfGivesItsFirstStyle) {
    const auto [family, style] = FontWithStyle(1);
    const auto [first, regular] = FontWithStyle(0);
    fSettings.Replace("font_family", family.c_str());
    fSettings.Replace("font_style", style.c_str());
    Open();
    ChooseFromFocus(first);
    Accept();
    EXPECT_EQ(fWatch.WaitForFont(), first + "/" + regular + " 12");
}

TEST_F(Prefs, CancelChangesNothing) {
    for (const bool byKey : {true, false}) {
        Open();
        const auto [family, style] = FontWithStyle(1);
        ChooseFromFocus(family + "/" + style);
        GoToNetwork();
        SetText("host", "elsewhere");
        if (byKey)
            Key(fWindow, B_ESCAPE);
        else
            CloseByUser(fWindow);
        EXPECT_TRUE(WaitForClosed<NPPrefsWindow>());
        fWindow = nullptr;
    }
    EXPECT_FALSE(fWatch.HasSent());
    EXPECT_EQ(Setting("proxy_host"), "localhost");
}

TEST_F(Prefs, HostAndPortAreCutToWhatFits) {
    const std::string kanji = "漢"; // three bytes
    const struct {
        std::string host, port, storedHost, storedPort;
    } cases[] = {
        {std::string(64, 'h'), "12345678", std::string(63, 'h'), "1234567"},
        {std::string(63, 'h'), "1234567", std::string(63, 'h'), "1234567"},
        {std::string(62, 'h') + kanji, "12345" + kanji, std::string(62, 'h'), "12345"},
        {"", "", "", ""},
    };
    for (const auto& test : cases) {
        Open();
        GoToNetwork();
        SetText("host", test.host);
        SetText("port", test.port);
        Accept();
        EXPECT_EQ(Setting("proxy_host"), test.storedHost);
        EXPECT_EQ(Setting("proxy_port"), test.storedPort);
        EXPECT_FALSE(UsesProxy()); // the greyed texts are kept all the same
    }
}

// A font that was removed since, a size and a binding of the user's own.
TEST_F(Prefs, WhatIsNoChoiceStaysUntilAnotherIsChosen) {
    fSettings.Replace("font_family", "消えた書体");
    fSettings.Replace("font_size", 13.5f);
    fSettings.Replace("key_binding", int32(7));
    Open();
    EXPECT_EQ(FieldLabel("font"), "消えた書体");
    EXPECT_EQ(FieldLabel("size"), "13.5");
    Accept();
    EXPECT_EQ(fWatch.WaitForFont(), "");
    EXPECT_EQ(Bindings(), 7);
}

TEST_F(Prefs, AFamilyIsMarkedWithoutItsStyle) {
    fSettings.Replace("font_style", "消えた");
    Open();
    EXPECT_EQ(With("font",
                   [](BView* view) {
                       BMenuItem* marked = static_cast<BMenuField*>(view)->Menu()->FindMarked();
                       return std::string(marked != nullptr ? marked->Label() : "");
                   }),
              Setting("font_family"));
    Accept();
    EXPECT_EQ(fWatch.WaitForFont(), " 12");
}

TEST_F(Prefs, OpenOnce) {
    Open();
    NPPrefsWindow* const first = fWindow;
    Open();
    EXPECT_EQ(fWindow, first);
}

TEST_F(Prefs, AddProxySettingsThatAreMissing) {
    for (const char* key : {"proxy", "proxy_host", "proxy_port"})
        fSettings.RemoveName(key);
    Open();
    GoToNetwork();
    SetText("host", "here");
    Accept();
    EXPECT_EQ(Setting("proxy_host"), "here");
}
