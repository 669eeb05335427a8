// The codec, both ways, on the same bytes.
#include "Fuzz.h"

#include "text/cp932.h"
#include "text/html.h"

namespace {

struct Converted {
    int32 result;
    int32 consumed;
    std::string text;
};

Converted Decode(const std::string& bytes) {
    Converted out{0, static_cast<int32>(bytes.size()), std::string(bytes.size() * 3, '\0')};
    int32 written = 0;
    out.result = cp932_conv_to_utf8(bytes.data(), &out.consumed, out.text.data(), &written);
    Claim(written >= 0 && static_cast<size_t>(written) <= out.text.size(), "UTF-8 fits its room");
    Claim(out.consumed <= static_cast<int32>(bytes.size()), "nothing behind the bytes is read");
    out.text.resize(written);
    return out;
}

Converted Encode(const std::string& text) {
    Converted out{0, static_cast<int32>(text.size()), std::string(text.size(), '\0')};
    int32 written = 0;
    out.result = utf8_conv_to_cp932(text.data(), &out.consumed, out.text.data(), &written);
    Claim(written >= 0 && static_cast<size_t>(written) <= out.text.size(), "cp932 is no longer");
    Claim(out.consumed <= static_cast<int32>(text.size()), "nothing behind the text is read");
    out.text.resize(written);
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string bytes = TextOf(data, size);
    Encode(bytes);
    Converted decoded = Decode(bytes);
    decoded.text.resize(RemoveNulls(decoded.text.data(), static_cast<int32>(decoded.text.size())));
    const Converted encoded = Encode(decoded.text);
    Claim(encoded.result == 0, "cp932 has every character that it gave");
    Claim(encoded.consumed == static_cast<int32>(decoded.text.size()), "all of it is consumed");
    Claim(Decode(encoded.text).text == decoded.text, "a text survives the way there and back");
    return 0;
}
