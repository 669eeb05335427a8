#include <Node.h>

#include <cstring>
#include <vector>

#include <Entry.h>
#include <File.h>
#include <NodeInfo.h>
#include <OS.h>
#include <String.h>
#include <TypeConstants.h>
#include <fs_attr.h>

#include <gtest/gtest.h>

#include "support/ScratchFolder.h"

class NodeTest : public testing::Test {
protected:
    ScratchFolder fFolder;
    std::string fPath = fFolder.Write("1.dat", "data");

    static void _SetCount(const std::string& path, int32 count) {
        BNode node(path.c_str());
        ASSERT_EQ(4, node.WriteAttr("res_num", B_INT32_TYPE, 0, &count, sizeof(count)));
    }
    static int32 _Count(const std::string& path) {
        int32 count = -1;
        ssize_t size = BNode(path.c_str()).ReadAttr("res_num", B_INT32_TYPE, 0, &count, 4);
        return size == 4 ? count : -1;
    }
    std::string _Side(const std::string& name = "1.dat") const {
        return fFolder.Read(".attributes/" + name);
    }
};

TEST_F(NodeTest, AttributesAreLinesOfASideFile) {
    BNode node(fPath.c_str());
    EXPECT_EQ(6, node.WriteAttr("title", B_STRING_TYPE, 0, "題名", 6));
    _SetCount(fPath, 12);
    EXPECT_EQ("title CSTR 題名\nres_num LONG 12\n", _Side());
    attr_info info;
    ASSERT_EQ(B_OK, node.GetAttrInfo("title", &info));
    EXPECT_EQ(6, info.size);
    EXPECT_EQ(uint32(B_STRING_TYPE), info.type);
}

TEST_F(NodeTest, AnEditedSideFileIsReadAsItStands) {
    _SetCount(fPath, 12);
    fFolder.Write(".attributes/1.dat", "garbage\nres_num LONG 77\n");
    EXPECT_EQ(77, _Count(fPath));
}

TEST_F(NodeTest, AMissingAttributeLeavesTheBufferAlone) {
    BNode node(fPath.c_str());
    int32 count = 5;
    EXPECT_EQ(B_ENTRY_NOT_FOUND, node.ReadAttr("res_num", B_INT32_TYPE, 0, &count, 4));
    EXPECT_EQ(5, count);
    attr_info info;
    EXPECT_EQ(B_ENTRY_NOT_FOUND, node.GetAttrInfo("res_num", &info));
    EXPECT_EQ(B_ENTRY_NOT_FOUND, node.RemoveAttr("res_num"));
    EXPECT_FALSE(fFolder.Has(".attributes"));
}

TEST_F(NodeTest, ValuesAreReadAndWrittenInParts) {
    BNode node(fPath.c_str());
    EXPECT_EQ(6, node.WriteAttr("raw", B_RAW_TYPE, 0, "abcdef", 6));
    EXPECT_EQ(2, node.WriteAttr("raw", B_RAW_TYPE, 5, "XY", 2));
    char buffer[16] = {};
    EXPECT_EQ(3, node.ReadAttr("raw", B_RAW_TYPE, 4, buffer, sizeof(buffer)));
    EXPECT_STREQ("eXY", buffer);
    EXPECT_EQ(0, node.ReadAttr("raw", B_RAW_TYPE, 7, buffer, sizeof(buffer)));
    EXPECT_EQ(1, node.WriteAttr("raw", B_RAW_TYPE, 0, "z", 1));
    EXPECT_EQ(1, node.ReadAttr("raw", B_RAW_TYPE, 0, buffer, sizeof(buffer)));
}

TEST_F(NodeTest, BadArgumentsAreRefused) {
    BNode node(fPath.c_str()), none;
    EXPECT_EQ(B_FILE_ERROR, none.WriteAttr("a", B_RAW_TYPE, 0, "x", 1));
    EXPECT_EQ(B_BAD_VALUE, node.WriteAttr("", B_RAW_TYPE, 0, "x", 1));
    EXPECT_EQ(B_BAD_VALUE, node.WriteAttr(nullptr, B_RAW_TYPE, 0, "x", 1));
    EXPECT_EQ(B_BAD_VALUE, node.WriteAttr("a", B_RAW_TYPE, -1, "x", 1));
    EXPECT_EQ(B_BAD_VALUE, node.WriteAttr("a", B_RAW_TYPE, 1LL << 40, "x", 1));
    EXPECT_EQ(B_NAME_TOO_LONG,
              node.WriteAttr(std::string(256, 'n').c_str(), B_RAW_TYPE, 0, "x", 1));
}

