#pragma once

#include <Message.h>
#include <SupportDefs.h>

#include <QtCore/qnamespace.h>

class QKeyEvent;

namespace server {

// The API's modifiers for Qt's: Ctrl is Command, Alt is Option.
uint32 ModifiersOf(Qt::KeyboardModifiers modifiers);
uint32 ButtonsOf(Qt::MouseButtons buttons);

// A B_KEY_DOWN or B_KEY_UP with its documented fields; false for keys that send none (modifiers,
// dead keys).
bool FillKeyMessage(const QKeyEvent* event, BMessage& message);

// The API's code and byte for one of Qt's keys; a byte of 0 if it has none of its own.
struct KeyCode {
    int32 code;
    char byte;
};
KeyCode KeyCodeOf(int qtKey, bool keypad);
// The other way, for keys that stand for no printable character; 0 if there is none.
int QtKeyOf(char byte, uint32 functionKey);

// Any thread: the modifiers of the last event.
uint32 CurrentModifiers();
void NoteModifiers(uint32 modifiers);

} // namespace server
