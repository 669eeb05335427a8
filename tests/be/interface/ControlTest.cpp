#include "support/InputWindow.h"

#include <Box.h>
#include <Button.h>
#include <CheckBox.h>
#include <ListView.h>
#include <Message.h>
#include <RadioButton.h>
#include <StringView.h>
#include <TabView.h>
#include <TextControl.h>

#include <atomic>
#include <string>
#include <vector>

namespace {

using namespace server::testing;

// Notes what arrives; lives in the window.
class Recorder : public BView {
public:
    Recorder() : BView(BRect(380, 280, 390, 290), "recorder", B_FOLLOW_NONE, 0) {}

    void MessageReceived(BMessage* message) override {
        if (message->what < 'a000' || message->what > 'z999') {
            BView::MessageReceived(message);
            return;
        }
        codes.push_back(message->what);
        message->FindInt32("be:value", &value);
    }

    std::vector<uint32> codes;
    int32 value = -1;
};

class ControlTest : public testing::Test {
protected:
    ControlTest() { window.Add(recorder); }

    template <typename Control>
    Control* Add(Control* control) {
        window.Do([&] {
            window->AddChild(control);
            control->SetTarget(recorder);
        });
        window.Settle();
        return control;
    }
    std::vector<uint32> Received() {
        window.Settle();
        std::vector<uint32> codes;
        window.Do([&] { codes.swap(recorder->codes); });
        return codes;
    }

    using Codes = std::vector<uint32>;