TEST_F(NodeTest, TheNamesAreWalkedThrough) {
    BNode node(fPath.c_str());
    for (const char* name : {"one", "two", "three"})
        node.WriteAttr(name, B_STRING_TYPE, 0, "x", 1);
    EXPECT_EQ(B_OK, node.RenameAttr("two", "zwei"));
    EXPECT_EQ(B_OK, node.RemoveAttr("one"));
    char name[B_ATTR_NAME_LENGTH];
    EXPECT_TRUE(node.GetNextAttrName(name) == B_OK && strcmp(name, "zwei") == 0);
    EXPECT_TRUE(node.GetNextAttrName(name) == B_OK && strcmp(name, "three") == 0);
    EXPECT_EQ(B_ENTRY_NOT_FOUND, node.GetNextAttrName(name));
    node.RewindAttrs();
    EXPECT_EQ(B_OK, node.GetNextAttrName(name));
}

TEST_F(NodeTest, ThousandsOfAttributesAreNoTrouble) {
    BNode node(fPath.c_str());
    bigtime_t before = system_time();
    for (int32 i = 0; i < 1000; i++)
        node.WriteAttr(("name" + std::to_string(i)).c_str(), B_INT32_TYPE, 0, &i, sizeof(i));
    int32 last = 0;
    EXPECT_EQ(4, node.ReadAttr("name999", B_INT32_TYPE, 0, &last, 4));
    EXPECT_EQ(999, last);
    EXPECT_LT(system_time() - before, 20000000);
}

TEST_F(NodeTest, AttributesFollowARenamedFileEvenWhileItIsOpen) {
    _SetCount(fPath, 12);
    BNode open(fPath.c_str());
    BEntry entry(fPath.c_str());
    ASSERT_EQ(B_OK, entry.Rename("2.dat"));
    EXPECT_EQ("", _Side("1.dat"));
    EXPECT_EQ(12, _Count(fFolder / "2.dat"));
    int32 count = 13;
    EXPECT_EQ(4, open.WriteAttr("res_num", B_INT32_TYPE, 0, &count, 4));
    EXPECT_EQ("res_num LONG 13\n", _Side("2.dat"));
}

TEST_F(NodeTest, AReplacedFilesAttributesGoWithIt) {
    _SetCount(fPath, 12);
    BNode old(fPath.c_str());
    std::string fresh = fFolder.Write("new", "fresh");
    ASSERT_EQ(B_OK, BEntry(fresh.c_str()).Rename("1.dat", true));
    EXPECT_EQ("fresh", fFolder.Read("1.dat"));
    EXPECT_EQ(-1, _Count(fPath));
    int32 count = 1;
    EXPECT_EQ(B_ENTRY_NOT_FOUND, old.WriteAttr("res_num", B_INT32_TYPE, 0, &count, 4));
}

TEST_F(NodeTest, AReplacingFileBringsItsOwnAttributes) {
    _SetCount(fPath, 12);
    std::string fresh = fFolder.Write("new", "fresh");
    _SetCount(fresh, 99);
    ASSERT_EQ(B_OK, BEntry(fresh.c_str()).Rename("1.dat", true));
    EXPECT_EQ(99, _Count(fPath));
    EXPECT_FALSE(fFolder.Has(".attributes/new"));
}

TEST_F(NodeTest, ARefusedRenameChangesNothing) {
    _SetCount(fPath, 12);
    std::string other = fFolder.Write("2.dat", "other");
    _SetCount(other, 99);
    BEntry entry(other.c_str());
    EXPECT_EQ(B_FILE_EXISTS, entry.Rename("1.dat"));
    fFolder.MakeFolder("folder");
    EXPECT_EQ(B_IS_A_DIRECTORY, entry.Rename("folder", true));
    EXPECT_EQ(12, _Count(fPath));
    EXPECT_EQ(99, _Count(other));
}

