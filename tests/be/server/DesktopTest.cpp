#include "support/ChildProgram.h"
#include "support/ScratchFolder.h"

#include "server/Desktop.h"
#include "server/Testing.h"

#include <Application.h>
#include <Clipboard.h>
#include <Entry.h>
#include <Message.h>
#include <Path.h>
#include <Roster.h>

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

namespace {

std::string ClipboardText() {
    std::string text;
    if (!be_clipboard->Lock())
        return text;
    const void* data = nullptr;
    ssize_t size = 0;
    if (be_clipboard->Data()->FindData("text/plain", B_MIME_TYPE, &data, &size) == B_OK)
        text.assign(static_cast<const char*>(data), static_cast<size_t>(size));
    be_clipboard->Unlock();
    return text;
}

void Copy(const std::string& text) {
    ASSERT_TRUE(be_clipboard->Lock());
    EXPECT_EQ(B_OK, be_clipboard->Clear());
    be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, text.data(),
                                  static_cast<ssize_t>(text.size()));
    be_clipboard->Data()->AddInt32("other", 7);
    EXPECT_EQ(B_OK, be_clipboard->Commit());
    be_clipboard->Unlock();
}

} // namespace

TEST(Clipboard, GivesBackWhatWasCommitted) {
    Copy("写し copy");
    EXPECT_EQ("写し copy", ClipboardText());
    EXPECT_EQ("写し copy", server::ReadClipboard().utf8);
    be_clipboard->Lock();
    EXPECT_TRUE(be_clipboard->Data()->HasInt32("other"));
    be_clipboard->Unlock();
}

TEST(Clipboard, TakesWhatAnotherProgramPutThere) {
    Copy("ours");
    server::SetClipboardText("theirs");
    EXPECT_EQ("theirs", ClipboardText());
    be_clipboard->Lock();
    EXPECT_FALSE(be_clipboard->Data()->HasInt32("other"));
    be_clipboard->Unlock();
}

TEST(Clipboard, NeedsItsLock) {
    EXPECT_EQ(nullptr, be_clipboard->Data());
    EXPECT_EQ(B_NOT_ALLOWED, be_clipboard->Clear());
    EXPECT_EQ(B_NOT_ALLOWED, be_clipboard->Commit());
    EXPECT_EQ(B_NOT_ALLOWED, be_clipboard->Revert());
}

TEST(Clipboard, RevertBringsTheCommittedBack) {
    Copy("kept");
    be_clipboard->Lock();
    be_clipboard->Clear();
    EXPECT_EQ(B_OK, be_clipboard->Revert());
    EXPECT_TRUE(be_clipboard->Data()->HasData("text/plain", B_MIME_TYPE));
    be_clipboard->Unlock();
}

TEST(Roster, OpensUrlsAndFoldersThroughTheDesktop) {
    server::testing::RecordLaunches();
    const char* url = "http://127.0.0.1/?q=a b&c=%e3%81%82";
    EXPECT_EQ(B_OK, be_roster->Launch("application/x-vnd.Be.URL.http", 1, &url));
    entry_ref folder;
    ASSERT_EQ(B_OK, get_ref_for_path("/tmp", &folder));
    EXPECT_EQ(B_OK, be_roster->Launch(&folder));
    const char* const path = "/usr";
    EXPECT_EQ(B_OK, be_roster->Launch("application/x-vnd.Be-directory", 1, &path));
    EXPECT_EQ((std::vector<std::string>{url, "/tmp", path}), server::testing::Launches());
}

TEST(Roster, TheDesktopsOpenerGetsALinkByteForByteAndNothingElse) {
    ScratchFolder folder;
    const std::string opener =
        folder.Write("xdg-open", "#!/bin/sh\n"
                                 "printf '%s %s\\n' $# \"$1\" >> " +
                                     (folder / "got") + "\ncase $1 in *fail*) exit 4;; esac\n");
    std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
    const struct {
        const char* address;
        const char* answer;
    } cases[] = {
        {"http://www.example.com)", "opened"},
        {"http://x/,;>\"'", "opened"},
        {"http://HOST.Example/a|b c%e3\\`id`$(id)*", "opened"},
        {"https://x/\xE3\x81\x82\xFF\x01", "opened"},
        {"http://fail/", "failed"},
        {"--version", "refused"},
        {"/etc/passwd", "refused"},
    };
    testprograms::ChildProgram child("opens links", folder.Path());
    std::string got;
    std::string answers;
    for (const auto& test : cases) {
        child.Tell(test.address);
        answers += std::string(test.answer) + "\n";
        EXPECT_TRUE(child.WaitForOutput(answers)) << test.address;
        if (strcmp(test.answer, "refused") != 0)
            got += "1 " + std::string(test.address) + "\n";
    }
    EXPECT_EQ(folder.Read("got"), got);
}

TEST(Roster, WithoutAnOpenerWhatTheToolkitWouldChangeIsNotOpened) {
    ScratchFolder folder;
    testprograms::ChildProgram child("opens links", folder.Path());
    child.Tell("http://HOST.example/a|b");
    EXPECT_TRUE(child.WaitForOutput("failed\n"));
}

TEST(Roster, RefusesWhatItCannotOpen) {
    server::testing::RecordLaunches();
    const char* url = "http://127.0.0.1/";
    const char* empty = "";
    EXPECT_EQ(B_LAUNCH_FAILED_APP_NOT_FOUND, be_roster->Launch("text/plain", 1, &url));
    EXPECT_EQ(B_BAD_VALUE, be_roster->Launch("application/x-vnd.Be.URL.http", 1, &empty));
    const char* const missing = "/no/such/folder";
    EXPECT_EQ(B_ENTRY_NOT_FOUND, be_roster->Launch("application/x-vnd.Be-directory", 1, &missing));
    EXPECT_EQ(B_BAD_VALUE, be_roster->Launch("application/x-vnd.Be.URL.http", 0, nullptr));
    EXPECT_EQ(B_BAD_VALUE, be_roster->Launch(static_cast<const entry_ref*>(nullptr)));
    EXPECT_TRUE(server::testing::Launches().empty());
}

TEST(Roster, KnowsTheRunningProgram) {
    app_info info;
    ASSERT_EQ(B_OK, be_app->GetAppInfo(&info));
    EXPECT_STREQ(be_app->Signature(), info.signature);
    const BEntry entry(&info.ref);
    BPath path;
    EXPECT_EQ(B_OK, entry.GetPath(&path));
    EXPECT_STREQ("be_server_tests", path.Leaf());
    EXPECT_TRUE(be_roster->IsRunning(be_app->Signature()));
    EXPECT_FALSE(be_roster->IsRunning("application/x-vnd.other"));
}

TEST(PrimarySelection, OffersWhatIsSelected) {
    server::OfferPrimarySelection("選択");
    EXPECT_EQ("選択", server::testing::PrimarySelection());
}
