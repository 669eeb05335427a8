#include "convert/SameLength.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>

namespace gate {

namespace {

constexpr std::array<std::array<std::string_view, 2>, 2> kSchemes = {
    {{"https://", " http://"}, {"ttps://", " ttp://"}}};
constexpr uint32_t kLastShort = 0xFFFF;
constexpr uint32_t kLastCode = 0x10FFFF;

constexpr bool IsLead(unsigned char byte) {
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

bool IsTrail(unsigned char byte) {
    return byte >= 0x40 && byte != 0x7F && byte <= 0xFC;
}

// The code that the digits of a reference stand for, when it is beyond 16 bits.
std::optional<uint32_t> LongCode(std::string_view digits) {
    const bool hex = !digits.empty() && (digits[0] == 'x' || digits[0] == 'X');
    digits.remove_prefix(hex ? 1 : 0);
    uint32_t code = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, code, hex ? 16 : 10);
    if (error != std::errc() || stop != end || code <= kLastShort || code > kLastCode)
        return std::nullopt;
    return code;
}

// The shortest such reference, "&#65536;", has room for "U+10000".
std::string CodeAsText(uint32_t code, size_t length) {
    std::array<char, 8> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), code, 16).ptr;
    std::string text = "U+";
    for (const char* digit = digits.data(); digit < end; digit++)
        text += *digit >= 'a' ? static_cast<char>(*digit - 'a' + 'A') : *digit;
    if (text.size() + 2 <= length)
        text = "(" + text + ")";
    text.resize(length, ' ');
    return text;
}

// How many bytes the reference at the text's start may have: up to what can be none of it.
size_t ReferenceLength(std::string_view text) {
    const size_t end = text.find_first_not_of("0123456789abcdefABCDEFxX", 2);
    return std::min(end, text.size());
}

// What the text starts with: how many bytes it is, and what they become. A length of 0: more of it
// must be seen.
struct Piece {
    size_t length = 1;
    std::string text = {};
};

Piece ReferenceAt(std::string_view text) {
    if (text.size() < 2)
        return {0};
    if (text[1] != '#')
        return {};
    const size_t end = ReferenceLength(text);
    if (end >= SameLengthRewriter::kLongestMark)
        return {};
    if (end == text.size())
        return {0};
    const std::optional<uint32_t> code =
        text[end] == ';' ? LongCode(text.substr(2, end - 2)) : std::nullopt;
    return code ? Piece{end + 1, CodeAsText(*code, end + 1)} : Piece{};
}

Piece SchemeAt(std::string_view text) {
    for (const auto& [mark, changed] : kSchemes) {
        if (text.starts_with(mark))
            return {mark.size(), std::string(changed)};
        if (mark.starts_with(text))
            return {0};
    }
    return {};
}

enum class Role : uint8_t { kPlain, kLead, kMark };

constexpr std::array<Role, 256> kRoles = [] {
    std::array<Role, 256> roles = {};
    for (size_t byte = 0; byte < roles.size(); byte++)
        roles[byte] = IsLead(static_cast<unsigned char>(byte)) ? Role::kLead : Role::kPlain;
    for (const unsigned char mark : {'h', 't', '&'})
        roles[mark] = Role::kMark;
    return roles;
}();

// The characters that stand for themselves whatever follows: most of them.
size_t PlainLength(std::string_view text) {
    for (size_t at = 0; at < text.size();) {
        const Role role = kRoles[static_cast<unsigned char>(text[at])];
        const bool isLead = role == Role::kLead;
        if (role == Role::kMark || (isLead && at + 1 == text.size()))
            return at;
        at += isLead && IsTrail(static_cast<unsigned char>(text[at + 1])) ? 2 : 1;
    }
    return text.size();
}

Piece PieceAt(std::string_view text) {
    if (const size_t plain = PlainLength(text); plain > 0)
        return {plain};
    if (text[0] == '&')
        return ReferenceAt(text);
    return text[0] == 'h' || text[0] == 't' ? SchemeAt(text) : Piece{0};
}

} // namespace

SameLengthRewriter::SameLengthRewriter(std::string_view before)
    : fHeld(before), fBefore(before.size()) {}

std::string SameLengthRewriter::Feed(std::string_view bytes) {
    fHeld += bytes;
    size_t done = 0;
    while (done < fHeld.size()) {
        const Piece piece = PieceAt(std::string_view(fHeld).substr(done));
        if (piece.length == 0)
            break;
        if (!piece.text.empty())
            fHeld.replace(done, piece.length, piece.text);
        done += piece.length;
    }
    return _Take(done);
}

std::string SameLengthRewriter::Finish() {
    return _Take(fHeld.size());
}

std::string SameLengthRewriter::_Take(size_t length) {
    std::string held = length == fHeld.size() ? std::string() : fHeld.substr(length);
    fHeld.resize(length);
    std::string taken = std::exchange(fHeld, std::move(held));
    const size_t before = std::min(fBefore, taken.size());
    fBefore -= before;
    taken.erase(0, before);
    return taken;
}

std::string SameLengthRewritten(std::string_view text) {
    SameLengthRewriter rewriter;
    std::string rewritten = rewriter.Feed(text);
    return rewritten + rewriter.Finish();
}

} // namespace gate
