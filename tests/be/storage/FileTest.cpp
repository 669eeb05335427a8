#include <File.h>

#include <ctime>
#include <filesystem>
#include <set>

#include <sys/stat.h>
#include <unistd.h>

#include <Directory.h>
#include <Entry.h>
#include <TypeConstants.h>

#include <gtest/gtest.h>

#include "support/Errno.h"
#include "support/ScratchFolder.h"

namespace fs = std::filesystem;

class FileTest : public testing::Test {
protected:
    status_t _Open(const std::string& name, uint32 mode) {
        return fFile.SetTo((fFolder / name).c_str(), mode);
    }

    ScratchFolder fFolder;
    BFile fFile;
};

TEST_F(FileTest, ModesSayWhatMayHappen) {
    EXPECT_EQ(B_ENTRY_NOT_FOUND, _Open("a", B_READ_ONLY));
    EXPECT_EQ(B_OK, _Open("a", B_READ_WRITE | B_CREATE_FILE));
    EXPECT_EQ(3, fFile.Write("abc", 3));
    EXPECT_EQ(B_FILE_EXISTS, _Open("a", B_READ_WRITE | B_CREATE_FILE | B_FAIL_IF_EXISTS));
    EXPECT_EQ(B_OK, _Open("a", B_READ_WRITE | B_CREATE_FILE));
    EXPECT_EQ("abc", fFolder.Read("a"));
    EXPECT_EQ(B_OK, _Open("a", B_WRITE_ONLY | B_OPEN_AT_END));
    EXPECT_EQ(3, fFile.Position());
    EXPECT_EQ(B_OK, _Open("a", B_READ_WRITE | B_CREATE_FILE | B_ERASE_FILE));
    EXPECT_EQ("", fFolder.Read("a"));
    EXPECT_EQ(B_BAD_VALUE, _Open("a", 3));
    EXPECT_EQ(B_BAD_VALUE, fFile.SetTo(static_cast<const char*>(nullptr), B_READ_ONLY));
    EXPECT_EQ(B_NO_INIT, BFile().InitCheck());
    EXPECT_EQ(B_NO_INIT, fFile.Write("x", 1));
}

TEST_F(FileTest, PlacesThatCanNotBeOpenedSayWhy) {
    fFolder.MakeFolder("folder");
    fFolder.Write("file", "");
    EXPECT_EQ(B_IS_A_DIRECTORY, _Open("folder", B_READ_WRITE));
    EXPECT_EQ(B_ENTRY_NOT_FOUND, _Open("none/a", B_READ_WRITE | B_CREATE_FILE));
    EXPECT_EQ(B_NOT_A_DIRECTORY, _Open("file/a", B_READ_WRITE | B_CREATE_FILE));
    EXPECT_EQ(B_NAME_TOO_LONG, _Open(std::string(300, 'x'), B_READ_WRITE | B_CREATE_FILE));
    EXPECT_EQ(B_DEVICE_FULL, BFile("/dev/full", B_WRITE_ONLY).Write("x", 1));
}

TEST_F(FileTest, APipeDoesNotMakeOpeningWait) {
    ASSERT_EQ(0, mkfifo((fFolder / "pipe").c_str(), 0600));
    EXPECT_EQ(B_OK, _Open("pipe", B_READ_ONLY));
    EXPECT_EQ(B_OK, BNode((fFolder / "pipe").c_str()).InitCheck());
}

TEST_F(FileTest, ReadsWritesAndSeeks) {
    ASSERT_EQ(B_OK, _Open("a", B_READ_WRITE | B_CREATE_FILE));
    EXPECT_EQ(6, fFile.Write("abcdef", 6));
    EXPECT_EQ(2, fFile.WriteAt(1, "XY", 2));
    EXPECT_EQ(6, fFile.Position());
    EXPECT_EQ(2, fFile.Seek(-4, SEEK_END));
    char buffer[8] = {};
    EXPECT_EQ(4, fFile.Read(buffer, sizeof(buffer)));
    EXPECT_STREQ("Ydef", buffer);
    EXPECT_EQ(0, fFile.Read(buffer, sizeof(buffer)));
    EXPECT_EQ(B_BAD_VALUE, fFile.Seek(-1, SEEK_SET));
    EXPECT_EQ(B_OK, fFile.SetSize(2));
    off_t size = 0;
    EXPECT_TRUE(fFile.GetSize(&size) == B_OK && size == 2);
    EXPECT_EQ("aX", fFolder.Read("a"));
}

TEST_F(FileTest, ALinkThatLeadsNowhereIsCreatedWhereItLeads) {
    fs::create_symlink("target", fFolder / "link");
    EXPECT_EQ(B_OK, _Open("link", B_READ_WRITE | B_CREATE_FILE));
    EXPECT_TRUE(fFolder.Has("target"));
}

