#include <Entry.h>

#include <filesystem>

#include <Directory.h>
#include <FindDirectory.h>
#include <Node.h>
#include <Path.h>

#include <gtest/gtest.h>

#include "support/ScratchFolder.h"

namespace fs = std::filesystem;

class EntryTest : public testing::Test {
protected:
    std::string _PathOf(const BEntry& entry) {
        BPath path(&entry);
        return path.InitCheck() == B_OK ? path.Path() : "";
    }

    ScratchFolder fFolder;
};

TEST_F(EntryTest, NeedsItsFolderButNotItself) {
    BEntry entry((fFolder / "none.dat").c_str());
    EXPECT_EQ(B_OK, entry.InitCheck());
    EXPECT_FALSE(entry.Exists());
    EXPECT_STREQ("none.dat", entry.Name());
    EXPECT_EQ(B_ENTRY_NOT_FOUND, BEntry((fFolder / "no/file").c_str()).InitCheck());
    fFolder.Write("file", "");
    EXPECT_EQ(B_NOT_A_DIRECTORY, BEntry((fFolder / "file/inner").c_str()).InitCheck());
    EXPECT_EQ(B_NAME_TOO_LONG, BEntry((fFolder / std::string(256, 'x')).c_str()).InitCheck());
    EXPECT_EQ(B_BAD_VALUE, BEntry(static_cast<const char*>(nullptr)).InitCheck());
    EXPECT_EQ(B_NO_INIT, BEntry().InitCheck());
}

TEST_F(EntryTest, ALinkIsFollowedOnRequest) {
    fFolder.Write("real", "data");
    fs::create_symlink("real", fFolder / "link");
    fs::create_symlink(fFolder / "to come", fFolder / "dangling");
    fs::create_symlink("loop", fFolder / "loop");
    EXPECT_EQ(fFolder / "link", _PathOf(BEntry((fFolder / "link").c_str())));
    EXPECT_TRUE(BEntry((fFolder / "link").c_str()).IsSymLink());
    EXPECT_EQ(fFolder / "real", _PathOf(BEntry((fFolder / "link").c_str(), true)));
    EXPECT_EQ(fFolder / "to come", _PathOf(BEntry((fFolder / "dangling").c_str(), true)));
    EXPECT_EQ(B_LINK_LIMIT, BEntry((fFolder / "loop").c_str(), true).InitCheck());
}

TEST_F(EntryTest, RenameReplacesInOneStepOnlyWhenAsked) {
    fFolder.Write("old", "old");
    BEntry entry(fFolder.Write("new", "new").c_str());
    EXPECT_EQ(B_FILE_EXISTS, entry.Rename("old"));
    EXPECT_EQ("old", fFolder.Read("old"));
    EXPECT_EQ(B_OK, entry.Rename("old", true));
    EXPECT_EQ("new", fFolder.Read("old"));
    EXPECT_FALSE(fFolder.Has("new"));
    EXPECT_STREQ("old", entry.Name());
    EXPECT_EQ(B_OK, entry.Rename("old", true));
    EXPECT_EQ("new", fFolder.Read("old"));
}

TEST_F(EntryTest, TwoNamesOfOneFileAreNotMadeOne) {
    fFolder.Write("a", "x");
    fs::create_hard_link(fFolder / "a", fFolder / "b");
    EXPECT_EQ(B_NOT_ALLOWED, BEntry((fFolder / "a").c_str()).Rename("b", true));
}

TEST_F(EntryTest, MovesToAnotherFolder) {
    BEntry entry(fFolder.Write("a", "x").c_str());
    fFolder.Write(".attributes/a", "k CSTR v\n");
    BDirectory folder(fFolder.MakeFolder("sub").c_str());
    EXPECT_EQ(B_OK, entry.MoveTo(&folder));
    EXPECT_EQ("x", fFolder.Read("sub/a"));
    EXPECT_EQ("k CSTR v\n", fFolder.Read("sub/.attributes/a"));
    EXPECT_EQ(B_OK, entry.MoveTo(&folder, "b"));
    EXPECT_EQ("x", fFolder.Read("sub/b"));
}

