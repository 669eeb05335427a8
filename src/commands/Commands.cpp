#include "commands/Commands.h"

#include "messages/Messages.h"
#include "settings/SettingsFile.h"

#include <AppDefs.h>
#include <InterfaceDefs.h>
#include <String.h>

#include <cstring>

namespace {

using Place = Command::Place;
using Target = Command::Target;

constexpr const char* kFile = "ファイル";
constexpr const char* kEdit = "編集";
constexpr const char* kBookmarks = "ブックマーク";
constexpr const char* kThread = "スレッド";
constexpr const char* kEditing = "WQCVXAZ"; // with Ctrl: what every editor has

constexpr Command Separator(const char* menu) {
    return {nullptr, menu, nullptr, 0, ""};
}

// What the panes themselves do when they have the keyboard.
constexpr Command Pane(const char* id, const char* label, const char* key) {
    return {id, kThread, label, 0, key, Target::kWindow, Place::kPane, true};
}

constexpr Command kCommands[] = {
    {"new_window", kFile, "新規ウィンドウ", kMsgNewWindow, "Ctrl+N"},
    {"next_window", kFile, "ウィンドウ切替", kMsgNextWindow, "Ctrl+G", Target::kApplication},
    Separator(kFile),
    {"offline", kFile, "オフライン", kMsgToggleOnline, "Ctrl+L", Target::kApplication},
    {"single_click", kFile, "シングルクリック", kMsgToggleClick, "", Target::kApplication},
    Separator(kFile),
    {"update_menu", kFile, "板(2ch)一覧の更新", kMsgUpdateBoardMenu, "", Target::kApplication},
    Separator(kFile),
    {"preferences", kFile, "設定", kMsgOpenPrefs, ""},
    Separator(kFile),
    {"close", kFile, "閉じる", B_QUIT_REQUESTED, "Ctrl+W", Target::kWindow, Place::kMenu, true},
    {"quit", kFile, "終了", B_QUIT_REQUESTED, "Ctrl+Q", Target::kApplication, Place::kMenu, true},
    {"search", kEdit, "検索", kMsgOpenSearch, "Ctrl+S"},
    Separator(kEdit),
    {"filter", kEdit, "スレッドの絞り込み", kMsgFilterThreads, "Ctrl+F"},
    {"next_thread", kEdit, "次スレを探す", kMsgFindNextThread, ""},
    {"search_cache", kEdit, "キャッシュから探す", kMsgOpenCacheSearch, "Ctrl+Shift+S"},
    {"noise", kEdit, "NG", kMsgOpenNoise, ""},
    {"keys", kEdit, "キー", kMsgOpenKeys, ""},
    {"bookmarks", kBookmarks, "一覧", kMsgListBookmarks, "Ctrl+B"},
    {"patrol", kBookmarks, "巡回", kMsgStartPatrol, ""},
    {"bookmark_folder", kBookmarks, "フォルダを開く", kMsgOpenBookmarkFolder, ""},
    {"about", "ヘルプ", "…", B_ABOUT_REQUESTED, "", Target::kApplication},
    {"reload", kThread, "再読込", kMsgReloadThread, "F5", Target::kWindow, Place::kKeyAlone},
    {"next_news", kThread, "次の新着スレッド", kMsgNextNews, "F6", Target::kWindow,
     Place::kKeyAlone},
    Pane("page_on", "一画面進む", "Space"),
    Pane("page_back", "一画面戻る", "Shift+Space"),
    Pane("first_new", "最初の新着へ", "N"),
    Pane("next_link", "次のリンクを選ぶ", "]"),
    Pane("last_link", "前のリンクを選ぶ", "["),
    Pane("open_link", "選んだリンクを開く", "Enter"),
    Pane("close_pop_up", "ポップアップを閉じる", "Esc"),
    Pane("begin", "先頭へ", "Home"),
    Pane("end", "末尾へ", "End"),
    Pane("menu", "メニューを開く", "Menu / Shift+F10"),
    Pane("next_pane", "次の欄へ", "Tab"),
};

std::string SettingOf(const Command& command) {
    return std::string("shortcut_") + command.id;
}

bool IsEditing(const KeyChord& chord) {
    return chord.modifiers == B_COMMAND_KEY && chord.character != 0 &&
           strchr(kEditing, chord.character) != nullptr;
}

} // namespace

std::span<const Command> Commands() {
    return kCommands;
}

// What the user's text can't mean counts as not chosen.
KeyChord KeyOf(const SettingsFile& settings, const Command& command) {
    BString text;
    if (!command.isFixed && settings.Get(SettingOf(command).c_str(), &text) == B_OK) {
        const std::optional<KeyChord> chord = ParseKeyChord(text.String());
        if (chord && !IsEditing(*chord))
            return *chord;
    }
    return ParseKeyChord(command.key).value_or(KeyChord());
}

std::string KeyText(const SettingsFile& settings, const Command& command) {
    return command.place == Place::kPane ? command.key : KeyOf(settings, command).Text();
}

const Command* FindCommand(const SettingsFile& settings, const KeyChord& chord) {
    if (chord.IsNone())
        return nullptr;
    for (const Command& command : kCommands) {
        if (command.id != nullptr && command.place != Place::kPane &&
            KeyOf(settings, command) == chord)
            return &command;
    }
    return nullptr;
}

std::string SetKey(SettingsFile* settings, const Command& command, const std::string& text) {
    const std::optional<KeyChord> chord = ParseKeyChord(text);
    if (command.isFixed)
        return "このキーは変えられません。";
    if (!chord)
        return "Ctrl+文字か、F1からF12のキーを書いてください。";
    if (IsEditing(*chord))
        return "このキーは編集に使われています。";
    const Command* other = FindCommand(*settings, *chord);
    if (other != nullptr && other != &command)
        return std::string("「") + other->label + "」のキーです。";
    settings->PutAt(SettingOf(command).c_str(), 0, chord->Text().c_str());
    return {};
}
