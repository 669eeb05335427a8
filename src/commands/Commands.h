#pragma once

#include "commands/KeyChord.h"

#include <SupportDefs.h>

#include <span>
#include <string>

class SettingsFile;

// What the user can have the program do by a menu or a key.
struct Command {
    enum class Target { kWindow, kApplication };
    enum class Place { kMenu, kKeyAlone, kPane };

    const char* id; // in the settings; null: a separator of the menu
    const char* menu;
    const char* label;
    uint32 code;     // of the message that the target gets
    const char* key; // unless the user has chosen another
    Target target = Target::kWindow;
    Place place = Place::kMenu;
    bool isFixed = false; // its key stays
};

// All of them, in the order of the menus.
std::span<const Command> Commands();

// How the key of a command is called.
std::string KeyText(const SettingsFile& settings, const Command& command);
// The key of a command: the user's, or its own. Kept as text in the settings, "shortcut_ID".
KeyChord KeyOf(const SettingsFile& settings, const Command& command);
// Null when none has it.
const Command* FindCommand(const SettingsFile& settings, const KeyChord& chord);
// Gives the command this key; empty, or why it can't be, for the user.
std::string SetKey(SettingsFile* settings, const Command& command, const std::string& text);
