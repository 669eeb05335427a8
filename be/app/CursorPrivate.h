#pragma once

#include <Cursor.h>

const int kCursorSize = 16;

// Constant after construction.
class BCursor::Private {
public:
    static const Private& Of(const BCursor& cursor) { return *cursor.fPrivate; }

    BCursorID id = B_CURSOR_ID_SYSTEM_DEFAULT;
    bool hasBits = false;
    status_t status = B_OK;
    uint8 hotX = 0;
    uint8 hotY = 0;
    uint8 ink[kCursorSize * 2] = {};
    uint8 mask[kCursorSize * 2] = {};
};
