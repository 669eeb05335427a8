#include <Message.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "app/MessagePrivate.h"

// The flattened form, numbers in the machine's order:
//   "BMSG", version, size of the whole, what, count of fields, then for each field:
//   type, length of the name (2 bytes), 1 for a fixed size or 0, 0 (a byte each), count of values,
//   the name, and either the size of a value and all values, or for each value its size and its
//   bytes.

namespace {

constexpr char kMagic[4] = {'B', 'M', 'S', 'G'};
constexpr uint32 kVersion = 1;
constexpr size_t kHeaderSize = 20;
// What is read from a stream at once: the stated size of a message is believed only as bytes
// arrive.
constexpr size_t kStep = 64 * 1024;

template <class Number>
void append(std::string* result, Number number) {
    result->append(reinterpret_cast<const char*>(&number), sizeof(number));
}

// Takes values from the front of some bytes; after a value that is not there it has failed for
// good.
class Reader {
public:
    explicit Reader(std::string_view bytes) : fLeft(bytes) {}

    template <class Number>
    Number Take() {
        Number number = 0;
        std::string_view bytes = TakeBytes(sizeof(number));
        if (!bytes.empty())
            memcpy(&number, bytes.data(), sizeof(number));
        return number;
    }
    std::string_view TakeBytes(size_t size) {
        if (size > fLeft.size()) {
            fHasFailed = true;
            fLeft = {};
            return {};
        }
        std::string_view bytes = fLeft.substr(0, size);
        fLeft.remove_prefix(size);
        return bytes;
    }
    bool HasFailed() const { return fHasFailed; }
    size_t Left() const { return fLeft.size(); }

private:
    std::string_view fLeft;
    bool fHasFailed = false;
};

size_t flatSize(const MessageField& field) {
    size_t size = 12 + field.name.size();
    if (field.isFixedSize)
        return size + 4 + field.data.size();
    for (const std::string& item : field.items)
        size += 4 + item.size();
    return size;
}

void appendField(const MessageField& field, std::string* result) {
    append(result, field.type);
    append(result, static_cast<uint16>(field.name.size()));
    append(result, static_cast<uint8>(field.isFixedSize));
    append(result, uint8(0));
    append(result, static_cast<uint32>(field.Count()));
    *result += field.name;
    if (field.isFixedSize) {
        append(result, static_cast<uint32>(field.itemSize));
        *result += field.data;
        return;
    }
    for (const std::string& item : field.items) {
        append(result, static_cast<uint32>(item.size()));
        *result += item;
    }
}

// Whether a field is kept as it is read, or only looked at.
enum class Keep { kFields, kNothing };

bool takeFixedItems(Reader& reader, uint32 count, Keep keep, MessageField* field) {
    field->itemSize = reader.Take<uint32>();
    if (field->itemSize == 0 || count > reader.Left() / field->itemSize)
        return false;
    std::string_view bytes = reader.TakeBytes(count * field->itemSize);
    if (keep == Keep::kFields)
        field->data = bytes;
    return field->type != B_MESSAGE_TYPE;
}

bool takeItems(Reader& reader, uint32 count, Keep keep, int maxDepth, MessageField* field) {
    for (uint32 i = 0; i < count; i++) {
        std::string_view bytes = reader.TakeBytes(reader.Take<uint32>());
        if (reader.HasFailed())
            return false;
        if (field->type == B_MESSAGE_TYPE &&
            !BMessage::Private::IsFlattened(bytes.data(), bytes.size(), maxDepth - 1))
            return false;
        if (keep == Keep::kFields)
            field->items.emplace_back(bytes);
    }
    return true;
}

bool takeField(Reader& reader, Keep keep, int maxDepth, MessageField* field) {
    field->type = reader.Take<uint32>();
    size_t nameLength = reader.Take<uint16>();
    field->isFixedSize = reader.Take<uint8>() != 0;
    reader.Take<uint8>();
    uint32 count = reader.Take<uint32>();
    field->name = reader.TakeBytes(nameLength);
    // A name is handed out as a C string.
    bool hasGoodName = nameLength <= 255 && field->name.find('\0') == std::string::npos;
    if (reader.HasFailed() || !hasGoodName || count == 0)
        return false;
    return field->isFixedSize ? takeFixedItems(reader, count, keep, field)
                              : takeItems(reader, count, keep, maxDepth, field);
}

struct Parsed {
    uint32 what = 0;
    std::vector<MessageField> fields;
};

bool parse(std::string_view bytes, Keep keep, int maxDepth, Parsed* result) {
    Reader reader(bytes);
    std::string_view magic = reader.TakeBytes(sizeof(kMagic));
    uint32 version = reader.Take<uint32>();
    uint32 size = reader.Take<uint32>();
    result->what = reader.Take<uint32>();
    uint32 count = reader.Take<uint32>();
    if (maxDepth <= 0 || reader.HasFailed() || magic != std::string_view(kMagic, sizeof(kMagic)) ||
        version != kVersion || size != bytes.size())
        return false;
    for (uint32 i = 0; i < count; i++) {
        MessageField field;
        if (!takeField(reader, keep, maxDepth, &field))
            return false;
        if (keep == Keep::kFields)
            result->fields.push_back(std::move(field));
    }
    return reader.Left() == 0;
}

// The size that the header states, 0 for a header of something else.
size_t statedSize(const char* header) {
    uint32 size = 0;
    memcpy(&size, header + 8, sizeof(size));
    return memcmp(header, kMagic, sizeof(kMagic)) == 0 && size >= kHeaderSize ? size : 0;
}

status_t readFully(BDataIO* stream, std::string* bytes, size_t count) {
    size_t done = bytes->size();
    size_t end = done + count;
    while (done < end) {
        bytes->resize(std::min(end, done + kStep));
        ssize_t result = stream->Read(bytes->data() + done, bytes->size() - done);
        if (result <= 0)
            return result < 0 ? static_cast<status_t>(result) : B_IO_ERROR;
        done += static_cast<size_t>(result);
    }
    return B_OK;
}

} // namespace

