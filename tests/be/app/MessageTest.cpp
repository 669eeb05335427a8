#include <Message.h>

#include <string>

#include <Entry.h>
#include <String.h>

#include <gtest/gtest.h>

namespace {

BMessage sample() {
    BMessage inner('innr');
    inner.AddString("name", "名前");
    BMessage message('mTSL');
    message.AddString("dat", "1234.dat");
    message.AddInt32("res", 12);
    message.AddBool("bookmark", true);
    message.AddRect("frame", BRect(1, 2, 3, 4));
    message.AddPoint("point", BPoint(5, 6));
    message.AddColor("color", make_color(1, 2, 3, 4));
    message.AddMessage("inner", &inner);
    for (int32 i = 0; i < 12; i++)
        message.AddInt16("many", static_cast<int16>(i));
    return message;
}

std::string flat(const BMessage& message) {
    std::string bytes(static_cast<size_t>(message.FlattenedSize()), '\0');
    EXPECT_EQ(B_OK, message.Flatten(bytes.data(), static_cast<ssize_t>(bytes.size())));
    return bytes;
}

status_t unflatten(const std::string& bytes, BMessage* message) {
    BMemoryIO stream(static_cast<const void*>(bytes.data()), bytes.size());
    return message->Unflatten(&stream);
}

// A message inside a message, `depth` times.
BMessage nested(int depth, status_t* lastStatus) {
    BMessage message('core');
    for (int i = 0; i < depth; i++) {
        BMessage outer('outr');
        *lastStatus = outer.AddMessage("inner", &message);
        message = outer;
    }
    return message;
}

} // namespace

TEST(BMessage, EveryTypeComesBack) {
    BMessage message;
    int64 number = 0x123456789ABCDEFLL;
    double real = 0.5;
    uint64 big = ~0ULL;
    void* pointer = &message;
    message.AddInt64("int64", number);
    message.AddDouble("double", real);
    message.AddUInt64("uint64", big);
    message.AddPointer("pointer", pointer);
    message.AddUInt8("uint8", 200);
    message.AddData("raw", B_RAW_TYPE, "\0\1", 2);
    int64 foundNumber;
    double foundReal;
    uint64 foundBig;
    void* foundPointer;
    uint8 byte;
    const void* data;
    ssize_t size;
    EXPECT_TRUE(message.FindInt64("int64", &foundNumber) == B_OK && foundNumber == number);
    EXPECT_TRUE(message.FindDouble("double", &foundReal) == B_OK && foundReal == real);
    EXPECT_TRUE(message.FindUInt64("uint64", &foundBig) == B_OK && foundBig == big);
    EXPECT_TRUE(message.FindPointer("pointer", &foundPointer) == B_OK && foundPointer == pointer);
    EXPECT_TRUE(message.FindUInt8("uint8", &byte) == B_OK && byte == 200);
    ASSERT_EQ(B_OK, message.FindData("raw", B_RAW_TYPE, &data, &size));
    EXPECT_EQ(std::string("\0\1", 2), std::string(static_cast<const char*>(data), 2));
    EXPECT_EQ(2, size);
}

TEST(BMessage, SaysWhatIsWrongWithAQuestion) {
    BMessage message = sample();
    int32 number = 0;
    EXPECT_EQ(B_NAME_NOT_FOUND, message.FindInt32("none", &number));
    EXPECT_EQ(B_BAD_TYPE, message.FindInt32("dat", &number));
    EXPECT_EQ(B_BAD_INDEX, message.FindInt32("res", 1, &number));
    EXPECT_EQ(B_BAD_INDEX, message.FindInt32("res", -1, &number));
    EXPECT_EQ(B_BAD_VALUE, message.FindInt32(nullptr, &number));
    EXPECT_EQ(B_BAD_TYPE, message.AddString("res", "12"));
    EXPECT_EQ(B_BAD_VALUE, message.AddInt32(nullptr, 1));
    EXPECT_EQ(B_BAD_VALUE, message.AddInt32(std::string(256, 'n').c_str(), 1));
}

TEST(BMessage, ReplacingNeedsAValueThatIsThere) {
    BMessage message = sample();
    EXPECT_EQ(B_OK, message.ReplaceInt32("res", 99));
    EXPECT_EQ(B_NAME_NOT_FOUND, message.ReplaceInt32("none", 1));
    EXPECT_EQ(B_BAD_INDEX, message.ReplaceInt32("res", 1, 1));
    EXPECT_EQ(B_BAD_TYPE, message.ReplaceString("res", "1"));
    EXPECT_EQ(B_OK, message.ReplaceString("dat", "a much longer name than before.dat"));
    EXPECT_EQ(B_BAD_VALUE, message.ReplaceData("res", B_INT32_TYPE, "ab", 2));
    int32 number = 0;
    const char* text = nullptr;
    EXPECT_TRUE(message.FindInt32("res", &number) == B_OK && number == 99);
    EXPECT_TRUE(message.FindString("dat", &text) == B_OK && std::string(text).size() == 34);
    EXPECT_FALSE(message.HasInt32("none"));
}

TEST(BMessage, FieldsAreArrays) {
    BMessage message = sample();
    type_code type = 0;
    int32 count = 0;
    ASSERT_EQ(B_OK, message.GetInfo("many", &type, &count));
    EXPECT_EQ(12, count);
    EXPECT_EQ(type_code(B_INT16_TYPE), type);
    int16 number = 0;
    EXPECT_EQ(B_OK, message.RemoveData("many", 3));
    EXPECT_TRUE(message.FindInt16("many", 3, &number) == B_OK && number == 4);
    EXPECT_EQ(B_OK, message.RemoveName("many"));
    EXPECT_EQ(B_NAME_NOT_FOUND, message.RemoveName("many"));
    EXPECT_EQ(B_OK, message.RemoveData("res"));
    EXPECT_FALSE(message.HasInt32("res"));
}

