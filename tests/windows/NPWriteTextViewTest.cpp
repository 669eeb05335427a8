#include "windows/NPWriteTextView.h"

#include "support/AlertWatch.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"
#include "support/Writer.h"

#include <gtest/gtest.h>

namespace {

void OpenWithBindings(NPWriteTextView::Bindings bindings) {
    WriteWindowSetup setup = SetupFor(9);
    setup.bindings = bindings;
    NPWriteWindow::Open(setup);
}

} // namespace

TEST(NPWriteTextView, EmacsKeysWorkWhenTheyAreOn) {
    ScratchFolder folder;
    OpenWithBindings(NPWriteTextView::Bindings::kEmacs);
    Writer writer;
    writer.Type("あbc");
    writer.Press(B_ENTER);
    writer.Type("def");
    SetClipboard("");
    const struct {
        char key;
        int32 from;
        int32 caret;
        const char* text;
    } cases[] = {
        {'a', 8, 6, "あbc\ndef"},   {'e', 6, 9, "あbc\ndef"},    {'b', 3, 0, "あbc\ndef"},
        {'f', 0, 3, "あbc\ndef"},   {'p', 6, 0, "あbc\ndef"},    {'n', 0, 6, "あbc\ndef"},
        {'d', 0, 0, "bc\ndef"},     {'k', 1, 1, "b\ndef"},       {'y', 1, 2, "bc\ndef"},
        {'k', 2, 2, "bcdef"},       {'y', 2, 3, "bc\ndef"},      {'m', 0, 1, "\nbc\ndef"},
        {B_END, 1, 3, "\nbc\ndef"}, {B_HOME, 3, 1, "\nbc\ndef"},
    };
    for (const auto& test : cases) {
        writer.Select(test.from);
        writer.Press(test.key, test.key >= 'a' ? B_COMMAND_KEY : 0);
        EXPECT_EQ(writer.Text(), test.text) << test.key;
        EXPECT_EQ(writer.Caret(), test.caret) << test.key;
    }
    writer.Press('z', B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "bc\ndef");
}

TEST(NPWriteTextView, WithoutThemTheKeysAreThePlatforms) {
    ScratchFolder folder;
    OpenWithBindings(NPWriteTextView::Bindings::kPlatform);
    Writer writer;
    writer.Type("abc");
    SetClipboard("X");
    for (const char key : {'k', 'd', 'b', 'y', 'm', 'n', 'p', 'e', 'f'})
        writer.Press(key, B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "abc");
    EXPECT_EQ(writer.Caret(), 3);
    writer.Press('v', B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "abcX");
    writer.Press('a', B_COMMAND_KEY);
    EXPECT_EQ(writer.Caret(), -1); // all is selected
    writer.Press('x', B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "");
    writer.Press('z', B_COMMAND_KEY);
    writer.Press('z', B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "abc");
    writer.Press('z', B_COMMAND_KEY | B_SHIFT_KEY);
    EXPECT_EQ(writer.Text(), "abcX");
}

TEST(NPWriteTextView, QuotesEachLineOfTheClipboard) {
    ScratchFolder folder;
    OpenWithBindings(NPWriteTextView::Bindings::kPlatform);
    Writer writer;
    writer.Type("x");
    SetClipboard("一\r\n\n二\r三");
    writer.Window()->PostMessage(kMsgQuotePaste, writer.Editor());
    writer.Settle();
    EXPECT_EQ(writer.Text(), "x> 一\n> \n> 二\n> 三\n");
    writer.Press('z', B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "x");
}