    InputWindow window;
    Recorder* recorder = new Recorder;
};

TEST_F(ControlTest, AButtonSendsWhenReleasedInsideAndNotOutside) {
    Add(new BButton(BRect(10, 10, 89, 33), "b", "OK", new BMessage('push')));
    window.Click(BPoint(40, 20));
    EXPECT_EQ(Received(), Codes{'push'});
    window.Drag(BPoint(40, 20), BPoint(200, 200));
    EXPECT_EQ(Received(), Codes{});
    Click(window.Get(), BPoint(40, 20), 2);
    EXPECT_EQ(Received(), Codes{});
}

TEST_F(ControlTest, ADisabledButtonSendsNothingAndIsSkippedByTab) {
    BButton* first = Add(new BButton(BRect(10, 10, 89, 33), "1", "1", new BMessage('one_')));
    BButton* second = Add(new BButton(BRect(10, 40, 89, 63), "2", "2", new BMessage('two_')));
    BButton* third = Add(new BButton(BRect(10, 70, 89, 93), "3", "3", new BMessage('thre')));
    window.Do([&] {
        second->SetEnabled(false);
        first->MakeFocus(true);
    });
    window.Click(BPoint(40, 50));
    EXPECT_EQ(Received(), Codes{});
    window.Key(B_TAB);
    window.Do([&] {
        EXPECT_TRUE(third->IsFocus());
        second->SetEnabled(true);
        EXPECT_NE(second->Flags() & B_NAVIGABLE, 0u);
    });
    window.Key(B_SPACE);
    EXPECT_EQ(Received(), Codes{'thre'});
}

TEST_F(ControlTest, EnterPressesTheDefaultButtonFromATextControl) {
    BButton* button = Add(new BButton(BRect(10, 50, 89, 73), "b", "OK", new BMessage('push')));
    BTextControl* field =
        Add(new BTextControl(BRect(10, 10, 200, 33), "t", "Text", "", new BMessage('text')));
    window.Do([&] {
        button->MakeDefault(true);
        field->MakeFocus(true);
    });
    window.Type("a");
    window.Key(B_ENTER);
    EXPECT_EQ(Received(), Codes{'push'});
}

TEST_F(ControlTest, ACheckBoxTogglesByMouseAndKey) {
    BCheckBox* box = Add(new BCheckBox(BRect(10, 10, 150, 33), "c", "Check", new BMessage('chek')));
    window.Click(BPoint(20, 20));
    EXPECT_EQ(Received(), Codes{'chek'});
    window.Do([&] { EXPECT_EQ(recorder->value, B_CONTROL_ON); });
    window.Do([&] { box->MakeFocus(true); });
    window.Key(B_SPACE);
    EXPECT_EQ(Received(), Codes{'chek'});
    window.Do([&] { EXPECT_EQ(box->Value(), B_CONTROL_OFF); });
}

TEST_F(ControlTest, OfRadioButtonsExactlyOneIsOn) {
    BRadioButton* one =
        Add(new BRadioButton(BRect(10, 10, 90, 33), "1", "One", new BMessage('one_')));
    BRadioButton* two =
        Add(new BRadioButton(BRect(10, 40, 90, 63), "2", "Two", new BMessage('two_')));
    window.Do([&] { one->SetValue(B_CONTROL_ON); });
    window.Click(BPoint(20, 50));
    EXPECT_EQ(Received(), Codes{'two_'});
    window.Do([&] {
        EXPECT_EQ(one->Value(), B_CONTROL_OFF);
        two->MakeFocus(true);
    });
    window.Key(B_UP_ARROW);
    EXPECT_EQ(Received(), Codes{'one_'});
    window.Do([&] { EXPECT_EQ(two->Value(), B_CONTROL_OFF); });
}

TEST_F(ControlTest, ATextControlTellsOfChangesAndOfItsEnd) {
    BTextControl* field =
        Add(new BTextControl(BRect(10, 10, 200, 33), "t", "Text", "old", new BMessage('done')));
    BButton* next = Add(new BButton(BRect(10, 50, 89, 73), "b", "OK", nullptr));
    window.Do([&] {
        field->SetModificationMessage(new BMessage('modi'));
        field->MakeFocus(true);
    });
    window.Type("日本");
    EXPECT_EQ(Received(), (Codes{'modi', 'modi'}));
    window.Do([&] { EXPECT_STREQ(field->Text(), "日本"); });
    window.Key(B_TAB);
    EXPECT_EQ(Received(), Codes{'done'});
    window.Do([&] { EXPECT_TRUE(next->IsFocus()); });
    window.Key(B_TAB, B_SHIFT_KEY);
    window.Key(B_TAB);
    EXPECT_EQ(Received(), Codes{});
}

TEST_F(ControlTest, ATextControlStaysOneLineAndCanBeDisabled) {
    BTextControl* field =
        Add(new BTextControl(BRect(10, 10, 200, 33), "t", "Text", "a\nb", nullptr));
    window.Do([&] {
        EXPECT_STREQ(field->Text(), "a b");
        field->SetEnabled(false);
    });
    window.Click(BPoint(150, 20));
    window.Type("x");
    window.Do([&] {
        EXPECT_STREQ(field->Text(), "a b");
        EXPECT_FALSE(field->TextView()->IsFocus());
    });
}

TEST_F(ControlTest, TabsShowOneViewAndKeepTheOthers) {
    BTabView* tabs = new BTabView(BRect(10, 10, 300, 200), "tabs");
    BTextControl* field = new BTextControl(BRect(5, 5, 200, 28), "field", "", "kept", nullptr);
    tabs->AddTab(new BView(BRect(0, 0, 280, 150), "first", B_FOLLOW_ALL, 0));
    BView* second = new BView(BRect(0, 0, 280, 150), "second", B_FOLLOW_ALL, 0);
    second->AddChild(field);
    tabs->AddTab(second);
    window.Add(tabs);
    BPoint title;
    window.Do([&] {
        EXPECT_EQ(tabs->Selection(), 0);
        EXPECT_EQ(second->Window(), nullptr);
        const BRect frame = tabs->ConvertToParent(tabs->TabFrame(1));
        title = BPoint(frame.left + 8, frame.top + 8);
    });
    window.Click(title);
    window.Do([&] {
        EXPECT_EQ(tabs->Selection(), 1);
        EXPECT_EQ(second->Window(), window.Get());
        tabs->MakeFocus(true);
    });
    window.Key(B_LEFT_ARROW);
    window.Do([&] {
        EXPECT_EQ(tabs->Selection(), 0);
        EXPECT_STREQ(field->Text(), "kept");
    });
}

TEST(StringViewTest, ATextCutInTheMiddleShowsItsEnd) {
    InputWindow window;
    const auto pictureOf = [&](BStringView* view, const char* text) {
        window.Do([&] { view->SetText(text); });
        window.Settle();
        return Snapshot(window.Get()).pixels;
    };
    for (const uint32 mode : {B_TRUNCATE_MIDDLE, B_TRUNCATE_END}) {
        auto* view = window.Add(new BStringView(BRect(0, 0, 79, 20), "view", ""));
        window.Do([&] { view->SetTruncation(mode); });
        const bool showsEnd = pictureOf(view, "とても長いスレッドの題名です (111)") !=
                              pictureOf(view, "とても長いスレッドの題名です (999)");
        EXPECT_EQ(mode == B_TRUNCATE_MIDDLE, showsEnd);
    }
}

class ListTest : public ControlTest {
protected:
    ListTest() {
        for (int i = 0; i < 30; i++)
            list->AddItem(new BStringItem(std::to_string(i).c_str()));
        Add(list);
        window.Do([&] {
            list->SetSelectionMessage(new BMessage('sele'));
            list->SetInvocationMessage(new BMessage('invo'));
            list->MakeFocus(true);
        });
    }
    ~ListTest() override {
        window.Do([&] {
            while (BListItem* item = list->RemoveItem(list->CountItems() - 1))
                delete item;
        });
    }

    BListView* list = new BListView(BRect(10, 10, 200, 209), "list", B_MULTIPLE_SELECTION_LIST);
};

TEST_F(ListTest, KeysMoveTheSelectionAndScrollItIntoView) {
    window.Key(B_DOWN_ARROW);
    window.Key(B_DOWN_ARROW);
    EXPECT_EQ(Received(), (Codes{'sele', 'sele'}));
    window.Do([&] { EXPECT_EQ(list->CurrentSelection(), 1); });
    window.Key(B_END);
    window.Do([&] {
        EXPECT_EQ(list->CurrentSelection(), 29);
        EXPECT_TRUE(list->Bounds().Contains(list->ItemFrame(29)));
    });
    Received();
    window.Key(B_ENTER);
    EXPECT_EQ(Received(), Codes{'invo'});
}

TEST_F(ListTest, ShiftExtendsAndCtrlTogglesTheSelection) {
    window.Click(BPoint(50, 20));
    window.Click(BPoint(50, 80), B_SHIFT_KEY);
    window.Do([&] {
        EXPECT_EQ(list->CurrentSelection(0), 0);
        EXPECT_EQ(list->CurrentSelection(3), 3);
        EXPECT_EQ(list->CurrentSelection(4), -1);
    });
    window.Click(BPoint(50, 40), B_COMMAND_KEY);
    window.Do([&] { EXPECT_FALSE(list->IsItemSelected(1)); });
}

} // namespace
