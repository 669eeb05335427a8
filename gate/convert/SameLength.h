#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace gate {

// Makes a dat readable for a program that knows neither "https" nor characters beyond 16 bits,
// without moving a byte: what comes out is as long as what went in, so that every range of the
// file stays exact. "https://" becomes " http://", "ttps://" " ttp://", and a numeric reference
// beyond 16 bits the same code as text, "(U+1F600)". cp932 bytes, never decoded; a mark inside a
// double-byte character is none. The bytes may come in pieces of any size.
class SameLengthRewriter {
public:
    // How much of the file before a range is worth giving: a mark is never longer.
    static constexpr size_t kLongestMark = 16;

    // `before`: the up to kLongestMark bytes that stand before the range in the file (may be
    // empty), so that a mark cut by its beginning is known.
    explicit SameLengthRewriter(std::string_view before = {});

    // The next piece, rewritten; up to kLongestMark bytes of it may be held back.
    std::string Feed(std::string_view bytes);
    // What was held back. Nothing may be fed after it.
    std::string Finish();

private:
    std::string _Take(size_t length);

    std::string fHeld;
    size_t fBefore; // bytes to come that stand before the range
};

// The same for a text that is there as a whole.
std::string SameLengthRewritten(std::string_view text);

} // namespace gate
