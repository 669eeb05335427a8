#include "cache/NPCache.h"

#include "support/ScratchFolder.h"

#include <FindDirectory.h>
#include <Path.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr const char* kEpoch = "Thu, 01 Jan 1970 00:00:00 GMT";
constexpr const char* kDate = "Wed, 23 Jan 2002 12:34:56 GMT";

class NPCacheTest : public testing::Test {
protected:
    NPCache* Opened(const char* dat = "1.dat", NPCache::Open how = NPCache::Open::kCreate) {
        fCache = std::make_unique<NPCache>("host", "board", dat, how);
        return fCache.get();
    }
    void Append(const std::string& line) {
        fCache->SeekLast();
        EXPECT_EQ(fCache->WriteLine(line.data(), line.size()), B_OK);
    }
    std::vector<std::string> Lines() {
        std::vector<std::string> lines;
        char buffer[8192];
        int32 length = 0;
        while ((length = fCache->ReadLine(buffer, 8191)) > 0)
            lines.emplace_back(buffer, length);
        fLast = length;
        return lines;
    }

    ScratchFolder fFolder;
    std::unique_ptr<NPCache> fCache;
    int32 fLast = 0;
};

} // namespace

TEST_F(NPCacheTest, ADownloadMakesFoldersAndAnEmptyFileOfTheEpoch) {
    EXPECT_EQ(Opened()->Status(), 0);
    EXPECT_TRUE(fFolder.Has("2ch/2chCache/host/board/1.dat"));
    EXPECT_STREQ(fCache->GetModificationTime(), kEpoch);
}

TEST_F(NPCacheTest, ALookUpCreatesNothing) {
    EXPECT_EQ(Opened("1.dat", NPCache::Open::kExisting)->Status(), -1);
    EXPECT_FALSE(fFolder.Has("2ch"));
    BDirectory folder;
    EXPECT_EQ(NPCache::FindDatDirectory("host", "board", &folder), B_ENTRY_NOT_FOUND);
    BFile file;
    EXPECT_EQ(NPCache::FindDatFile("host", "board", "1.dat", &file), B_ENTRY_NOT_FOUND);
    EXPECT_FALSE(fFolder.Has("2ch"));
}

TEST_F(NPCacheTest, LinesComeBackAsTheyWereWritten) {
    Opened();
    Append("one\n");
    Append(std::string(8190, 'x') + "\n");
    Append("cut");
    Opened();
    const std::vector<std::string> lines = Lines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], "one\n");
    EXPECT_EQ(fLast, 0);
    EXPECT_EQ(fCache->GetSize(), 4 + 8191 + 3);
}

TEST_F(NPCacheTest, TheServersTimeIsSentBackAsItCame) {
    Opened();
    Append("one\n");
    fCache->SetModificationTime(kDate);
    EXPECT_STREQ(Opened()->GetModificationTime(), kDate);
    EXPECT_STREQ(Opened()->GetModificationTime(), kDate);
    setenv("TZ", "JST-9", 1);
    for (const char* form : {"Wednesday, 23-Jan-02 12:34:56 GMT", "Wed Jan 23 12:34:56 2002",
                             "Wed, 23 Jan 2002 21:34:56 +0900",
                             "no date at all, and longer than its buffer of 32 bytes"}) {
        fCache->SetModificationTime(form);
        EXPECT_STREQ(fCache->GetModificationTime(), kDate) << form;
        EXPECT_STREQ(Opened()->GetModificationTime(), kDate) << form;
    }
    unsetenv("TZ");
}

TEST_F(NPCacheTest, AnUnfinishedDownloadAsksWithTheEpoch) {
    Opened();
    Append("one\n");
    fCache->SetModificationTime(kDate);
    EXPECT_EQ(fCache->MarkUnfinished(), B_OK);
    EXPECT_STREQ(Opened()->GetModificationTime(), kEpoch);
    fCache->MarkFinished();
    EXPECT_STREQ(Opened()->GetModificationTime(), kDate);
}

TEST_F(NPCacheTest, AnUnfinishedLineIsCutOff) {
    const struct {
        std::string content;
        int32 size;
    } kCases[] = {
        {"one\ntwo", 4}, {"one\n", 4}, {"none", 0}, {"", 0}, {"a\n" + std::string(10000, 'x'), 2}};
    for (const auto& item : kCases) {
        Opened();
        Append(item.content);
        EXPECT_EQ(fCache->CutToWholeLines(), B_OK);
        EXPECT_EQ(fCache->GetSize(), item.size);
        fCache->RemoveFile();
    }
}

