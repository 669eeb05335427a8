#include <Message.h>

#include <cstring>
#include <string>

#include <Entry.h>
#include <String.h>

#include "app/MessagePrivate.h"
#include "storage/EntryPrivate.h"

// The typed calls are the same for every type of a fixed size. (A type can't stand in parentheses.)
// NOLINTBEGIN(bugprone-macro-parentheses)
#define DEFINE_FIELD_CALLS(Name, Type, code)                                                       \
    status_t BMessage::Add##Name(const char* name, Type value) {                                   \
        return AddData(name, code, &value, sizeof(value));                                         \
    }                                                                                              \
    status_t BMessage::Find##Name(const char* name, Type* value) const {                           \
        return Find##Name(name, 0, value);                                                         \
    }                                                                                              \
    status_t BMessage::Find##Name(const char* name, int32 index, Type* value) const {              \
        return findValue(*this, name, code, index, value, sizeof(*value));                         \
    }                                                                                              \
    status_t BMessage::Replace##Name(const char* name, Type value) {                               \
        return ReplaceData(name, code, &value, sizeof(value));                                     \
    }                                                                                              \
    status_t BMessage::Replace##Name(const char* name, int32 index, Type value) {                  \
        return ReplaceData(name, code, index, &value, sizeof(value));                              \
    }                                                                                              \
    bool BMessage::Has##Name(const char* name, int32 index) const {                                \
        return HasData(name, code, index);                                                         \
    }

// NOLINTEND(bugprone-macro-parentheses)

namespace {

// A value of another size than its type has (from hostile bytes, say) is no value of that type.
status_t findValue(const BMessage& message, const char* name, type_code type, int32 index,
                   void* value, size_t size) {
    if (!value)
        return B_BAD_VALUE;
    const void* data = nullptr;
    ssize_t found = 0;
    status_t status = message.FindData(name, type, index, &data, &found);
    if (status != B_OK)
        return status;
    if (static_cast<size_t>(found) != size)
        return B_BAD_DATA;
    memcpy(value, data, size);
    return B_OK;
}

ssize_t sizeWithNul(const char* string) {
    return static_cast<ssize_t>(strlen(string)) + 1;
}

// The flattened form, or an empty string when too many messages lie inside each other.
std::string flattenInner(const BMessage& message) {
    std::string flat;
    BMessage::Private::AppendFlattened(message, &flat);
    if (!BMessage::Private::IsFlattened(flat.data(), flat.size(), BMessage::Private::kMaxDepth - 1))
        flat.clear();
    return flat;
}

} // namespace

DEFINE_FIELD_CALLS(Rect, BRect, B_RECT_TYPE)
DEFINE_FIELD_CALLS(Point, BPoint, B_POINT_TYPE)
DEFINE_FIELD_CALLS(Int8, int8, B_INT8_TYPE)
DEFINE_FIELD_CALLS(UInt8, uint8, B_UINT8_TYPE)
DEFINE_FIELD_CALLS(Int16, int16, B_INT16_TYPE)
DEFINE_FIELD_CALLS(UInt16, uint16, B_UINT16_TYPE)
DEFINE_FIELD_CALLS(Int32, int32, B_INT32_TYPE)
DEFINE_FIELD_CALLS(UInt32, uint32, B_UINT32_TYPE)
DEFINE_FIELD_CALLS(Int64, int64, B_INT64_TYPE)
DEFINE_FIELD_CALLS(UInt64, uint64, B_UINT64_TYPE)
DEFINE_FIELD_CALLS(Float, float, B_FLOAT_TYPE)
DEFINE_FIELD_CALLS(Double, double, B_DOUBLE_TYPE)
DEFINE_FIELD_CALLS(Color, rgb_color, B_RGB_COLOR_TYPE)
DEFINE_FIELD_CALLS(Messenger, BMessenger, B_MESSENGER_TYPE)

#undef DEFINE_FIELD_CALLS

// A byte that is neither 0 nor 1 must not become a bool: it counts as true.
status_t BMessage::AddBool(const char* name, bool value) {
    return AddData(name, B_BOOL_TYPE, &value, sizeof(value));
}

status_t BMessage::FindBool(const char* name, bool* value) const {
    return FindBool(name, 0, value);
}

status_t BMessage::FindBool(const char* name, int32 index, bool* value) const {
    if (!value)
        return B_BAD_VALUE;
    uint8 byte = 0;
    status_t status = findValue(*this, name, B_BOOL_TYPE, index, &byte, sizeof(byte));
    if (status == B_OK)
        *value = byte != 0;
    return status;
}

status_t BMessage::ReplaceBool(const char* name, bool value) {
    return ReplaceBool(name, 0, value);
}

status_t BMessage::ReplaceBool(const char* name, int32 index, bool value) {
    return ReplaceData(name, B_BOOL_TYPE, index, &value, sizeof(value));
}

bool BMessage::HasBool(const char* name, int32 index) const {
    return HasData(name, B_BOOL_TYPE, index);
}

status_t BMessage::AddPointer(const char* name, const void* pointer) {
    return AddData(name, B_POINTER_TYPE, &pointer, sizeof(pointer));
}

status_t BMessage::FindPointer(const char* name, void** pointer) const {
    return FindPointer(name, 0, pointer);
}

status_t BMessage::FindPointer(const char* name, int32 index, void** pointer) const {
    return findValue(*this, name, B_POINTER_TYPE, index, pointer, sizeof(*pointer));
}

