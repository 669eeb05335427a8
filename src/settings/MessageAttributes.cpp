#include "settings/MessageAttributes.h"

#include <Node.h>
#include <TypeConstants.h>
#include <fs_attr.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

namespace {

constexpr type_code kStoredTypes[] = {
    B_STRING_TYPE, B_POINT_TYPE,  B_BOOL_TYPE,   B_INT8_TYPE,   B_CHAR_TYPE,    B_INT64_TYPE,
    B_DOUBLE_TYPE, B_FLOAT_TYPE,  B_INT32_TYPE,  B_MIME_TYPE,   B_SSIZE_T_TYPE, B_RGB_COLOR_TYPE,
    B_OFF_T_TYPE,  B_RECT_TYPE,   B_INT16_TYPE,  B_SIZE_T_TYPE, B_UINT64_TYPE,  B_TIME_TYPE,
    B_UINT8_TYPE,  B_UINT32_TYPE, B_UINT16_TYPE,
};

constexpr int32 kMostValues = 999999999;
// Deeper nesting than any program writes; hostile names can't recurse further.
constexpr size_t kLongestName = 4096;

bool IsStored(type_code type) {
    return std::find(std::begin(kStoredTypes), std::end(kStoredTypes), type) !=
           std::end(kStoredTypes);
}

std::string NameOf(const std::string& prefix, const char* field, int32 index, int32 count) {
    if (count == 1)
        return prefix + field;
    const int width = snprintf(nullptr, 0, "%d", count - 1);
    char digits[16];
    snprintf(digits, sizeof(digits), "%0*d", width, index);
    return prefix + field + "::" + digits;
}

status_t Store(const BMessage& message, const std::string& prefix, BNode* node);

status_t StoreValue(const BMessage& message, const char* field, type_code type, int32 index,
                    const std::string& name, BNode* node) {
    if (type == B_MESSAGE_TYPE) {
        BMessage inner;
        const status_t status = message.FindMessage(field, index, &inner);
        return status == B_OK ? Store(inner, name + ":", node) : status;
    }
    const void* data = nullptr;
    ssize_t size = 0;
    const status_t status = message.FindData(field, type, index, &data, &size);
    if (status != B_OK)
        return status;
    const ssize_t written = node->WriteAttr(name.c_str(), type, 0, data, size);
    if (written < 0)
        return static_cast<status_t>(written);
    return written == size ? B_OK : B_IO_ERROR;
}

status_t Store(const BMessage& message, const std::string& prefix, BNode* node) {
    char* field = nullptr;
    type_code type = 0;
    int32 count = 0;
    for (int32 i = 0; message.GetInfo(B_ANY_TYPE, i, &field, &type, &count) == B_OK; i++) {
        if (strchr(field, ':') != nullptr)
            return B_OK;
        if ((type != B_MESSAGE_TYPE && !IsStored(type)) || count > kMostValues)
            continue;
        for (int32 n = 0; n < count; n++) {
            const std::string name = NameOf(prefix, field, n, count);
            const status_t status = StoreValue(message, field, type, n, name, node);
            if (status != B_OK)
                return status;
        }
    }
    return B_OK;
}

// The place of an attribute within one message.
struct Place {
    std::string field;
    int32 index = 0;
    const char* inner = nullptr; // the rest of the name, for the nested message; null at a value
};

bool ParsePlace(const char* name, Place* place) {
    const char* colon = strchr(name, ':');
    if (colon == nullptr) {
        place->field = name;
        return true;
    }
    place->field.assign(name, colon - name);
    if (colon[1] != ':') {
        place->inner = colon + 1;
        return true;
    }
    if (!isdigit(static_cast<unsigned char>(colon[2])))
        return false;
    char* end = nullptr;
    const unsigned long index = strtoul(colon + 2, &end, 10);
    if (index > kMostValues || (*end != '\0' && *end != ':'))
        return false;
    place->index = static_cast<int32>(index);
    place->inner = *end == ':' ? end + 1 : nullptr;
    return true;
}

// Text that somebody edited may have lost the zero byte that a message's strings end with.
status_t ReplaceValue(const Place& place, type_code type, const void* data, ssize_t size,
                      BMessage* message) {
    if (type != B_STRING_TYPE && type != B_MIME_TYPE)
        return message->ReplaceData(place.field.c_str(), type, place.index, data, size);
    const std::string text(static_cast<const char*>(data), size);
    return message->ReplaceData(place.field.c_str(), type, place.index, text.c_str(),
                                strlen(text.c_str()) + 1);
}

status_t ReadAttribute(BNode* node, const char* name, BMessage* message) {
    attr_info info;
    status_t status = node->GetAttrInfo(name, &info);
    if (status != B_OK)
        return status;
    if (!IsStored(info.type) || strlen(name) > kLongestName)
        return B_OK;
    std::vector<char> data(static_cast<size_t>(info.size) + 1);
    const ssize_t size = node->ReadAttr(name, info.type, 0, data.data(), info.size);
    if (size != info.size)
        return B_IO_ERROR;
    return ApplyAttribute(name, info.type, data.data(), size, message);
}

} // namespace

status_t StoreAttributes(const BMessage& message, BNode* node) {
    return Store(message, "", node);
}

status_t ApplyAttributes(BNode* node, BMessage* message) {
    char name[B_ATTR_NAME_LENGTH + 1];
    node->RewindAttrs();
    while (node->GetNextAttrName(name) == B_OK) {
        const status_t status = ReadAttribute(node, name, message);
        if (status != B_OK)
            return status;
    }
    return B_OK;
}

status_t ApplyAttribute(const char* name, type_code type, const void* data, ssize_t size,
                        BMessage* message) {
    Place place;
    if (!ParsePlace(name, &place))
        return B_OK;
    if (place.inner == nullptr)
        return ReplaceValue(place, type, data, size, message);
    BMessage inner;
    status_t status = message->FindMessage(place.field.c_str(), place.index, &inner);
    if (status == B_OK)
        status = ApplyAttribute(place.inner, type, data, size, &inner);
    if (status == B_OK)
        status = message->ReplaceMessage(place.field.c_str(), place.index, &inner);
    return status;
}