void BMessage::Private::AppendFlattened(const BMessage& message, std::string* result) {
    const auto& fields = message.fContent->fields;
    result->append(kMagic, sizeof(kMagic));
    append(result, kVersion);
    append(result, static_cast<uint32>(message.FlattenedSize()));
    append(result, message.what);
    append(result, static_cast<uint32>(fields.size()));
    for (const MessageField& field : fields)
        appendField(field, result);
}

bool BMessage::Private::IsFlattened(const char* buffer, size_t size, int maxDepth) {
    Parsed ignored;
    return parse({buffer, size}, Keep::kNothing, maxDepth, &ignored);
}

status_t BMessage::Private::Unflatten(BMessage* message, const char* buffer, size_t size) {
    Parsed parsed;
    bool isGood = parse({buffer, size}, Keep::kFields, kMaxDepth, &parsed);
    message->fContent = std::make_unique<Content>();
    message->what = isGood ? parsed.what : 0;
    if (isGood)
        message->fContent->fields = std::move(parsed.fields);
    return isGood ? B_OK : B_BAD_VALUE;
}

ssize_t BMessage::FlattenedSize() const {
    size_t size = kHeaderSize;
    for (const MessageField& field : fContent->fields)
        size += flatSize(field);
    return static_cast<ssize_t>(size);
}

status_t BMessage::Flatten(char* buffer, ssize_t size) const {
    if (!buffer)
        return B_BAD_VALUE;
    if (size < FlattenedSize())
        return B_NO_MEMORY;
    std::string flat;
    Private::AppendFlattened(*this, &flat);
    flat.copy(buffer, flat.size());
    return B_OK;
}

status_t BMessage::Flatten(BDataIO* stream, ssize_t* size) const {
    if (!stream)
        return B_BAD_VALUE;
    std::string flat;
    Private::AppendFlattened(*this, &flat);
    if (size)
        *size = static_cast<ssize_t>(flat.size());
    for (size_t done = 0; done < flat.size();) {
        ssize_t result = stream->Write(flat.data() + done, flat.size() - done);
        if (result <= 0)
            return result < 0 ? static_cast<status_t>(result) : B_IO_ERROR;
        done += static_cast<size_t>(result);
    }
    return B_OK;
}

status_t BMessage::Unflatten(const char* flatBuffer) {
    if (!flatBuffer)
        return B_BAD_VALUE;
    return Private::Unflatten(this, flatBuffer, statedSize(flatBuffer));
}

status_t BMessage::Unflatten(BDataIO* stream) {
    if (!stream)
        return B_BAD_VALUE;
    MakeEmpty();
    std::string bytes;
    status_t status = readFully(stream, &bytes, kHeaderSize);
    if (status != B_OK)
        return status;
    size_t size = statedSize(bytes.data());
    if (size == 0)
        return B_BAD_VALUE;
    status = readFully(stream, &bytes, size - kHeaderSize);
    return status == B_OK ? Private::Unflatten(this, bytes.data(), bytes.size()) : status;
}
