#include "support/InputWindow.h"

#include <Looper.h>
#include <MenuBar.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>

#include <string>
#include <vector>

namespace {

using namespace server::testing;

using Codes = std::vector<uint32>;
using Labels = std::vector<std::string>;

// Notes what its items send, and marks one when menus begin.
class MenuWindow : public BWindow {
public:
    MenuWindow() : BWindow(BRect(50, 50, 449, 349), "menus", B_TITLED_WINDOW, 0) {
        bar = new BMenuBar(BRect(0, 0, 399, 19), "menubar");
        file = new BMenu("File");
        file->AddItem(new BMenuItem("New", new BMessage('newi'), 'N'));
        offline = new BMenuItem("Offline", new BMessage('offl'), 'L');
        file->AddItem(offline);
        file->AddSeparatorItem();
        gone = new BMenuItem("Disabled", new BMessage('disa'), 'D');
        gone->SetEnabled(false);
        file->AddItem(gone);
        bar->AddItem(file);
        edit = new BMenu("Edit");
        edit->AddItem(new BMenuItem("Find", new BMessage('find'), 'S'));
        bar->AddItem(edit);
        AddChild(bar);
    }

    void MenusBeginning() override {
        begun++;
        offline->SetMarked(true);
    }
    void MenusEnded() override { ended++; }
    void MessageReceived(BMessage* message) override {
        if (message->what >= 'a000' && message->what <= 'z999')
            codes.push_back(message->what);
        else
            BWindow::MessageReceived(message);
    }

    BMenuBar* bar;
    BMenu* file;
    BMenu* edit;
    BMenuItem* offline;
    BMenuItem* gone;
    int begun = 0;
    int ended = 0;
    Codes codes;
};

class MenuBarTest : public testing::Test {
protected:
    MenuBarTest() {
        window->Show();
        Activate(window, true);
        WaitUntilIdle(window);
    }
    ~MenuBarTest() override {
        window->Lock();
        window->Quit();
    }

    void Open(int32 title) {
        MouseDown(window, BPoint(title == 0 ? 15 : 60, 10));
        EXPECT_TRUE(WaitUntil(MenuIsOpen));
        MouseUp(window, BPoint(title == 0 ? 15 : 60, 10));
    }
    void WaitForEnd() {
        EXPECT_TRUE(WaitUntil([&] { return !MenuIsOpen(); }));
        WaitUntilIdle(window);
    }
    Codes Received() {
        WaitUntilIdle(window);
        Codes codes;
        window->Lock();
        codes.swap(window->codes);
        window->Unlock();
        return codes;
    }

