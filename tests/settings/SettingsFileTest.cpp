#include "settings/SettingsFile.h"
#include "settings/MessageAttributes.h"

#include "support/ScratchFolder.h"

#include <File.h>
#include <Node.h>
#include <Point.h>
#include <fs_attr.h>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr const char* kFile = "2ch/Itamori";

class SettingsFileTest : public testing::Test {
protected:
    std::unique_ptr<SettingsFile> Settings() {
        return std::make_unique<SettingsFile>("Itamori", "2ch", B_USER_SETTINGS_DIRECTORY);
    }
    void SaveSample() {
        const auto settings = Settings();
        settings->AddInt32("number", 7);
        settings->AddString("text", "日本語");
        settings->AddRect("frame", BRect(1, 2, 3, 4));
        EXPECT_EQ(settings->Save(), B_OK);
    }
    BNode Node() const { return BNode((fFolder / kFile).c_str()); }
    bool HasAttribute(const char* name) const {
        attr_info info;
        return Node().GetAttrInfo(name, &info) == B_OK;
    }

    ScratchFolder fFolder;
};

} // namespace

TEST_F(SettingsFileTest, EveryTypeComesBack) {
    const auto settings = Settings();
    BMessage inner;
    inner.AddInt16("short", -3);
    settings->AddPoint("point", BPoint(1, 2));
    settings->AddBool("bool", true);
    settings->AddInt8("int8", -1);
    settings->AddInt64("int64", 1LL << 40);
    settings->AddDouble("double", 0.25);
    settings->AddFloat("float", 1.5F);
    settings->AddColor("color", {1, 2, 3, 4});
    settings->AddUInt64("uint64", ~0ULL);
    settings->AddString("string", "a\nb\\\"");
    settings->AddMessage("inner", &inner);
    settings->AddMessage("inner", &inner);
    EXPECT_EQ(settings->Save(), B_OK);
    const auto loaded = Settings();
    EXPECT_EQ(loaded->Load(), B_OK);
    BString text;
    BMessage found;
    int16 number = 0;
    double fraction = 0;
    EXPECT_EQ(loaded->Get("string", &text), B_OK);
    EXPECT_STREQ(text.String(), "a\nb\\\"");
    EXPECT_EQ(loaded->FindMessage("inner", 1, &found), B_OK);
    EXPECT_EQ(found.FindInt16("short", &number), B_OK);
    EXPECT_EQ(number, -3);
    EXPECT_EQ(loaded->FindDouble("double", &fraction), B_OK);
    EXPECT_EQ(fraction, 0.25);
    EXPECT_TRUE(HasAttribute("inner::0:short"));
    EXPECT_TRUE(HasAttribute("uint64"));
}

TEST_F(SettingsFileTest, SeveralValuesAreNumberedWithZeros) {
    const auto settings = Settings();
    for (int32 i = 0; i < 12; i++)
        settings->AddInt32("value", i);
    EXPECT_EQ(settings->Save(), B_OK);
    EXPECT_TRUE(HasAttribute("value::00"));
    EXPECT_TRUE(HasAttribute("value::11"));
    EXPECT_FALSE(HasAttribute("value::12"));
    EXPECT_FALSE(HasAttribute("value"));
}

TEST_F(SettingsFileTest, AColonInANameEndsTheStoringOfAttributes) {
    const auto settings = Settings();
    BMessage inner;
    inner.AddInt32("in:ner", 1);
    inner.AddInt32("lost", 1);
    settings->AddInt32("before", 1);
    settings->AddMessage("message", &inner);
    settings->AddInt32("behind", 1);
    settings->AddInt32("a:b", 1);
    settings->AddInt32("after", 1);
    EXPECT_EQ(settings->Save(), B_OK);
    EXPECT_TRUE(HasAttribute("before"));
    EXPECT_TRUE(HasAttribute("behind"));
    EXPECT_FALSE(HasAttribute("message:lost"));
    EXPECT_FALSE(HasAttribute("after"));
    const auto loaded = Settings();
    EXPECT_EQ(loaded->Load(), B_OK);
    EXPECT_EQ(loaded->CountNames(B_ANY_TYPE), 5);
}

TEST_F(SettingsFileTest, AnEditedAttributeWins) {
    SaveSample();
    const int32 edited = 8;
    EXPECT_EQ(Node().WriteAttr("number", B_INT32_TYPE, 0, &edited, sizeof(edited)), 4);
    EXPECT_EQ(Node().WriteAttr("text", B_STRING_TYPE, 0, "x", 1), 1);
    const auto loaded = Settings();
    EXPECT_EQ(loaded->Load(), B_OK);
    int32 number = 0;
    BString text;
    EXPECT_EQ(loaded->Get("number", &number), B_OK);
    EXPECT_EQ(number, 8);
    EXPECT_EQ(loaded->Get("text", &text), B_OK);
    EXPECT_STREQ(text.String(), "x");
}