TEST_F(NPCacheTest, AttributesStayWithTheFile) {
    Opened();
    Append("one\n");
    const int32 count = 12;
    EXPECT_EQ(fCache->WriteAttr("res_num", B_INT32_TYPE, &count, sizeof(count)), 4);
    EXPECT_EQ(fCache->WriteAttr("title", B_STRING_TYPE, "0123456789", 10), 10);
    fCache->SetMimeType("text/plain");
    Opened("1.dat", NPCache::Open::kExisting);
    int32 found = 0;
    char title[32] = "";
    EXPECT_EQ(fCache->ReadAttr("res_num", B_INT32_TYPE, &found, sizeof(found)), 4);
    EXPECT_EQ(found, 12);
    EXPECT_EQ(fCache->ReadAttr("title", B_STRING_TYPE, title, sizeof(title)), 10);
    EXPECT_STREQ(title, "0123456789");
    EXPECT_LT(fCache->ReadAttr("missing", B_INT32_TYPE, &found, sizeof(found)), 0);
    EXPECT_EQ(found, 12);
}

TEST_F(NPCacheTest, RemovingTheFileForgetsItsAttributes) {
    Opened();
    Append("one\n");
    const int32 position = 7;
    fCache->WriteAttr("bar_pos", B_INT32_TYPE, &position, sizeof(position));
    fCache->RemoveFile();
    EXPECT_EQ(fCache->Status(), -1);
    EXPECT_FALSE(fFolder.Has("2ch/2chCache/host/board/1.dat"));
    Opened();
    int32 found = 0;
    EXPECT_LT(fCache->ReadAttr("bar_pos", B_INT32_TYPE, &found, sizeof(found)), 0);
}

TEST_F(NPCacheTest, KnowsWhetherItsNameStillLeadsToIt) {
    Opened();
    Append("one\n");
    EXPECT_TRUE(fCache->IsCurrent());
    NPCache("host", "board", "1.dat", NPCache::Open::kExisting).RemoveFile();
    EXPECT_FALSE(fCache->IsCurrent());
    NPCache again("host", "board", "1.dat", NPCache::Open::kCreate);
    EXPECT_FALSE(fCache->IsCurrent());
    EXPECT_TRUE(again.IsCurrent());
}

TEST_F(NPCacheTest, ASecondDownloadGetsNoLock) {
    Opened();
    NPCache other("host", "board", "1.dat", NPCache::Open::kExisting);
    EXPECT_EQ(fCache->Lock(), B_OK);
    EXPECT_NE(other.Lock(), B_OK);
    EXPECT_EQ(fCache->Unlock(), B_OK);
    EXPECT_EQ(other.Lock(), B_OK);
}

TEST_F(NPCacheTest, NamesFromTheNetworkLeadNowhereElse) {
    for (const char* name : {"../../x.dat", "a/b.dat", "..", ".", "", ".attributes", ".x"})
        EXPECT_NE(NPCache("host", "board", name, NPCache::Open::kCreate).Status(), 0) << name;
    EXPECT_NE(NPCache("..", "board", "1.dat", NPCache::Open::kCreate).Status(), 0);
    EXPECT_NE(NPCache("a/b", "board", "1.dat", NPCache::Open::kCreate).Status(), 0);
    EXPECT_NE(NPCache("host", "a//b", "1.dat", NPCache::Open::kCreate).Status(), 0);
    EXPECT_NE(NPCache("host", "a/../b", "1.dat", NPCache::Open::kCreate).Status(), 0);
    EXPECT_NE(NPCache("host", "a/.attributes", "1.dat", NPCache::Open::kCreate).Status(), 0);
    EXPECT_NE(NPCache(".host", "a", "1.dat", NPCache::Open::kCreate).Status(), 0);
    EXPECT_FALSE(fFolder.Has("2ch"));
    EXPECT_EQ(NPCache("host", "a/b", "1.dat", NPCache::Open::kCreate).Status(), 0);
    const std::string longName(300, 'x');
    EXPECT_NE(NPCache("host", "board", longName.c_str(), NPCache::Open::kCreate).Status(), 0);
}