status_t BMessage::ReplacePointer(const char* name, const void* pointer) {
    return ReplacePointer(name, 0, pointer);
}

status_t BMessage::ReplacePointer(const char* name, int32 index, const void* pointer) {
    return ReplaceData(name, B_POINTER_TYPE, index, &pointer, sizeof(pointer));
}

bool BMessage::HasPointer(const char* name, int32 index) const {
    return HasData(name, B_POINTER_TYPE, index);
}

status_t BMessage::AddString(const char* name, const char* string) {
    string = string ? string : "";
    return AddData(name, B_STRING_TYPE, string, sizeWithNul(string), false);
}

status_t BMessage::AddString(const char* name, const BString& string) {
    return AddString(name, string.String());
}

status_t BMessage::FindString(const char* name, const char** string) const {
    return FindString(name, 0, string);
}

status_t BMessage::FindString(const char* name, int32 index, const char** string) const {
    const void* data = nullptr;
    status_t status = FindData(name, B_STRING_TYPE, index, &data, nullptr);
    if (status == B_OK && string)
        *string = static_cast<const char*>(data);
    return string ? status : B_BAD_VALUE;
}

status_t BMessage::FindString(const char* name, BString* string) const {
    return FindString(name, 0, string);
}

status_t BMessage::FindString(const char* name, int32 index, BString* string) const {
    const char* found = nullptr;
    status_t status = FindString(name, index, &found);
    if (status == B_OK && string)
        *string = found;
    return string ? status : B_BAD_VALUE;
}

status_t BMessage::ReplaceString(const char* name, const char* string) {
    return ReplaceString(name, 0, string);
}

status_t BMessage::ReplaceString(const char* name, int32 index, const char* string) {
    string = string ? string : "";
    return ReplaceData(name, B_STRING_TYPE, index, string, sizeWithNul(string));
}

status_t BMessage::ReplaceString(const char* name, const BString& string) {
    return ReplaceString(name, 0, string.String());
}

status_t BMessage::ReplaceString(const char* name, int32 index, const BString& string) {
    return ReplaceString(name, index, string.String());
}

bool BMessage::HasString(const char* name, int32 index) const {
    return HasData(name, B_STRING_TYPE, index);
}

status_t BMessage::AddMessage(const char* name, const BMessage* message) {
    std::string flat = message ? flattenInner(*message) : std::string();
    if (flat.empty())
        return B_BAD_VALUE;
    return AddData(name, B_MESSAGE_TYPE, flat.data(), static_cast<ssize_t>(flat.size()), false);
}

status_t BMessage::FindMessage(const char* name, BMessage* message) const {
    return FindMessage(name, 0, message);
}

status_t BMessage::FindMessage(const char* name, int32 index, BMessage* message) const {
    if (!message)
        return B_BAD_VALUE;
    const void* data = nullptr;
    ssize_t size = 0;
    status_t status = FindData(name, B_MESSAGE_TYPE, index, &data, &size);
    if (status != B_OK)
        return status;
    // The message that is filled may be the one that holds the bytes.
    std::string flat(static_cast<const char*>(data), static_cast<size_t>(size));
    return Private::Unflatten(message, flat.data(), flat.size());
}

status_t BMessage::ReplaceMessage(const char* name, const BMessage* message) {
    return ReplaceMessage(name, 0, message);
}

status_t BMessage::ReplaceMessage(const char* name, int32 index, const BMessage* message) {
    std::string flat = message ? flattenInner(*message) : std::string();
    if (flat.empty())
        return B_BAD_VALUE;
    return ReplaceData(name, B_MESSAGE_TYPE, index, flat.data(), static_cast<ssize_t>(flat.size()));
}

bool BMessage::HasMessage(const char* name, int32 index) const {
    return HasData(name, B_MESSAGE_TYPE, index);
}

status_t BMessage::AddRef(const char* name, const entry_ref* ref) {
    if (!ref)
        return B_BAD_VALUE;
    std::string flat = entry_ref::Private::Flatten(*ref);
    return AddData(name, B_REF_TYPE, flat.data(), static_cast<ssize_t>(flat.size()), false);
}

status_t BMessage::FindRef(const char* name, entry_ref* ref) const {
    return FindRef(name, 0, ref);
}

status_t BMessage::FindRef(const char* name, int32 index, entry_ref* ref) const {
    if (!ref)
        return B_BAD_VALUE;
    const void* data = nullptr;
    ssize_t size = 0;
    status_t status = FindData(name, B_REF_TYPE, index, &data, &size);
    if (status != B_OK)
        return status;
    std::string flat(static_cast<const char*>(data), static_cast<size_t>(size));
    return entry_ref::Private::Unflatten(flat, ref);
}

status_t BMessage::ReplaceRef(const char* name, const entry_ref* ref) {
    return ReplaceRef(name, 0, ref);
}

status_t BMessage::ReplaceRef(const char* name, int32 index, const entry_ref* ref) {
    if (!ref)
        return B_BAD_VALUE;
    std::string flat = entry_ref::Private::Flatten(*ref);
    return ReplaceData(name, B_REF_TYPE, index, flat.data(), static_cast<ssize_t>(flat.size()));
}

bool BMessage::HasRef(const char* name, int32 index) const {
    return HasData(name, B_REF_TYPE, index);
}
