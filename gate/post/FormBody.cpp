#include "post/FormBody.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace gate {

namespace {

std::string Decoded(std::string_view text) {
    std::string decoded;
    for (size_t i = 0; i < text.size(); i++) {
        unsigned byte = 0;
        const char* digits = text.data() + i + 1;
        const bool isCoded = text[i] == '%' && i + 2 < text.size() &&
                             std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
        decoded += isCoded ? static_cast<char>(byte) : text[i] == '+' ? ' ' : text[i];
        i += isCoded ? 2 : 0;
    }
    return decoded;
}

bool IsPlain(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '*' ||
           c == '-' || c == '.' || c == '_';
}

std::string Encoded(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (IsPlain(c))
            encoded += c;
        else if (c == ' ')
            encoded += '+';
        else
            encoded += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return encoded;
}

} // namespace

FormPairs ParseFormBody(std::string_view body) {
    FormPairs pairs;
    while (!body.empty()) {
        const std::string_view pair = body.substr(0, body.find('&'));
        body.remove_prefix(std::min(pair.size() + 1, body.size()));
        const size_t equals = pair.find('=');
        const std::string_view value = equals == pair.npos ? "" : pair.substr(equals + 1);
        if (!pair.empty())
            pairs.emplace_back(Decoded(pair.substr(0, equals)), Decoded(value));
    }
    return pairs;
}

std::string MakeFormBody(const FormPairs& pairs) {
    std::string body;
    for (const auto& [name, value] : pairs)
        body += (body.empty() ? "" : "&") + Encoded(name) + "=" + Encoded(value);
    return body;
}

std::optional<std::string> ValueOf(const FormPairs& pairs, std::string_view name) {
    const auto found = std::ranges::find(pairs, name, &FormPairs::value_type::first);
    return found == pairs.end() ? std::nullopt : std::optional(found->second);
}

} // namespace gate