TEST(NPWriteTextView, WhatIsBeingComposedIsKeptByWhatChangesTheText) {
    ScratchFolder folder;
    OpenWithBindings(NPWriteTextView::Bindings::kEmacs);
    Writer writer;
    SetClipboard("X");
    const struct {
        char key; // 0: the menu's quoting
        const char* text;
        int32 caret;
    } cases[] = {
        {'a', "かな字", 0},
        {'k', "かな", 6},
        {'y', "かなX字", 7},
        {'\0', "かな> X\n字", 10},
    };
    for (const auto& test : cases) {
        writer.Do([&] { writer.Editor()->SetText("字"); });
        server::testing::Compose(writer.Window(), "かな", 6);
        writer.Settle();
        EXPECT_EQ(writer.Text(), "かな字");
        SetClipboard("X");
        if (test.key != '\0')
            writer.Press(test.key, B_COMMAND_KEY);
        else
            writer.Window()->PostMessage(kMsgQuotePaste, writer.Editor());
        writer.Settle();
        server::testing::CommitComposition(writer.Window(), "");
        writer.Settle();
        EXPECT_EQ(writer.Text(), test.text) << test.key;
        EXPECT_EQ(writer.Caret(), test.caret) << test.key;
    }
}

TEST(NPWriteTextView, JapaneseIsComposedInPlaceWithEmacsKeysOn) {
    ScratchFolder folder;
    OpenWithBindings(NPWriteTextView::Bindings::kEmacs);
    Writer writer;
    writer.Type("前後");
    writer.Press('b', B_COMMAND_KEY);
    server::testing::Compose(writer.Window(), "にほん", 9);
    writer.Settle();
    EXPECT_EQ(writer.Text(), "前にほん後");
    server::testing::Compose(writer.Window(), "日本", 6);
    server::testing::CommitComposition(writer.Window(), "日本");
    writer.Settle();
    EXPECT_EQ(writer.Text(), "前日本後");
    writer.Press('f', B_COMMAND_KEY);
    EXPECT_EQ(writer.Caret(), 12);
    writer.Press('z', B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), "前後");
}

TEST(NPWriteTextView, TheMenuKeyOpensItsMenu) {
    ScratchFolder folder;
    OpenWithBindings(NPWriteTextView::Bindings::kPlatform);
    Writer writer;
    writer.Type("x");
    SetClipboard("引用");
    server::testing::MenuKey(writer.Window());
    EXPECT_TRUE(server::testing::WaitUntil([] { return server::testing::MenuIsOpen(); }));
    EXPECT_TRUE(server::testing::ChooseMenuLine("引用貼付"));
    EXPECT_TRUE(server::testing::WaitUntil([&] { return writer.Text() == "x> 引用\n"; }));
}

TEST(NPWriteTextView, NothingChangesItWhileAPostIsUnderWay) {
    ScratchFolder folder;
    RawServer server({RawServer::Stall()});
    WriteWindowSetup setup = SetupFor(server.Port());
    setup.bindings = NPWriteTextView::Bindings::kEmacs;
    NPWriteWindow::Open(setup);
    Writer writer;
    writer.Type("ab");
    writer.Send();
    server.WaitForRequest();
    SetClipboard("X");
    for (const char key : {'z', 'y', 'k', 'd', 'm', 'v', 'x'})
        writer.Press(key, B_COMMAND_KEY);
    for (const uint32 command : {uint32(B_UNDO), uint32(B_PASTE), uint32(kMsgQuotePaste)})
        writer.Window()->PostMessage(command, writer.Editor());
    BMessage chosen(kMsgNameChosen);
    chosen.AddString("text", "name");
    writer.Window()->PostMessage(&chosen);
    writer.Settle();
    EXPECT_EQ(writer.Text(), "ab");
    EXPECT_EQ(writer.Field("name"), "");
    writer.Window()->PostMessage(kMsgPostFailed);
    EXPECT_EQ(WaitForAlert(), "書き込み失敗！");
    DismissAlert();
    EXPECT_TRUE(server::testing::WaitUntil([&] { return writer.CanSend(); }));
    writer.Press('z', B_COMMAND_KEY);
    EXPECT_EQ(writer.Text(), ""); // what was typed is one step
}
