#include "app/CursorPrivate.h"

#include <algorithm>
#include <cstring>

namespace {

const int kHeader = 4;
const int kPlane = kCursorSize * 2;

std::shared_ptr<const BCursor::Private> FromId(BCursorID id) {
    auto shape = std::make_shared<BCursor::Private>();
    shape->id = id;
    return shape;
}

std::shared_ptr<const BCursor::Private> FromData(const uint8* data) {
    auto shape = std::make_shared<BCursor::Private>();
    if (data == nullptr || data[0] != kCursorSize || data[1] != 1 || data[2] >= kCursorSize ||
        data[3] >= kCursorSize) {
        shape->status = B_BAD_VALUE;
        return shape;
    }
    shape->hasBits = true;
    shape->hotY = data[2];
    shape->hotX = data[3];
    std::copy_n(data + kHeader, kPlane, shape->ink);
    std::copy_n(data + kHeader + kPlane, kPlane, shape->mask);
    return shape;
}

// The built-in data are recognised by their address: the desktop's own pointers are shown for them.
std::shared_ptr<const BCursor::Private> FromAnyData(const void* data) {
    if (data == B_HAND_CURSOR)
        return FromId(B_CURSOR_ID_SYSTEM_DEFAULT);
    if (data == B_I_BEAM_CURSOR)
        return FromId(B_CURSOR_ID_I_BEAM);
    return FromData(static_cast<const uint8*>(data));
}

const BCursor sSystemDefault(B_CURSOR_ID_SYSTEM_DEFAULT);
const BCursor sIBeam(B_CURSOR_ID_I_BEAM);

} // namespace

const BCursor* B_CURSOR_SYSTEM_DEFAULT = &sSystemDefault;
const BCursor* B_CURSOR_I_BEAM = &sIBeam;

// An arrow, as a program would draw it that looks at the bytes.
const unsigned char B_HAND_CURSOR[] = {
    16,   1,    1,    1, // size, depth, hot spot
    0x00, 0x00, 0x60, 0x00, 0x50, 0x00, 0x48, 0x00, 0x44, 0x00, 0x42, 0x00, 0x41, 0x00, 0x40, 0x80,
    0x43, 0x80, 0x52, 0x00, 0x69, 0x00, 0x09, 0x00, 0x04, 0x80, 0x03, 0x00, 0x00, 0x00, 0x00, 0x00,
    0x00, 0x00, 0x60, 0x00, 0x70, 0x00, 0x78, 0x00, 0x7c, 0x00, 0x7e, 0x00, 0x7f, 0x00, 0x7f, 0x80,
    0x7f, 0x80, 0x7e, 0x00, 0x6f, 0x00, 0x0f, 0x00, 0x07, 0x80, 0x03, 0x00, 0x00, 0x00, 0x00, 0x00};

const unsigned char B_I_BEAM_CURSOR[] = {
    16,   1,    7,    7, // size, depth, hot spot
    0x00, 0x00, 0x0e, 0xe0, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00,
    0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x0e, 0xe0, 0x00, 0x00, 0x00, 0x00,
    0x1f, 0xf0, 0x1f, 0xf0, 0x1f, 0xf0, 0x03, 0x80, 0x03, 0x80, 0x03, 0x80, 0x03, 0x80, 0x03, 0x80,
    0x03, 0x80, 0x03, 0x80, 0x03, 0x80, 0x03, 0x80, 0x1f, 0xf0, 0x1f, 0xf0, 0x1f, 0xf0, 0x00, 0x00};

BCursor::BCursor(const void* cursorData) : fPrivate(FromAnyData(cursorData)) {}

BCursor::BCursor(BCursorID id) : fPrivate(FromId(id)) {}

BCursor::BCursor(const BCursor& other) = default;
BCursor::~BCursor() = default;
BCursor& BCursor::operator=(const BCursor& other) = default;

bool BCursor::operator==(const BCursor& other) const {
    const Private& a = *fPrivate;
    const Private& b = *other.fPrivate;
    return a.hasBits == b.hasBits && a.id == b.id && a.hotX == b.hotX && a.hotY == b.hotY &&
           memcmp(a.ink, b.ink, kPlane) == 0 && memcmp(a.mask, b.mask, kPlane) == 0;
}

status_t BCursor::InitCheck() const {
    return fPrivate->status;
}