TEST(BMessage, IsWalkedThroughInTheOrderOfItsFields) {
    BMessage message = sample();
    char* name = nullptr;
    type_code type = 0;
    EXPECT_EQ(B_OK, message.GetInfo(B_ANY_TYPE, 1, &name, &type));
    EXPECT_STREQ("res", name);
    EXPECT_EQ(B_OK, message.GetInfo(B_RECT_TYPE, 0, &name, &type));
    EXPECT_STREQ("frame", name);
    EXPECT_EQ(B_BAD_INDEX, message.GetInfo(B_ANY_TYPE, 8, &name, &type));
    EXPECT_EQ(B_BAD_TYPE, message.GetInfo(B_DOUBLE_TYPE, 0, &name, &type));
    EXPECT_EQ(8, message.CountNames(B_ANY_TYPE));
    EXPECT_EQ(1, message.CountNames(B_MESSAGE_TYPE));
}

TEST(BMessage, FlattensAndComesBackWhole) {
    BMessage message = sample(), copy, inner;
    ASSERT_EQ(B_OK, copy.Unflatten(flat(message).c_str()));
    EXPECT_EQ(uint32('mTSL'), copy.what);
    EXPECT_EQ(flat(message), flat(copy));
    const char* name = nullptr;
    ASSERT_EQ(B_OK, copy.FindMessage("inner", &inner));
    EXPECT_EQ(B_OK, inner.FindString("name", &name));
    EXPECT_STREQ("名前", name);
    BMallocIO stream;
    ssize_t size = 0;
    EXPECT_EQ(B_OK, message.Flatten(&stream, &size));
    EXPECT_EQ(flat(message).size(), static_cast<size_t>(size));
}

TEST(BMessage, ABufferThatIsTooSmallIsNotWritten) {
    char buffer[8] = "kept";
    EXPECT_EQ(B_NO_MEMORY, sample().Flatten(buffer, sizeof(buffer)));
    EXPECT_STREQ("kept", buffer);
}

TEST(BMessage, EveryCutOfTheBytesFailsAndLeavesItEmpty) {
    std::string bytes = flat(sample());
    for (size_t size = 0; size < bytes.size(); size++) {
        BMessage message = sample();
        ASSERT_NE(B_OK, unflatten(bytes.substr(0, size), &message)) << size;
        ASSERT_TRUE(message.IsEmpty());
    }
}

TEST(BMessage, NoChangeOfAByteDoesHarm) {
    std::string bytes = flat(sample());
    for (size_t i = 0; i < bytes.size(); i++) {
        for (char value : {'\0', '\x7f', '\xff'}) {
            std::string damaged = bytes;
            damaged[i] = value;
            BMessage message;
            if (unflatten(damaged, &message) == B_OK)
                message.FlattenedSize();
        }
    }
}

TEST(BMessage, AnEnormousStatedSizeCostsNoMemory) {
    std::string bytes = flat(sample());
    for (size_t i = 8; i < 12; i++)
        bytes[i] = '\xff';
    BMessage message;
    EXPECT_EQ(B_IO_ERROR, unflatten(bytes, &message));
}

TEST(BMessage, MessagesLieInsideEachOtherOnlySoDeep) {
    status_t status = B_OK;
    BMessage deep = nested(63, &status);
    EXPECT_EQ(B_OK, status);
    BMessage copy;
    EXPECT_EQ(B_OK, unflatten(flat(deep), &copy));
    nested(64, &status);
    EXPECT_EQ(B_BAD_VALUE, status);
}

TEST(BMessage, AStringFieldWithoutItsNulIsStillEnded) {
    BMessage message;
    message.AddData("title", B_STRING_TYPE, "abcdef", 3, false);
    const char* title = nullptr;
    ASSERT_EQ(B_OK, message.FindString("title", &title));
    EXPECT_STREQ("abc", title);
}

TEST(BMessage, AFieldOfAWrongSizeIsNoValue) {
    BMessage message;
    message.AddData("res", B_INT32_TYPE, "ab", 2);
    int32 number = 7;
    EXPECT_EQ(B_BAD_DATA, message.FindInt32("res", &number));
    EXPECT_EQ(7, number);
}

TEST(BMessage, AnEntryTravelsByItsPlace) {
    entry_ref ref, found;
    ASSERT_EQ(B_OK, get_ref_for_path("/tmp/some.dat", &ref));
    BMessage message;
    message.AddRef("refs", &ref);
    ASSERT_EQ(B_OK, message.FindRef("refs", &found));
    EXPECT_TRUE(found == ref);
    EXPECT_STREQ("some.dat", found.name);
}

TEST(BMessage, RenamesAField) {
    BMessage message = sample();
    EXPECT_EQ(B_OK, message.Rename("res", "count"));
    EXPECT_EQ(B_NAME_IN_USE, message.Rename("dat", "count"));
    EXPECT_EQ(B_NAME_NOT_FOUND, message.Rename("res", "other"));
    EXPECT_TRUE(message.HasInt32("count"));
}

TEST(BMessage, KnowsTheSystemsMessages) {
    EXPECT_TRUE(BMessage(B_QUIT_REQUESTED).IsSystem());
    EXPECT_FALSE(BMessage('mTSL').IsSystem());
}