    MenuWindow* window = new MenuWindow;
};

TEST_F(MenuBarTest, OpensWithTheMarksThatMenusBeginningMade) {
    Open(0);
    EXPECT_EQ(MenuLabels(), (Labels{"New", "Offline", "-", "Disabled"}));
    EXPECT_TRUE(MenuLineIsMarked("Offline"));
    EXPECT_FALSE(MenuLineIsEnabled("Disabled"));
    DismissMenu();
    WaitForEnd();
    EXPECT_EQ(window->begun, 1);
    EXPECT_EQ(window->ended, 1);
}

TEST_F(MenuBarTest, TheChosenItemsMessageReachesTheWindow) {
    Open(0);
    EXPECT_TRUE(ChooseMenuLine("New"));
    WaitForEnd();
    EXPECT_EQ(Received(), Codes{'newi'});
}

TEST_F(MenuBarTest, PointingAtAnotherTitleOpensItsMenu) {
    Open(0);
    PointAtTitle(1);
    EXPECT_TRUE(WaitUntil([] { return MenuLabels() == Labels{"Find"}; }));
    EXPECT_TRUE(ChooseMenuLine("Find"));
    WaitForEnd();
    EXPECT_EQ(Received(), Codes{'find'});
    EXPECT_EQ(window->begun, 1);
    EXPECT_EQ(window->ended, 1);
}

TEST_F(MenuBarTest, ShortcutsSendTheItemsMessageUnlessItIsDisabled) {
    Key(window, 'n', B_COMMAND_KEY);
    EXPECT_EQ(Received(), Codes{'newi'});
    Key(window, 'd', B_COMMAND_KEY);
    EXPECT_EQ(Received(), Codes{});
    window->Lock();
    window->gone->SetEnabled(true);
    window->edit->AddItem(new BMenuItem("Again", new BMessage('agai'), 'J'));
    window->Unlock();
    Key(window, 'd', B_COMMAND_KEY);
    Key(window, 'j', B_COMMAND_KEY);
    EXPECT_EQ(Received(), (Codes{'disa', 'agai'}));
}

TEST_F(MenuBarTest, AChangeOfAnOpenMenuIsShown) {
    Open(0);
    window->Lock();
    window->gone->SetEnabled(true);
    window->gone->SetMarked(true);
    window->Unlock();
    EXPECT_TRUE(WaitUntil([] { return MenuLineIsEnabled("Disabled"); }));
    EXPECT_TRUE(MenuLineIsMarked("Disabled"));
    DismissMenu();
    WaitForEnd();
}

TEST_F(MenuBarTest, AnItemThatHasGoneMeanwhileSendsNothing) {
    Open(1);
    window->Lock();
    delete window->edit->RemoveItem(static_cast<int32>(0));
    window->Unlock();
    ChooseMenuLine("Find");
    DismissMenu();
    WaitForEnd();
    EXPECT_EQ(Received(), Codes{});
}

TEST_F(MenuBarTest, F10OpensTheFirstMenuAndArrowsAndEnterChooseInTheNext) {
    Key(window, B_FUNCTION_KEY, 0, B_F10_KEY);
    EXPECT_TRUE(WaitUntil([] { return MenuIsOpen() && MenuLabels().front() == "New"; }));
    KeyInMenu(B_RIGHT_ARROW);
    EXPECT_TRUE(WaitUntil([] { return MenuLabels() == Labels{"Find"}; }));
    KeyInMenu(B_ENTER);
    WaitForEnd();
    EXPECT_EQ(Received(), Codes{'find'});
}

TEST(MenuLifetime, AWindowThatQuitsTakesItsOpenMenuAlong) {
    for (int round = 0; round < 3; round++) {
        MenuWindow* window = new MenuWindow;
        window->Show();
        Activate(window, true);
        WaitUntilIdle(window);
        MouseDown(window, BPoint(15, 10));
        EXPECT_TRUE(WaitUntil(MenuIsOpen));
        window->Lock();
        window->Quit();
        EXPECT_TRUE(WaitUntil([] { return !MenuIsOpen(); }));
    }
}

TEST_F(MenuBarTest, APopUpWithSubmenusDeliversAndDeletesItself) {
    window->PostMessage('none');
    class Opener : public BHandler {
    public:
        void MessageReceived(BMessage*) override {
            BPopUpMenu* menu = new BPopUpMenu("pop", false, false);
            BMenu* sub = new BMenu("More");
            sub->AddItem(new BMenuItem("Deep", new BMessage('deep')));
            menu->AddItem(sub);
            menu->AddItem(new BMenuItem("Flat", new BMessage('flat')));
            sub->SetTargetForItems(Looper());
            menu->SetTargetForItems(Looper());
            menu->SetAsyncAutoDestruct(true);
            menu->Go(BPoint(100, 100), true, false, BRect(95, 95, 105, 105), true);
        }
    };
    Opener opener;
    window->Lock();
    window->AddHandler(&opener);
    window->Unlock();
    for (const char* path : {"More/Deep", "Flat"}) {
        BMessenger(&opener).SendMessage('open');
        EXPECT_TRUE(WaitUntil(MenuIsOpen));
        EXPECT_TRUE(ChooseMenuLine(path));
        WaitForEnd();
    }
    EXPECT_EQ(Received(), (Codes{'none', 'deep', 'flat'}));
    window->Lock();
    window->RemoveHandler(&opener);
    window->Unlock();
}

TEST(MenuTree, FindsItemsBelowAndTellsWhereTheyAre) {
    BMenu menu("top");
    BMenu* sub = new BMenu("sub");
    BMenuItem* deep = new BMenuItem("deep", new BMessage('deep'));
    sub->AddItem(deep);
    menu.AddItem(new BMenuItem("first", new BMessage('frst')));
    menu.AddItem(sub);
    EXPECT_EQ(menu.FindItem("deep"), deep);
    EXPECT_EQ(menu.FindItem('deep'), deep);
    EXPECT_EQ(menu.FindItem("none"), nullptr);
    EXPECT_EQ(sub->Supermenu(), &menu);
    EXPECT_EQ(menu.IndexOf(sub), 1);
    EXPECT_STREQ(sub->Superitem()->Label(), "sub");
    menu.SetEnabled(false);
    EXPECT_FALSE(deep->IsEnabled());
    EXPECT_TRUE(menu.RemoveItem(sub));
    EXPECT_EQ(sub->Supermenu(), nullptr);
    delete sub;
}

TEST(MenuTree, InRadioModeOneItemIsMarkedAndNamesTheMenu) {
    BPopUpMenu* menu = new BPopUpMenu("choose");
    BMenuItem* one = new BMenuItem("One", nullptr);
    BMenuItem* two = new BMenuItem("Two", nullptr);
    menu->AddItem(one);
    menu->AddItem(two);
    BMenuField field(BRect(0, 0, 100, 23), "field", "Label", menu);
    EXPECT_STREQ(field.MenuItem()->Label(), "choose");
    two->SetMarked(true);
    EXPECT_STREQ(field.MenuItem()->Label(), "Two");
    one->SetMarked(true);
    EXPECT_FALSE(two->IsMarked());
    EXPECT_EQ(menu->FindMarked(), one);
}

TEST(MenuFieldTest, ChoosingChangesTheFieldAndSendsTheMessage) {
    InputWindow window;
    BPopUpMenu* menu = new BPopUpMenu("choose");
    menu->AddItem(new BMenuItem("One", nullptr));
    menu->AddItem(new BMenuItem("Two", nullptr));
    BMenuField* field = window.Add(new BMenuField(BRect(10, 10, 200, 33), "f", "", menu));
    window.Do([&] { field->MakeFocus(true); });
    Key(window.Get(), B_DOWN_ARROW);
    EXPECT_TRUE(WaitUntil(MenuIsOpen));
    EXPECT_TRUE(ChooseMenuLine("Two"));
    EXPECT_TRUE(WaitUntil([] { return !MenuIsOpen(); }));
    window.Settle();
    window.Do([&] { EXPECT_STREQ(field->MenuItem()->Label(), "Two"); });
}

} // namespace
