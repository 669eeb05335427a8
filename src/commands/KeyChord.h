#pragma once

#include <SupportDefs.h>

#include <optional>
#include <string>
#include <string_view>

class BMessage;

// A key with what is held while it is pressed: Ctrl with a character, or one of the function keys
// F1 to F12, alone or with others. A value.
struct KeyChord {
    uint32 modifiers = 0;  // B_COMMAND_KEY (Ctrl), B_SHIFT_KEY, B_OPTION_KEY (Alt)
    char character = 0;    // a capital letter or another ASCII sign; 0: a function key
    int32 functionKey = 0; // 1 to 12; 0: none
    bool operator==(const KeyChord& other) const = default;

    bool IsNone() const { return character == 0 && functionKey == 0; }
    // "Ctrl+Shift+N", "F5"; empty for none.
    std::string Text() const;
};

// The way back, whatever the case and blanks; an empty text is no key. Nothing when a key of this
// name can't be a command's: a character without Ctrl would be typed.
std::optional<KeyChord> ParseKeyChord(std::string_view text);

// The chord of a key message; none for a key that can't be one.
KeyChord ChordOf(const BMessage& keyDown);
