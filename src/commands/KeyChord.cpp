#include "commands/KeyChord.h"

#include <InterfaceDefs.h>
#include <Message.h>

#include <array>
#include <cctype>
#include <charconv>

namespace {

struct Modifier {
    const char* name;
    uint32 mask;
};
constexpr std::array<Modifier, 3> kModifiers = {
    {{"Ctrl", B_COMMAND_KEY}, {"Alt", B_OPTION_KEY}, {"Shift", B_SHIFT_KEY}}};
constexpr uint32 kAll = B_COMMAND_KEY | B_OPTION_KEY | B_SHIFT_KEY;
constexpr int32 kLastFunctionKey = 12;
constexpr int32 kMenuBarKey = 10; // alone it opens the menu bar

std::string Upper(std::string_view text) {
    std::string upper;
    for (const char c : text) {
        if (c != ' ')
            upper += static_cast<char>(toupper(static_cast<unsigned char>(c)));
    }
    return upper;
}

// Takes "CTRL+" and its like from the front.
uint32 TakeModifiers(std::string* text) {
    uint32 modifiers = 0;
    for (bool found = true; found;) {
        found = false;
        for (const Modifier& modifier : kModifiers) {
            const std::string name = Upper(modifier.name) + "+";
            if (!text->starts_with(name) || text->size() == name.size())
                continue;
            text->erase(0, name.size());
            modifiers |= modifier.mask;
            found = true;
        }
    }
    return modifiers;
}

bool CanBeCommand(const KeyChord& chord) {
    if (chord.functionKey != 0)
        return chord.functionKey != kMenuBarKey || chord.modifiers != 0;
    return (chord.modifiers & B_COMMAND_KEY) != 0 && chord.character > ' ' &&
           chord.character < 0x7F;
}

} // namespace

std::string KeyChord::Text() const {
    if (IsNone())
        return {};
    std::string text;
    for (const Modifier& modifier : kModifiers) {
        if ((modifiers & modifier.mask) != 0)
            text += std::string(modifier.name) + "+";
    }
    return functionKey != 0 ? text + "F" + std::to_string(functionKey) : text + character;
}

std::optional<KeyChord> ParseKeyChord(std::string_view text) {
    std::string rest = Upper(text);
    KeyChord chord;
    if (rest.empty())
        return chord;
    chord.modifiers = TakeModifiers(&rest);
    if (rest.size() == 1) {
        chord.character = rest[0];
    } else {
        const char* const end = rest.data() + rest.size();
        const auto [stop, error] = std::from_chars(rest.data() + 1, end, chord.functionKey);
        if (rest[0] != 'F' || error != std::errc() || stop != end || chord.functionKey < 1 ||
            chord.functionKey > kLastFunctionKey)
            return std::nullopt;
    }
    return CanBeCommand(chord) ? std::optional(chord) : std::nullopt;
}

KeyChord ChordOf(const BMessage& keyDown) {
    int32 raw = 0;
    int32 key = 0;
    int32 modifiers = 0;
    keyDown.FindInt32("raw_char", &raw);
    keyDown.FindInt32("key", &key);
    keyDown.FindInt32("modifiers", &modifiers);
    KeyChord chord;
    chord.modifiers = static_cast<uint32>(modifiers) & kAll;
    if (raw == B_FUNCTION_KEY && key >= B_F1_KEY && key <= B_F12_KEY)
        chord.functionKey = key - B_F1_KEY + 1;
    else if (raw > ' ' && raw < 0x7F)
        chord.character = static_cast<char>(toupper(raw));
    return CanBeCommand(chord) ? chord : KeyChord();
}
