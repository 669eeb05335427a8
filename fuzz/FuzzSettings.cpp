// A settings file: a flattened message, then an attribute that is put into it. The first byte says
// how many bytes at the end are the attribute: its name, a zero byte, its value.
#include "Fuzz.h"

#include "settings/MessageAttributes.h"

#include <DataIO.h>
#include <Rect.h>
#include <String.h>
#include <TypeConstants.h>

#include <algorithm>
#include <cstring>

namespace {

void LookUp(const BMessage& message, const char* name, int32 index) {
    BString text;
    message.FindString(name, index, &text);
    BRect rect;
    message.FindRect(name, index, &rect);
    bool flag = false;
    message.FindBool(name, index, &flag);
    int32 number = 0;
    message.FindInt32(name, index, &number);
    BMessage inner;
    if (message.FindMessage(name, index, &inner) == B_OK)
        inner.FindString(name, &text);
}

void LookAtFields(const BMessage& message) {
    char* name = nullptr;
    type_code type = 0;
    int32 count = 0;
    for (int32 i = 0; message.GetInfo(B_ANY_TYPE, i, &name, &type, &count) == B_OK; i++) {
        Claim(count > 0, "a field has a value");
        for (int32 n = 0; n < std::min(count, 3); n++)
            LookUp(message, name, n);
    }
}

void WriteAndReadBack(const BMessage& message) {
    BMallocIO stream;
    Claim(message.Flatten(&stream) == B_OK, "what was read can be written");
    stream.Seek(0, SEEK_SET);
    BMessage again;
    Claim(again.Unflatten(&stream) == B_OK, "what was written can be read");
    Claim(again.FlattenedSize() == message.FlattenedSize(), "nothing is lost on the way");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size == 0)
        return 0;
    const size_t flatSize = size - std::min<size_t>(data[0], size - 1) - 1;
    BMemoryIO stream(static_cast<const void*>(data + 1), flatSize);
    BMessage message;
    if (message.Unflatten(&stream) != B_OK)
        return 0;
    LookAtFields(message);
    WriteAndReadBack(message);

    const std::string attribute = TextOf(data + 1 + flatSize, size - 1 - flatSize);
    const std::string name = attribute.c_str();
    const std::string value = attribute.substr(std::min(name.size() + 1, attribute.size()));
    for (const type_code type : {B_STRING_TYPE, B_BOOL_TYPE, B_INT32_TYPE, B_RECT_TYPE})
        ApplyAttribute(name.c_str(), type, value.data(), static_cast<ssize_t>(value.size()),
                       &message);
    LookAtFields(message);
    WriteAndReadBack(message);
    return 0;
}
