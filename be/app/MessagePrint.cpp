#include <Message.h>

#include <cctype>
#include <cstdio>
#include <string>

#include "app/MessagePrivate.h"

namespace {

// 'mBSL', or 0x1234 for a code that is no text.
std::string showCode(uint32 code) {
    std::string text = "'";
    for (int shift = 24; shift >= 0; shift -= 8) {
        int byte = (code >> shift) & 0xFF;
        if (!isprint(byte)) {
            char number[16];
            snprintf(number, sizeof(number), "0x%x", code);
            return number;
        }
        text += static_cast<char>(byte);
    }
    return text + "'";
}

// What a person wants to see of the common types; of the others, their size.
std::string showValue(const BMessage& message, const MessageField& field, int32 index) {
    const char* name = field.name.c_str();
    const char* text = nullptr;
    int32 number = 0;
    bool flag = false;
    float real = 0;
    if (message.FindString(name, index, &text) == B_OK)
        return '"' + std::string(text) + '"';
    if (message.FindInt32(name, index, &number) == B_OK)
        return std::to_string(number);
    if (message.FindBool(name, index, &flag) == B_OK)
        return flag ? "true" : "false";
    if (message.FindFloat(name, index, &real) == B_OK)
        return std::to_string(real);
    const void* data = nullptr;
    size_t size = 0;
    field.Get(index, &data, &size);
    return std::to_string(size) + " bytes";
}

} // namespace

void BMessage::PrintToStream() const {
    printf("BMessage(%s) {\n", showCode(what).c_str());
    for (const MessageField& field : fContent->fields) {
        for (int32 i = 0; i < field.Count(); i++)
            printf("    %s[%d] %s: %s\n", field.name.c_str(), i, showCode(field.type).c_str(),
                   showValue(*this, field, i).c_str());
    }
    printf("}\n");
}
