#pragma once

#include <SupportDefs.h>

#include <memory>

class BBitmap;
class BPoint;

enum BCursorID {
    B_CURSOR_ID_SYSTEM_DEFAULT = 1,
    B_CURSOR_ID_CONTEXT_MENU = 3,
    B_CURSOR_ID_COPY = 4,
    B_CURSOR_ID_CROSS_HAIR = 6,
    B_CURSOR_ID_FOLLOW_LINK = 8,
    B_CURSOR_ID_GRAB = 9,
    B_CURSOR_ID_GRABBING = 10,
    B_CURSOR_ID_HELP = 11,
    B_CURSOR_ID_I_BEAM = 12,
    B_CURSOR_ID_I_BEAM_HORIZONTAL = 13,
    B_CURSOR_ID_MOVE = 14,
    B_CURSOR_ID_NO_CURSOR = 15,
    B_CURSOR_ID_NOT_ALLOWED = 16,
    B_CURSOR_ID_PROGRESS = 17,
    B_CURSOR_ID_RESIZE_NORTH_SOUTH = 22,
    B_CURSOR_ID_RESIZE_EAST_WEST = 25
};

// A pointer's shape. A value that any thread may hold; the server keeps what it still shows.
class BCursor {
public:
    class Private;

    // 68 bytes: size (16), depth (1), hot spot's y and x, then 16 rows of 2 bytes of ink, then 16
    // of mask.
    explicit BCursor(const void* cursorData);
    explicit BCursor(BCursorID id);
    BCursor(const BCursor& other);
    ~BCursor();
    BCursor& operator=(const BCursor& other);
    bool operator==(const BCursor& other) const;
    bool operator!=(const BCursor& other) const { return !(*this == other); }

    status_t InitCheck() const;

private:
    std::shared_ptr<const Private> fPrivate;
};

extern const BCursor* B_CURSOR_SYSTEM_DEFAULT;
extern const BCursor* B_CURSOR_I_BEAM;

// Cursor data for BApplication::SetCursor: the ordinary pointer, and the one over text.
extern const unsigned char B_HAND_CURSOR[];
extern const unsigned char B_I_BEAM_CURSOR[];
