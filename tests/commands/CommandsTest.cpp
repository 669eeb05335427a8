#include "commands/Commands.h"

#include "settings/SettingsFile.h"
#include "support/ScratchFolder.h"

#include <InterfaceDefs.h>

#include <gtest/gtest.h>

#include <cstring>
#include <set>

namespace {

const Command& Named(const char* id) {
    for (const Command& command : Commands()) {
        if (command.id != nullptr && strcmp(command.id, id) == 0)
            return command;
    }
    ADD_FAILURE() << id;
    return Commands()[0];
}

TEST(KeyChord, IsReadAsPeopleWriteIt) {
    struct Case {
        const char* text;
        const char* read; // null: no key
    };
    const Case kCases[] = {{"Ctrl+N", "Ctrl+N"}, {" shift + ctrl+ n ", "Ctrl+Shift+N"},
                           {"f5", "F5"},         {"Alt+F10", "Alt+F10"},
                           {"Ctrl++", "Ctrl++"}, {"", ""},
                           {"N", nullptr},       {"Alt+N", nullptr},
                           {"F10", nullptr},     {"F13", nullptr},
                           {"F0", nullptr},      {"Ctrl+", nullptr},
                           {"Ctrl+あ", nullptr}, {"Ctrl+NN", nullptr}};
    for (const Case& row : kCases) {
        const std::optional<KeyChord> chord = ParseKeyChord(row.text);
        EXPECT_EQ(chord.has_value(), row.read != nullptr) << row.text;
        EXPECT_EQ(chord ? chord->Text() : "", row.read != nullptr ? row.read : "") << row.text;
    }
}

TEST(CommandKeys, AreTheUsersWhereTheyCanBe) {
    const ScratchFolder folder;
    SettingsFile settings("Itamori", "2ch");
    std::set<std::string> keys;
    for (const Command& command : Commands()) {
        const std::string key = command.id != nullptr ? KeyOf(settings, command).Text() : "";
        EXPECT_TRUE(key.empty() || keys.insert(key).second) << key;
    }
    EXPECT_NE(SetKey(&settings, Named("quit"), "Ctrl+K"), "");
    for (const char* bad : {"K", "Ctrl+C", "Ctrl+N"})
        EXPECT_NE(SetKey(&settings, Named("search"), bad), "") << bad;
    EXPECT_EQ(KeyOf(settings, Named("search")).Text(), "Ctrl+S");
    EXPECT_EQ(SetKey(&settings, Named("search"), "f3"), "");
    EXPECT_EQ(KeyOf(settings, Named("search")).Text(), "F3");
    EXPECT_EQ(FindCommand(settings, *ParseKeyChord("F3")), &Named("search"));
    EXPECT_EQ(FindCommand(settings, *ParseKeyChord("Ctrl+S")), nullptr);
    EXPECT_EQ(SetKey(&settings, Named("search"), ""), "");
    EXPECT_TRUE(KeyOf(settings, Named("search")).IsNone());
    settings.PutAt("shortcut_search", 0, "nonsense");
    EXPECT_EQ(KeyOf(settings, Named("search")).Text(), "Ctrl+S");
}

} // namespace
