#pragma once

class BMessage;

// Whether a key that a view is told asks for the menu of what is selected: the key between the
// right Command and Control keys, or F10 together with Shift. Null, or another message, does not.
bool IsMenuKey(const BMessage* message);
