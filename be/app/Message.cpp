#include <Message.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <utility>

#include "app/MessagePrivate.h"

namespace {

constexpr size_t kMaxNameLength = 255;

// Types whose values differ in size, whatever the caller of AddData says.
bool isVariable(type_code type) {
    return type == B_STRING_TYPE || type == B_MESSAGE_TYPE || type == B_REF_TYPE ||
           type == B_MIME_TYPE;
}

bool isOfType(const MessageField& field, type_code type) {
    return type == B_ANY_TYPE || field.type == type;
}

} // namespace

int32 MessageField::Count() const {
    size_t count = isFixedSize ? data.size() / itemSize : items.size();
    return static_cast<int32>(count);
}

void MessageField::Get(int32 index, const void** value, size_t* size) const {
    size_t position = static_cast<size_t>(index);
    *value = isFixedSize ? data.data() + position * itemSize : items[position].data();
    *size = isFixedSize ? itemSize : items[position].size();
}

status_t MessageField::Add(const void* value, size_t size) {
    if (isFixedSize && size != itemSize)
        return B_BAD_VALUE;
    const char* bytes = size > 0 ? static_cast<const char*>(value) : "";
    if (isFixedSize)
        data.append(bytes, size);
    else
        items.emplace_back(bytes, size);
    return B_OK;
}

status_t MessageField::Replace(int32 index, const void* value, size_t size) {
    if (index < 0 || index >= Count())
        return B_BAD_INDEX;
    size_t position = static_cast<size_t>(index);
    const char* bytes = size > 0 ? static_cast<const char*>(value) : "";
    if (!isFixedSize)
        items[position] = std::string(bytes, size);
    else if (size == itemSize)
        data.replace(position * itemSize, itemSize, std::string(bytes, size));
    else
        return B_BAD_VALUE;
    return B_OK;
}

void MessageField::Remove(int32 index) {
    if (isFixedSize)
        data.erase(static_cast<size_t>(index) * itemSize, itemSize);
    else
        items.erase(items.begin() + index);
}

MessageField* BMessage::Content::Find(const char* name) {
    size_t length = strlen(name);
    for (MessageField& field : fields) {
        if (field.name.size() == length && memcmp(field.name.data(), name, length) == 0)
            return &field;
    }
    return nullptr;
}

BMessage::BMessage() : BMessage(0) {}

BMessage::BMessage(uint32 code) : what(code), fContent(std::make_unique<Content>()) {}

BMessage::BMessage(const BMessage& message) : BMessage(message.what) {
    fContent->fields = message.fContent->fields;
}

BMessage::~BMessage() = default;

BMessage& BMessage::operator=(const BMessage& message) {
    if (this == &message)
        return *this;
    auto content = std::make_unique<Content>();
    content->fields = message.fContent->fields;
    what = message.what;
    fContent = std::move(content);
    return *this;
}

status_t BMessage::GetInfo(type_code typeRequested, int32 index, char** nameFound,
                           type_code* typeFound, int32* countFound) const {
    int32 seen = 0;
    for (MessageField& field : fContent->fields) {
        if (!isOfType(field, typeRequested) || seen++ != index)
            continue;
        if (nameFound)
            *nameFound = field.name.data();
        if (typeFound)
            *typeFound = field.type;
        if (countFound)
            *countFound = field.Count();
        return B_OK;
    }
    return seen == 0 && typeRequested != B_ANY_TYPE ? B_BAD_TYPE : B_BAD_INDEX;
}

status_t BMessage::GetInfo(const char* name, type_code* typeFound, int32* countFound) const {
    if (!name)
        return B_BAD_VALUE;
    MessageField* field = fContent->Find(name);
    if (countFound)
        *countFound = field ? field->Count() : 0;
    if (typeFound && field)
        *typeFound = field->type;
    return field ? B_OK : B_NAME_NOT_FOUND;
}

status_t BMessage::GetInfo(const char* name, type_code* typeFound, bool* fixedSize) const {
    if (!name)
        return B_BAD_VALUE;
    MessageField* field = fContent->Find(name);
    if (!field)
        return B_NAME_NOT_FOUND;
    if (typeFound)
        *typeFound = field->type;
    if (fixedSize)
        *fixedSize = field->isFixedSize;
    return B_OK;
}

