// Character references, stray zero bytes and form values.
#include "Fuzz.h"

#include "text/html.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    std::string line = TextOf(data, size);
    line.resize(size + 1);
    const uint32 kept = TruncateNullChar(line.data(), static_cast<uint32>(size));
    Claim(kept <= size && strlen(line.c_str()) <= kept, "what is kept ends where it is said to");

    BString text(line.c_str());
    const int32 length = text.Length();
    ReplaceHTMLEscapeString(&text);
    Claim(text.Length() <= length, "a character is no longer than its reference");

    const BString before = text;
    if (UrlEncoded(&text) != 0) {
        Claim(text == before, "what can't be encoded stays");
        return 0;
    }
    Claim(strpbrk(text.String(), "&=\r\n ") == nullptr, "a value does not end early");
    return 0;
}