TEST_F(NodeTest, ARemovedFilesAttributesGoWithIt) {
    _SetCount(fPath, 12);
    EXPECT_EQ(B_OK, BEntry(fPath.c_str()).Remove());
    EXPECT_FALSE(fFolder.Has(".attributes/1.dat"));
}

TEST_F(NodeTest, ANewFileInheritsNothingFromOneRemovedElsewhere) {
    _SetCount(fPath, 12);
    remove(fPath.c_str());
    BFile file(fPath.c_str(), B_READ_WRITE | B_CREATE_FILE);
    EXPECT_EQ(B_OK, file.InitCheck());
    EXPECT_EQ(-1, _Count(fPath));
}

TEST_F(NodeTest, TwoThreadsWriteAttributesOfOneFile) {
    auto write = [](void* data) -> int32 {
        auto* path = static_cast<std::string*>(data);
        BNode node(path->c_str());
        std::string prefix = std::to_string(find_thread(nullptr)) + "_";
        for (int32 i = 0; i < 50; i++)
            node.WriteAttr((prefix + std::to_string(i)).c_str(), B_INT32_TYPE, 0, &i, 4);
        return B_OK;
    };
    std::vector<thread_id> threads;
    for (int i = 0; i < 2; i++) {
        threads.push_back(spawn_thread(write, "writer", B_NORMAL_PRIORITY, &fPath));
        resume_thread(threads.back());
    }
    for (thread_id thread : threads)
        wait_for_thread(thread, nullptr);
    std::string side = _Side();
    EXPECT_EQ(100, std::count(side.begin(), side.end(), '\n'));
}

TEST_F(NodeTest, ALockIsExclusiveAndDoesNotWait) {
    BNode first(fPath.c_str()), second(fPath.c_str());
    EXPECT_EQ(B_BAD_VALUE, first.Unlock());
    EXPECT_EQ(B_OK, first.Lock());
    EXPECT_EQ(B_BUSY, first.Lock());
    EXPECT_EQ(B_BUSY, second.Lock());
    EXPECT_EQ(B_OK, first.Unlock());
    EXPECT_EQ(B_OK, second.Lock());
    second.Unset();
    EXPECT_EQ(B_OK, first.Lock());
    EXPECT_EQ(B_FILE_ERROR, second.Lock());
}

TEST_F(NodeTest, KeepsItsMimeTypeAsAnAttribute) {
    BNode node(fPath.c_str());
    BNodeInfo info(&node);
    char type[B_MIME_TYPE_LENGTH];
    EXPECT_EQ(B_ENTRY_NOT_FOUND, info.GetType(type));
    EXPECT_EQ(B_OK, info.SetType("text/plain"));
    EXPECT_EQ(B_OK, info.GetType(type));
    EXPECT_STREQ("text/plain", type);
    EXPECT_EQ(B_BAD_VALUE, info.SetType(std::string(240, 'x').c_str()));
    EXPECT_EQ(B_OK, info.SetType(nullptr));
    EXPECT_EQ(B_NO_INIT, BNodeInfo().SetType("text/plain"));
}

TEST_F(NodeTest, StringAttributesComeAndGoAsStrings) {
    BNode node(fPath.c_str());
    BString text("文字列"), found;
    EXPECT_EQ(B_OK, node.WriteAttrString("name", &text));
    EXPECT_EQ(B_OK, node.ReadAttrString("name", &found));
    EXPECT_TRUE(found == text);
}

TEST_F(NodeTest, KnowsAndSetsTimesSizeAndKind) {
    BNode node(fPath.c_str());
    time_t moment = 0;
    EXPECT_EQ(B_OK, node.SetModificationTime(784111777));
    EXPECT_TRUE(node.GetModificationTime(&moment) == B_OK && moment == 784111777);
    off_t size = 0;
    EXPECT_TRUE(node.GetSize(&size) == B_OK && size == 4);
    EXPECT_TRUE(node.IsFile() && !node.IsDirectory());
    EXPECT_EQ(B_OK, node.Sync());
    EXPECT_EQ(B_ENTRY_NOT_FOUND, BNode((fFolder / "none").c_str()).InitCheck());
}