int32 BMessage::CountNames(type_code type) const {
    auto isWanted = [type](const MessageField& field) { return isOfType(field, type); };
    const auto& fields = fContent->fields;
    return static_cast<int32>(std::count_if(fields.begin(), fields.end(), isWanted));
}

bool BMessage::IsEmpty() const {
    return fContent->fields.empty();
}

bool BMessage::IsSystem() const {
    auto isUpperCase = [this](int shift) { return isupper((what >> shift) & 0xFF) != 0; };
    return what >> 24 == '_' && isUpperCase(16) && isUpperCase(8) && isUpperCase(0);
}

status_t BMessage::Rename(const char* oldEntry, const char* newEntry) {
    if (!oldEntry || !newEntry || strlen(newEntry) > kMaxNameLength)
        return B_BAD_VALUE;
    MessageField* field = fContent->Find(oldEntry);
    if (!field)
        return B_NAME_NOT_FOUND;
    if (field->name == newEntry)
        return B_OK;
    if (fContent->Find(newEntry))
        return B_NAME_IN_USE;
    field->name = newEntry;
    return B_OK;
}

status_t BMessage::AddData(const char* name, type_code type, const void* data, ssize_t numBytes,
                           bool isFixedSize, int32 /*count*/) {
    if (!name || strlen(name) > kMaxNameLength || numBytes < 0 || (!data && numBytes > 0))
        return B_BAD_VALUE;
    size_t size = static_cast<size_t>(numBytes);
    if (MessageField* field = fContent->Find(name))
        return field->type == type ? field->Add(data, size) : B_BAD_TYPE;
    MessageField field;
    field.name = name;
    field.type = type;
    field.isFixedSize = isFixedSize && size > 0 && !isVariable(type);
    field.itemSize = size;
    field.Add(data, size);
    fContent->fields.push_back(std::move(field));
    return B_OK;
}

status_t BMessage::RemoveData(const char* name, int32 index) {
    if (!name)
        return B_BAD_VALUE;
    MessageField* field = fContent->Find(name);
    if (!field)
        return B_NAME_NOT_FOUND;
    if (index < 0 || index >= field->Count())
        return B_BAD_INDEX;
    field->Remove(index);
    return field->Count() == 0 ? RemoveName(name) : B_OK;
}

status_t BMessage::RemoveName(const char* name) {
    if (!name)
        return B_BAD_VALUE;
    MessageField* field = fContent->Find(name);
    if (!field)
        return B_NAME_NOT_FOUND;
    fContent->fields.erase(fContent->fields.begin() + (field - fContent->fields.data()));
    return B_OK;
}

status_t BMessage::MakeEmpty() {
    fContent->fields.clear();
    return B_OK;
}

status_t BMessage::FindData(const char* name, type_code type, const void** data,
                            ssize_t* numBytes) const {
    return FindData(name, type, 0, data, numBytes);
}

status_t BMessage::FindData(const char* name, type_code type, int32 index, const void** data,
                            ssize_t* numBytes) const {
    if (!name || !data)
        return B_BAD_VALUE;
    MessageField* field = fContent->Find(name);
    if (!field)
        return B_NAME_NOT_FOUND;
    if (!isOfType(*field, type))
        return B_BAD_TYPE;
    if (index < 0 || index >= field->Count())
        return B_BAD_INDEX;
    size_t size = 0;
    field->Get(index, data, &size);
    if (numBytes)
        *numBytes = static_cast<ssize_t>(size);
    return B_OK;
}

status_t BMessage::ReplaceData(const char* name, type_code type, const void* data,
                               ssize_t numBytes) {
    return ReplaceData(name, type, 0, data, numBytes);
}

status_t BMessage::ReplaceData(const char* name, type_code type, int32 index, const void* data,
                               ssize_t numBytes) {
    if (!name || numBytes < 0 || (!data && numBytes > 0))
        return B_BAD_VALUE;
    MessageField* field = fContent->Find(name);
    if (!field)
        return B_NAME_NOT_FOUND;
    if (field->type != type)
        return B_BAD_TYPE;
    return field->Replace(index, data, static_cast<size_t>(numBytes));
}

bool BMessage::HasData(const char* name, type_code type, int32 index) const {
    const void* data = nullptr;
    return FindData(name, type, index, &data, nullptr) == B_OK;
}