TEST_F(SettingsFileTest, AnAttributeWithoutAFieldMakesLoadingFail) {
    SaveSample();
    const int32 value = 1;
    Node().WriteAttr("unknown", B_INT32_TYPE, 0, &value, sizeof(value));
    const auto loaded = Settings();
    EXPECT_NE(loaded->Load(), B_OK);
    int32 number = 0;
    EXPECT_EQ(loaded->Get("number", &number), B_OK);
}

TEST_F(SettingsFileTest, NamesOfAttributesLeadToTheirPlace) {
    BMessage inner;
    inner.AddInt32("n", 1);
    BMessage message;
    message.AddMessage("m", &inner);
    message.AddInt32("list", 1);
    message.AddInt32("list", 2);
    const int32 value = 9;
    const struct {
        const char* name;
        status_t result;
    } kCases[] = {
        {"m:n", B_OK},
        {"m::0:n", B_OK},
        {"list::1", B_OK},
        {"list::x", B_OK},
        {"list::", B_OK},
        {"list::1x", B_OK},
        {"list::1000000000", B_OK},
        {"list::18446744073709551617", B_OK},
        {"list::2", B_BAD_INDEX},
        {"none", B_NAME_NOT_FOUND},
        {"none:n", B_NAME_NOT_FOUND},
    };
    for (const auto& item : kCases) {
        EXPECT_EQ(ApplyAttribute(item.name, B_INT32_TYPE, &value, sizeof(value), &message),
                  item.result)
            << item.name;
    }
    int32 found = 0;
    EXPECT_EQ(message.FindInt32("list", 1, &found), B_OK);
    EXPECT_EQ(found, 9);
    EXPECT_EQ(message.FindInt32("list", 0, &found), B_OK);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(message.FindMessage("m", &inner), B_OK);
    EXPECT_EQ(inner.FindInt32("n", &found), B_OK);
    EXPECT_EQ(found, 9);
}

TEST_F(SettingsFileTest, SavingReplacesTheOldAttributes) {
    SaveSample();
    const auto settings = Settings();
    settings->AddInt32("other", 1);
    EXPECT_EQ(settings->Save(), B_OK);
    EXPECT_FALSE(HasAttribute("number"));
    EXPECT_TRUE(HasAttribute("other"));
    EXPECT_EQ(Settings()->Load(), B_OK);
}

TEST_F(SettingsFileTest, ABrokenFileIsKeptAside) {
    SaveSample();
    const std::string whole = fFolder.Read(kFile);
    for (const std::string& broken : {std::string(), whole.substr(0, whole.size() / 2),
                                      std::string("\x12\x34 random \xFF\x00 bytes", 17)}) {
        fFolder.Write(kFile, broken);
        const auto settings = Settings();
        EXPECT_NE(settings->Load(), B_OK);
        EXPECT_TRUE(settings->IsEmpty());
        settings->AddInt32("new", 1);
        EXPECT_EQ(settings->Save(), B_OK);
        EXPECT_EQ(Settings()->Load(), B_OK);
    }
    EXPECT_EQ(fFolder.Read("2ch/Itamori.broken"), "");
    EXPECT_EQ(fFolder.Read("2ch/Itamori.broken2"), whole.substr(0, whole.size() / 2));
    EXPECT_TRUE(fFolder.Has("2ch/Itamori.broken3"));
}

TEST_F(SettingsFileTest, AFileThatCannotBeReadNowIsNotLost) {
    SaveSample();
    const std::string whole = fFolder.Read(kFile);
    const auto settings = Settings();
    {
        BFile busy((fFolder / kFile).c_str(), B_READ_ONLY);
        ASSERT_EQ(busy.Lock(), B_OK);
        EXPECT_NE(settings->Load(), B_OK);
    }
    EXPECT_EQ(settings->Save(), B_OK);
    EXPECT_EQ(fFolder.Read("2ch/Itamori.broken"), whole);
}

TEST_F(SettingsFileTest, AMissingFileIsNotKeptAside) {
    const auto settings = Settings();
    EXPECT_EQ(settings->InitCheck(), B_OK);
    settings->AddInt32("old", 1);
    EXPECT_EQ(settings->Load(), B_ENTRY_NOT_FOUND);
    EXPECT_TRUE(settings->IsEmpty());
    settings->AddInt32("new", 1);
    EXPECT_EQ(settings->Save(), B_OK);
    EXPECT_FALSE(fFolder.Has("2ch/Itamori.broken"));
    EXPECT_FALSE(fFolder.Has("2ch/Itamori.new"));
}

TEST_F(SettingsFileTest, AccessReplacesOnlyWhatIsThere) {
    SaveSample();
    const auto settings = Settings();
    settings->Load();
    EXPECT_EQ(settings->Replace("number", static_cast<int32>(3)), B_OK);
    EXPECT_EQ(settings->Replace("missing", true), B_NAME_NOT_FOUND);
    settings->PutAt("flags", 0, true);
    settings->PutAt("flags", 1, false);
    settings->PutAt("flags", 0, false);
    bool flag = true;
    EXPECT_EQ(settings->Get("flags", &flag, 0), B_OK);
    EXPECT_FALSE(flag);
    EXPECT_EQ(settings->Get("flags", &flag, 2), B_BAD_INDEX);
}
