#include "server/Keys.h"

#include <InterfaceDefs.h>

#include <QKeyEvent>

#include <atomic>
#include <cctype>
#include <iterator>
#include <string>

namespace server {

namespace {

std::atomic<uint32> sModifiers{0};

struct KeyEntry {
    int qtKey;
    int32 code;
    char byte;
};

// Keys that stand for no printable character. The first of several with one byte is the one QtKeyOf
// gives.
const KeyEntry kSpecialKeys[] = {
    {Qt::Key_Escape, 0x01, B_ESCAPE},
    {Qt::Key_Backspace, 0x1e, B_BACKSPACE},
    {Qt::Key_Tab, 0x26, B_TAB},
    {Qt::Key_Backtab, 0x26, B_TAB},
    {Qt::Key_Return, 0x47, B_ENTER},
    {Qt::Key_Enter, 0x5b, B_ENTER},
    {Qt::Key_Insert, 0x1f, B_INSERT},
    {Qt::Key_Delete, 0x34, B_DELETE},
    {Qt::Key_Home, 0x20, B_HOME},
    {Qt::Key_End, 0x35, B_END},
    {Qt::Key_PageUp, 0x21, B_PAGE_UP},
    {Qt::Key_PageDown, 0x36, B_PAGE_DOWN},
    {Qt::Key_Up, 0x57, B_UP_ARROW},
    {Qt::Key_Left, 0x61, B_LEFT_ARROW},
    {Qt::Key_Down, 0x62, B_DOWN_ARROW},
    {Qt::Key_Right, 0x63, B_RIGHT_ARROW},
    {Qt::Key_Space, 0x5e, B_SPACE},
    {Qt::Key_Menu, 0x68, 0},
    {Qt::Key_F1, B_F1_KEY, B_FUNCTION_KEY},
    {Qt::Key_F2, B_F2_KEY, B_FUNCTION_KEY},
    {Qt::Key_F3, B_F3_KEY, B_FUNCTION_KEY},
    {Qt::Key_F4, B_F4_KEY, B_FUNCTION_KEY},
    {Qt::Key_F5, B_F5_KEY, B_FUNCTION_KEY},
    {Qt::Key_F6, B_F6_KEY, B_FUNCTION_KEY},
    {Qt::Key_F7, B_F7_KEY, B_FUNCTION_KEY},
    {Qt::Key_F8, B_F8_KEY, B_FUNCTION_KEY},
    {Qt::Key_F9, B_F9_KEY, B_FUNCTION_KEY},
    {Qt::Key_F10, B_F10_KEY, B_FUNCTION_KEY},
    {Qt::Key_F11, B_F11_KEY, B_FUNCTION_KEY},
    {Qt::Key_F12, B_F12_KEY, B_FUNCTION_KEY},
    {Qt::Key_Print, B_PRINT_KEY, B_FUNCTION_KEY},
    {Qt::Key_ScrollLock, B_SCROLL_KEY, B_FUNCTION_KEY},
    {Qt::Key_Pause, B_PAUSE_KEY, B_FUNCTION_KEY},
};

// The key codes of the keypad with Num Lock off, where they differ.
const KeyEntry kKeypad[] = {
    {Qt::Key_Home, 0x37, B_HOME},         {Qt::Key_Up, 0x38, B_UP_ARROW},
    {Qt::Key_PageUp, 0x39, B_PAGE_UP},    {Qt::Key_Left, 0x48, B_LEFT_ARROW},
    {Qt::Key_Right, 0x4a, B_RIGHT_ARROW}, {Qt::Key_End, 0x58, B_END},
    {Qt::Key_Down, 0x59, B_DOWN_ARROW},   {Qt::Key_PageDown, 0x5a, B_PAGE_DOWN},
    {Qt::Key_Insert, 0x64, B_INSERT},     {Qt::Key_Delete, 0x65, B_DELETE},
};

int32 CodeOfCharacter(int qtKey) {
    struct Row {
        const char* keys;
        int32 first;
    };
    const Row rows[] = {{"`1234567890-=", 0x11},
                        {"QWERTYUIOP[]\\", 0x27},
                        {"ASDFGHJKL;'", 0x3c},
                        {"ZXCVBNM,./", 0x4c}};
    for (const Row& row : rows) {
        for (int32 i = 0; row.keys[i] != 0; i++) {
            if (row.keys[i] == qtKey)
                return row.first + i;
        }
    }
    return 0;
}

// The byte that the key would give without modifiers.
int32 RawChar(const QKeyEvent* event, const KeyCode& code, const std::string& text) {
    if (code.byte != 0 || code.code == 0x68)
        return code.byte;
    const int key = event->key();
    if (key > 0 && key < 0x80)
        return tolower(key);
    return text.size() == 1 ? text[0] : 0;
}

bool IsModifier(int key) {
    return (key >= Qt::Key_Shift && key < Qt::Key_ScrollLock) || key == Qt::Key_Super_L ||
           key == Qt::Key_Super_R || key == Qt::Key_Hyper_L || key == Qt::Key_Hyper_R ||
           key == Qt::Key_AltGr ||
           (key >= Qt::Key_Dead_Grave && key <= Qt::Key_Dead_Longsolidusoverlay);
}

std::string BytesOf(const QKeyEvent* event, const KeyCode& code, int32 rawChar) {
    if (code.code == 0x68)
        return std::string(1, '\0');
    if (code.byte != 0)
        return std::string(1, code.byte);
    if (event->modifiers() & Qt::ControlModifier)
        return rawChar > 0 ? std::string(1, static_cast<char>(rawChar)) : std::string();
    return event->text().toStdString();
}

} // namespace

uint32 ModifiersOf(Qt::KeyboardModifiers modifiers) {
    uint32 result = 0;
    if (modifiers & Qt::ShiftModifier)
        result |= B_SHIFT_KEY | B_LEFT_SHIFT_KEY;
    if (modifiers & Qt::ControlModifier)
        result |= B_COMMAND_KEY | B_LEFT_COMMAND_KEY;
    if (modifiers & Qt::AltModifier)
        result |= B_OPTION_KEY | B_LEFT_OPTION_KEY;
    return result;
}

uint32 ButtonsOf(Qt::MouseButtons buttons) {
    uint32 result = 0;
    if (buttons & Qt::LeftButton)
        result |= 0x01;
    if (buttons & Qt::RightButton)
        result |= 0x02;
    if (buttons & Qt::MiddleButton)
        result |= 0x04;
    return result;
}

KeyCode KeyCodeOf(int qtKey, bool keypad) {
    if (keypad) {
        for (const KeyEntry& entry : kKeypad) {
            if (entry.qtKey == qtKey)
                return {entry.code, entry.byte};
        }
    }
    for (const KeyEntry& entry : kSpecialKeys) {
        if (entry.qtKey == qtKey)
            return {entry.code, entry.byte};
    }
    return {CodeOfCharacter(qtKey), 0};
}

int QtKeyOf(char byte, uint32 functionKey) {
    for (const KeyEntry& entry : kSpecialKeys) {
        if (entry.byte == byte && (byte != B_FUNCTION_KEY || entry.code == int32(functionKey)))
            return entry.qtKey;
    }
    return 0;
}

bool FillKeyMessage(const QKeyEvent* event, BMessage& message) {
    if (IsModifier(event->key()))
        return false;
    const KeyCode code = KeyCodeOf(event->key(), event->modifiers() & Qt::KeypadModifier);
    const std::string text = event->text().toStdString();
    const int32 rawChar = RawChar(event, code, text);
    const std::string bytes = BytesOf(event, code, rawChar);
    if (bytes.empty())
        return false;
    uint8 states[16] = {};
    states[code.code / 8] = static_cast<uint8>(0x80 >> (code.code % 8));
    message.AddInt32("key", code.code);
    message.AddInt32("modifiers", static_cast<int32>(ModifiersOf(event->modifiers())));
    message.AddInt32("raw_char", rawChar);
    message.AddString("bytes", bytes.c_str());
    for (const char byte : bytes)
        message.AddInt8("byte", byte);
    for (const uint8 state : states)
        message.AddUInt8("states", state);
    if (event->isAutoRepeat())
        message.AddInt32("be:key_repeat", 1);
    return true;
}

uint32 CurrentModifiers() {
    return sModifiers.load(std::memory_order_relaxed);
}

void NoteModifiers(uint32 modifiers) {
    sModifiers.store(modifiers, std::memory_order_relaxed);
}

} // namespace server
