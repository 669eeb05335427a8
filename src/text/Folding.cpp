#include "text/Folding.h"

#include <array>
#include <cstdint>

namespace {

constexpr uint32_t kWideFirst = 0xFF01; // "！" to "～" stand for "!" to "~"
constexpr uint32_t kWideLast = 0xFF5E;
constexpr uint32_t kWideSpace = 0x3000;
constexpr uint32_t kHalfFirst = 0xFF61; // half-width kana and their punctuation
constexpr uint32_t kHalfLast = 0xFF9F;
constexpr uint32_t kKatakanaFirst = 0x30A1;
constexpr uint32_t kKatakanaLast = 0x30F6;
constexpr uint32_t kToHiragana = 0x60;
constexpr uint32_t kVoiced = 0x309B;
constexpr uint32_t kHalfVoiced = 0x309C;

// U+FF61 to U+FF9F in hiragana and plain punctuation.
constexpr std::array<char16_t, kHalfLast - kHalfFirst + 1> kHalf = {
    u'。', u'「', u'」', u'、', u'・', u'を', u'ぁ', u'ぃ', u'ぅ', u'ぇ', u'ぉ', u'ゃ', u'ゅ',
    u'ょ', u'っ', u'ー', u'あ', u'い', u'う', u'え', u'お', u'か', u'き', u'く', u'け', u'こ',
    u'さ', u'し', u'す', u'せ', u'そ', u'た', u'ち', u'つ', u'て', u'と', u'な', u'に', u'ぬ',
    u'ね', u'の', u'は', u'ひ', u'ふ', u'へ', u'ほ', u'ま', u'み', u'む', u'め', u'も', u'や',
    u'ゆ', u'よ', u'ら', u'り', u'る', u'れ', u'ろ', u'わ', u'ん', u'゛', u'゜'};

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// The character of three bytes at the text's start, the only length that is folded beside ASCII; 0
// for anything else.
uint32_t ThreeByteCode(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if ((first & 0xF0) != 0xE0 || text.size() < 3 || !IsContinuation(text[1]) ||
        !IsContinuation(text[2]))
        return 0;
    return (first & 0x0Fu) << 12 | (static_cast<unsigned char>(text[1]) & 0x3Fu) << 6 |
           (static_cast<unsigned char>(text[2]) & 0x3Fu);
}

char SmallLetter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The kana with its mark, or 0: か to と have one behind them, は to ほ two.
uint32_t Joined(uint32_t kana, uint32_t mark) {
    const bool isHRow = kana >= u'は' && kana <= u'ほ' && (kana - u'は') % 3 == 0;
    if (mark == kHalfVoiced)
        return isHRow ? kana + 2 : 0;
    const bool isBeforeTsu = kana >= u'か' && kana <= u'ち' && (kana - u'か') % 2 == 0;
    const bool isBehindTsu = kana >= u'つ' && kana <= u'と' && (kana - u'つ') % 2 == 0;
    if (kana == u'う')
        return u'ゔ';
    return isHRow || isBeforeTsu || isBehindTsu ? kana + 1 : 0;
}

class Folder {
public:
    void Add(uint32_t code) {
        if (code == kWideSpace)
            return _Put(' ');
        if (code >= kWideFirst && code <= kWideLast)
            return AddByte(static_cast<char>(code - kWideFirst + '!'));
        if (code >= kHalfFirst && code <= kHalfLast)
            code = kHalf[code - kHalfFirst];
        else if (code >= kKatakanaFirst && code <= kKatakanaLast)
            code -= kToHiragana;
        const uint32_t joined =
            code == kVoiced || code == kHalfVoiced ? Joined(fLast, code) : uint32_t{0};
        if (joined != 0) {
            fText.resize(fText.size() - 3);
            code = joined;
        }
        _PutThree(code);
    }
    void AddByte(char c) { _Put(SmallLetter(c)); }
    std::string Text() && { return std::move(fText); }

private:
    void _Put(char c) {
        fText += c;
        fLast = 0;
    }
    void _PutThree(uint32_t code) {
        fText += static_cast<char>(0xE0 | code >> 12);
        fText += static_cast<char>(0x80 | (code >> 6 & 0x3F));
        fText += static_cast<char>(0x80 | (code & 0x3F));
        fLast = code;
    }

    std::string fText;
    uint32_t fLast = 0; // the character of three bytes that was put last
};

} // namespace

std::string Folded(std::string_view text) {
    Folder folder;
    while (!text.empty()) {
        const uint32_t code = ThreeByteCode(text);
        if (code != 0)
            folder.Add(code);
        else
            folder.AddByte(text[0]);
        text.remove_prefix(code != 0 ? 3 : 1);
    }
    return std::move(folder).Text();
}