TEST_F(EntryTest, AFolderIsRemovedWhenOnlyAttributesAreLeft) {
    fFolder.Write("sub/file", "x");
    fFolder.Write("sub/.attributes/file", "k CSTR v\n");
    BEntry folder((fFolder / "sub").c_str());
    EXPECT_EQ(B_DIRECTORY_NOT_EMPTY, folder.Remove());
    EXPECT_EQ(B_OK, BEntry((fFolder / "sub/file").c_str()).Remove());
    EXPECT_EQ(B_OK, folder.Remove());
    EXPECT_FALSE(folder.Exists());
    EXPECT_EQ(B_ENTRY_NOT_FOUND, folder.Remove());
}

TEST_F(EntryTest, ARefLeadsBack) {
    std::string path = fFolder.Write("a.dat", "x");
    entry_ref ref;
    ASSERT_EQ(B_OK, get_ref_for_path(path.c_str(), &ref));
    EXPECT_STREQ("a.dat", ref.name);
    EXPECT_EQ(path, _PathOf(BEntry(&ref)));
    EXPECT_TRUE(BNode(&ref) == BNode(path.c_str()));
    ref.set_name("b.dat");
    EXPECT_EQ(fFolder / "b.dat", _PathOf(BEntry(&ref)));
    entry_ref none;
    EXPECT_EQ(B_BAD_VALUE, BEntry(&none).InitCheck());
}

TEST_F(EntryTest, KnowsItsParent) {
    BEntry entry((fFolder / "a").c_str()), parent;
    EXPECT_EQ(B_OK, entry.GetParent(&parent));
    EXPECT_EQ(fFolder.Path(), _PathOf(parent));
    EXPECT_EQ(B_ENTRY_NOT_FOUND, BEntry("/").GetParent(&parent));
}

TEST(BPath, IsCleanedAndBuilt) {
    EXPECT_STREQ("/tmp/a/b", BPath("//tmp//a/", "b/").Path());
    EXPECT_STREQ("b", BPath("/tmp/a/b").Leaf());
    EXPECT_STREQ("/", BPath("/").Path());
    BPath path("/tmp");
    EXPECT_EQ(B_OK, path.Append("2ch/2chCache"));
    EXPECT_EQ(B_OK, path.Append("host"));
    EXPECT_STREQ("/tmp/2ch/2chCache/host", path.Path());
    BPath parent;
    EXPECT_EQ(B_OK, path.GetParent(&parent));
    EXPECT_TRUE(parent == "/tmp/2ch/2chCache");
}

TEST(BPath, DotsAreWorkedOut) {
    EXPECT_STREQ("/usr", BPath("/usr/lib/..").Path());
    EXPECT_STREQ("/usr/x", BPath("/usr/./x").Path());
    EXPECT_EQ(B_ENTRY_NOT_FOUND, BPath("/no such folder/../x").InitCheck());
    EXPECT_NE(nullptr, BPath(".").Path());
}

TEST(BPath, BadPartsUnsetIt) {
    BPath path("/tmp");
    EXPECT_EQ(B_BAD_VALUE, path.Append("/absolute"));
    EXPECT_EQ(nullptr, path.Path());
    EXPECT_EQ(B_BAD_VALUE, path.Append("x"));
    EXPECT_EQ(B_BAD_VALUE, BPath("").InitCheck());
    EXPECT_EQ(B_BAD_VALUE, BPath(static_cast<const char*>(nullptr)).InitCheck());
}

TEST(FindDirectory, TheSettingsFollowTheUsersVariable) {
    ScratchFolder folder;
    BPath path;
    setenv("XDG_CONFIG_HOME", (folder / "settings").c_str(), 1);
    EXPECT_EQ(B_OK, find_directory(B_USER_SETTINGS_DIRECTORY, &path));
    EXPECT_EQ(folder / "settings", path.Path());
    EXPECT_FALSE(folder.Has("settings"));
    EXPECT_EQ(B_OK, find_directory(B_USER_SETTINGS_DIRECTORY, &path, true));
    EXPECT_TRUE(folder.Has("settings"));
    setenv("XDG_CONFIG_HOME", "relative", 1);
    setenv("HOME", folder.Path().c_str(), 1);
    EXPECT_EQ(B_OK, find_directory(B_USER_SETTINGS_DIRECTORY, &path));
    EXPECT_EQ(folder / ".config", path.Path());
    EXPECT_EQ(B_BAD_VALUE, find_directory(static_cast<directory_which>(-1), &path));
}
