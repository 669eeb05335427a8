#include "post/PostDraft.h"
#include "post/PostHistory.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using Entries = std::vector<std::string>;

constexpr const char* kNames = "2ch/Name.log";
const PostTarget kThread{PostFamily::kBbsCgi, "h.jp", "news", "12"};

} // namespace

TEST(PostHistory, KeepsEachEntryOnceInTheOrderOfFirstUse) {
    ScratchFolder folder;
    PostHistory names("Name.log");
    EXPECT_TRUE(names.Entries().empty());
    for (const char* name : {"一", "b", "", "一", "B"})
        EXPECT_EQ(names.Add(name), B_OK);
    EXPECT_EQ(names.Entries(), (Entries{"一", "b", "B"}));
    EXPECT_EQ(folder.Read(kNames), "一\nb\nB\n");
    EXPECT_EQ(PostHistory("Name.log").Entries(), names.Entries());
}

TEST(PostHistory, TwoWindowsLoseNothingOfEachOther) {
    ScratchFolder folder;
    PostHistory first("Name.log");
    PostHistory second("Name.log");
    first.Add("a");
    second.Add("b");
    EXPECT_EQ(folder.Read(kNames), "a\nb\n");
}

TEST(PostHistory, AFileOfAnotherMakingDoesNoHarm) {
    ScratchFolder folder;
    const std::string tooLong(5000, 'x');
    folder.Write(kNames, "a\n" + tooLong + "\n\xFF\xFE\nrest");
    PostHistory names("Name.log");
    EXPECT_EQ(names.Entries(), (Entries{"a", "\xFF\xFE", "rest"}));
    folder.Write("2ch/Mail.log", "sage\n");
    EXPECT_EQ(PostHistory("Mail.log").Entries(), (Entries{"sage"}));
    names.Add("new");
    const std::string written = "a\n\xFF\xFE\nrest\nnew\n";
    EXPECT_EQ(folder.Read(kNames),
              written + ("a\n" + tooLong + "\n\xFF\xFE\nrest").substr(written.size()));
}

TEST(PostHistory, AnUnfinishedLastLineIsTheLastEntry) {
    ScratchFolder folder;
    folder.Write(kNames, "a\nb");
    PostHistory names("Name.log");
    EXPECT_EQ(names.Entries(), (Entries{"a", "b"}));
    folder.Write(kNames, "a\nb\nby hand");
    EXPECT_EQ(names.Add("c"), B_OK);
    EXPECT_EQ(folder.Read(kNames), "a\nb\nby hand\nc\n");
}

TEST(PostHistory, EntriesTooLongForALineAreNotWritten) {
    ScratchFolder folder;
    PostHistory names("Name.log");
    EXPECT_EQ(names.Add(std::string(4095, 'x')), B_OK);
    EXPECT_EQ(names.Add(std::string(4094, 'y')), B_OK);
    EXPECT_EQ(folder.Read(kNames), std::string(4094, 'y') + "\n");
}

TEST(PostDraft, IsKeptForItsThreadUntilItIsRemoved) {
    ScratchFolder folder;
    WrittenPost text;
    EXPECT_EQ(PostDraft(kThread).Load(&text), B_ENTRY_NOT_FOUND);
    const WrittenPost draft{"名前", "sage", "一行\n\n三行\n"};
    EXPECT_EQ(PostDraft(kThread).Save(draft), B_OK);
    EXPECT_EQ(PostDraft(kThread).Load(&text), B_OK);
    EXPECT_EQ(text, draft);
    EXPECT_EQ(PostDraft({kThread.family, "h.jp", "news", "13"}).Load(&text), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(folder.Read("2ch/Drafts/h.jp/news/12.txt"), "名前\nsage\n一行\n\n三行\n");
    EXPECT_EQ(PostDraft(kThread).Save({}), B_OK); // nothing is left of it
    EXPECT_EQ(PostDraft(kThread).Load(&text), B_ENTRY_NOT_FOUND);
}

TEST(PostDraft, OneThatCantBeWrittenLeavesTheOldOne) {
    ScratchFolder folder;
    PostDraft(kThread).Save({"", "", "old"});
    folder.MakeFolder("2ch/Drafts/h.jp/news/12.txt.new/in the way");
    EXPECT_NE(PostDraft(kThread).Save({"", "", "new"}), B_OK);
    WrittenPost text;
    EXPECT_EQ(PostDraft(kThread).Load(&text), B_OK);
    EXPECT_EQ(text.message, "old");
}

TEST(PostDraft, OneThatCantBeReadIsNeverRemovedNorReplaced) {
    ScratchFolder folder;
    const std::string path = folder.MakeFolder("2ch/Drafts/h.jp/news") + "/12.txt";
    std::filesystem::create_symlink("12.txt", path); // leads to itself
    PostDraft draft(kThread);
    WrittenPost text;
    EXPECT_NE(draft.Load(&text), B_OK);
    EXPECT_EQ(draft.Save({}), B_OK);
    draft.Remove();
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(draft.Save({"", "", "new"}), B_OK);
    EXPECT_EQ(folder.Read("2ch/Drafts/h.jp/news/12.txt"), "\n\nnew");
    EXPECT_TRUE(std::filesystem::is_symlink(path + ".unread"));
    draft.Remove();
    EXPECT_FALSE(std::filesystem::exists(path));
}