TEST_F(FileTest, AttributesOfAFileBehindALinkAreTheFiles) {
    fFolder.Write("target", "x");
    fs::create_symlink("target", fFolder / "link");
    ASSERT_EQ(B_OK, _Open("link", B_READ_WRITE));
    EXPECT_EQ(1, fFile.WriteAttr("a", B_STRING_TYPE, 0, "v", 1));
    EXPECT_EQ("a CSTR v\n", fFolder.Read(".attributes/target"));
}

TEST_F(FileTest, AReadOnlyFolderRefuses) {
    if (geteuid() == 0)
        GTEST_SKIP() << "root may write everywhere";
    fs::permissions(fFolder.MakeFolder("locked"), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(B_PERMISSION_DENIED, _Open("locked/a", B_READ_WRITE | B_CREATE_FILE));
}

TEST_F(FileTest, OneAttributeOfAThousandFilesTakesMilliseconds) {
    int32 number = 7;
    for (int i = 0; i < 1000; i++) {
        ASSERT_EQ(B_OK, _Open(std::to_string(i) + ".dat", B_READ_WRITE | B_CREATE_FILE));
        ASSERT_EQ(4, fFile.WriteAttr("res_num", B_INT32_TYPE, 0, &number, 4));
    }
    BDirectory folder(fFolder.Path().c_str());
    BEntry entry;
    int count = 0;
    clock_t before = clock();
    while (folder.GetNextEntry(&entry) == B_OK) {
        BNode node(&entry);
        count += node.ReadAttr("res_num", B_INT32_TYPE, 0, &number, 4) == 4;
    }
    clock_t took = clock() - before;
    EXPECT_EQ(1000, count);
    // Processor time; without sanitizers it is a small part of this.
    EXPECT_LT(took, CLOCKS_PER_SEC / 2);
}

TEST_F(FileTest, AFolderListsItsEntriesWithoutTheAttributes) {
    fFolder.Write("a", "");
    fFolder.Write("b/c", "");
    fFolder.Write(".attributes/a", "k CSTR v\n");
    BDirectory folder(fFolder.Path().c_str());
    std::set<std::string> names;
    BEntry entry;
    status_t status = B_OK;
    while ((status = folder.GetNextEntry(&entry)) == B_OK)
        names.insert(entry.Name());
    EXPECT_EQ(B_ENTRY_NOT_FOUND, status);
    EXPECT_EQ((std::set<std::string>{"a", "b"}), names);
    EXPECT_EQ(2, folder.CountEntries());
    entry_ref ref;
    EXPECT_EQ(B_OK, folder.GetNextRef(&ref));
}

TEST_F(FileTest, AFolderFindsAndMakesEntries) {
    BDirectory folder(fFolder.Path().c_str()), inner;
    BEntry entry;
    EXPECT_EQ(B_ENTRY_NOT_FOUND, folder.FindEntry("sub", &entry));
    EXPECT_EQ(B_OK, folder.CreateDirectory("sub", &inner));
    EXPECT_EQ(B_FILE_EXISTS, folder.CreateDirectory("sub", nullptr));
    EXPECT_EQ(B_OK, inner.CreateFile("x", &fFile, true));
    EXPECT_EQ(B_FILE_EXISTS, inner.CreateFile("x", &fFile, true));
    EXPECT_EQ(B_OK, folder.FindEntry("sub/x", &entry));
    EXPECT_TRUE(folder.Contains("sub", B_DIRECTORY_NODE));
    EXPECT_FALSE(folder.Contains("sub", B_FILE_NODE));
    EXPECT_EQ(B_NOT_A_DIRECTORY, BDirectory((fFolder / "sub/x").c_str()).InitCheck());
    EXPECT_EQ(B_ENTRY_NOT_FOUND, BDirectory((fFolder / "none").c_str()).InitCheck());
}

TEST_F(FileTest, WholePathsOfFoldersAreMade) {
    EXPECT_EQ(B_OK, create_directory((fFolder / "a/b/c").c_str(), 0755));
    EXPECT_EQ(B_OK, create_directory((fFolder / "a/b/c").c_str(), 0755));
    EXPECT_TRUE(fFolder.Has("a/b/c"));
    fFolder.Write("file", "");
    EXPECT_EQ(B_NOT_A_DIRECTORY, create_directory((fFolder / "file").c_str(), 0755));
    EXPECT_EQ(B_NOT_A_DIRECTORY, create_directory((fFolder / "file/x").c_str(), 0755));
    EXPECT_EQ(B_BAD_VALUE, create_directory("", 0755));
}

TEST(Errno, EveryErrorIsNegativeAndKnown) {
    EXPECT_EQ(B_OK, errorFromErrno(0));
    EXPECT_EQ(B_DEVICE_FULL, errorFromErrno(ENOSPC));
    EXPECT_EQ(B_READ_ONLY_DEVICE, errorFromErrno(EROFS));
    EXPECT_EQ(B_PERMISSION_DENIED, errorFromErrno(EACCES));
    EXPECT_EQ(B_NOT_ALLOWED, errorFromErrno(EPERM));
    for (int error = 1; error < 200; error++)
        EXPECT_LT(errorFromErrno(error), 0);
}
