#include <Font.h>

#include <String.h>

#include "interface/fonts/FontNames.h"
#include "interface/fonts/ScriptShaping.h"
#include "interface/fonts/ShapedText.h"
#include "interface/fonts/SystemFonts.h"
#include "interface/fonts/Typeface.h"
#include "support/Utf8.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QRawFont>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>

namespace {

const float kFallbackSize = 12;
const char kEllipsis[] = "\xe2\x80\xa6";

BFont sPlain;
BFont sBold;
BFont sFixed;

void CopyName(char (&to)[64], const QString& name) {
    const QByteArray bytes = name.toUtf8();
    qsizetype length = std::min<qsizetype>(bytes.size(), 63);
    while (length > 0 && length < bytes.size() && IsUtf8Continuation(bytes[length]))
        length--;
    memcpy(to, bytes.constData(), static_cast<size_t>(length));
    to[length] = 0;
}

bool HasFace(const QFont& font, uint16 face) {
    return ((face & B_BOLD_FACE) != 0) == font.bold() &&
           ((face & B_ITALIC_FACE) != 0) == font.italic();
}

} // namespace

const BFont* be_plain_font = &sPlain;
const BFont* be_bold_font = &sBold;
const BFont* be_fixed_font = &sFixed;

void InitSystemFonts(const QFont& plain, float plainSize, const QFont& fixed, float fixedSize) {
    Typeface::SetSystemFonts(plain, fixed);
    sPlain.SetSize(plainSize);
    sBold.SetSize(plainSize);
    sBold.SetFace(B_BOLD_FACE);
    sFixed.SetSize(fixedSize);
    sFixed.SetFamilyAndStyle(kFixedFontCode);
}

BFont::BFont()
    : fFamilyAndStyle(kPlainFontCode), fSize(this == &sPlain ? kFallbackSize : sPlain.fSize),
      fFace(B_REGULAR_FACE), fSpacing(B_BITMAP_SPACING), fFlags(0) {}

BFont::BFont(const BFont& font) = default;

BFont::BFont(const BFont* font) : BFont(font != nullptr ? *font : sPlain) {}

BFont& BFont::operator=(const BFont& font) = default;

bool BFont::operator==(const BFont& font) const {
    return fFamilyAndStyle == font.fFamilyAndStyle && fSize == font.fSize && fFace == font.fFace &&
           fSpacing == font.fSpacing && fFlags == font.fFlags;
}

bool BFont::operator!=(const BFont& font) const {
    return !(*this == font);
}

status_t BFont::SetFamilyAndStyle(const font_family family, const font_style style) {
    font_family present = "";
    if (family == nullptr)
        GetFamilyAndStyle(&present, nullptr);
    const char* wanted = family != nullptr ? family : present;
    const QStringList styles = QFontDatabase::styles(QString::fromUtf8(wanted));
    if (styles.isEmpty())
        return B_BAD_VALUE;
    if (style != nullptr && *style != 0 && !styles.contains(QString::fromUtf8(style)))
        return B_BAD_VALUE;
    fFamilyAndStyle = CodeOfFontName(wanted, style != nullptr ? style : "");
    fFace = B_REGULAR_FACE;
    return B_OK;
}

void BFont::SetFamilyAndStyle(uint32 code) {
    fFamilyAndStyle = code;
}

status_t BFont::SetFamilyAndFace(const font_family family, uint16 face) {
    const status_t status = SetFamilyAndStyle(family, nullptr);
    if (status == B_OK)
        fFace = face;
    return status;
}

void BFont::SetSize(float size) {
    if (!std::isnan(size))
        fSize = std::clamp(size, 1.0F, 1000.0F);
}

// A style that has the face is taken by its name, as the user would see it in a list.
void BFont::SetFace(uint16 face) {
    fFace = face;
}

void BFont::SetSpacing(uint8 spacing) {
    fSpacing = spacing;
}

void BFont::SetFlags(uint32 flags) {
    fFlags = flags;
}

void BFont::GetFamilyAndStyle(font_family* family, font_style* style) const {
    const FontName name = FontNameOf(fFamilyAndStyle);
    const QFontInfo info(Typeface::For(*this).FontAt(fSize));
    if (family != nullptr)
        CopyName(*family,
                 name.family.empty() ? info.family() : QString::fromStdString(name.family));
    if (style == nullptr)
        return;
    if (!name.style.empty() && (fFace & (B_BOLD_FACE | B_ITALIC_FACE)) == 0)
        return CopyName(*style, QString::fromStdString(name.style));
    // What is really drawn knows its style best; a face that was made up of another has none.
    const QStringList styles = QFontDatabase::styles(info.family());
    const QString drawn = QRawFont::fromFont(Typeface::For(*this).FontAt(fSize)).styleName();
    if (styles.contains(drawn) && HasFace(QFontDatabase::font(info.family(), drawn, 10), fFace))
        return CopyName(*style, drawn);
    for (const QString& one : styles) {
        if (HasFace(QFontDatabase::font(info.family(), one, 10), fFace))
            return CopyName(*style, one);
    }
    CopyName(*style, info.styleName().isEmpty() ? QStringLiteral("Regular") : info.styleName());
}

uint32 BFont::FamilyAndStyle() const {
    return fFamilyAndStyle;
}

float BFont::Size() const {
    return fSize;
}

uint16 BFont::Face() const {
    return fFace;
}

uint8 BFont::Spacing() const {
    return fSpacing;
}

uint32 BFont::Flags() const {
    return fFlags;
}

bool BFont::IsFixed() const {
    return StringWidth("i") == StringWidth("M");
}

float BFont::StringWidth(const char* string) const {
    return string != nullptr ? StringWidth(string, static_cast<int32>(strlen(string))) : 0;
}

float BFont::StringWidth(const char* string, int32 length) const {
    if (string == nullptr || length <= 0)
        return 0;
    const auto bytes = static_cast<int32>(strnlen(string, static_cast<size_t>(length)));
    if (NeedsShaping(string, bytes))
        return ShapedOffsets(*this, string, bytes).back();
    Typeface& typeface = Typeface::For(*this);
    float width = 0;
    for (int32 at = 0; at < bytes;) {
        const Utf8Character character = DecodeUtf8(string + at, bytes - at);
        width += typeface.GlyphOf(character.code).advance;
        at += character.bytes;
    }
    return width * Size();
}

void BFont::GetStringWidths(const char* const stringArray[], const int32 lengthArray[],
                            int32 numStrings, float widthArray[]) const {
    for (int32 i = 0; i < numStrings; i++)
        widthArray[i] = StringWidth(stringArray[i], lengthArray[i]);
}

void BFont::GetEscapements(const char charArray[], int32 numChars, float escapementArray[]) const {
    int32 left = static_cast<int32>(strlen(charArray));
    for (int32 i = 0; i < numChars; i++) {
        if (left <= 0) {
            escapementArray[i] = 0;
            continue;
        }
        const Utf8Character character = DecodeUtf8(charArray, left);
        escapementArray[i] = Typeface::For(*this).GlyphOf(character.code).advance;
        charArray += character.bytes;
        left -= character.bytes;
    }
}

void BFont::GetHeight(font_height* height) const {
    const Typeface& typeface = Typeface::For(*this);
    height->ascent = typeface.Ascent() * fSize;
    height->descent = typeface.Descent() * fSize;
    height->leading = typeface.Leading() * fSize;
}

namespace {

// Byte offsets at which the text may be cut, the end included.
std::vector<int32> CharacterStarts(const char* text, int32 length) {
    std::vector<int32> starts;
    for (int32 at = 0; at < length;) {
        starts.push_back(at);
        at += DecodeUtf8(text + at, length - at).bytes;
    }
    starts.push_back(length);
    return starts;
}

// How many characters, taken from the front or the back, fit into the width.
size_t CountThatFit(const BFont& font, const char* text, const std::vector<int32>& starts,
                    float width, bool fromBack) {
    size_t low = 0;
    size_t high = starts.size() - 1;
    while (low < high) {
        const size_t middle = (low + high + 1) / 2;
        const int32 from = fromBack ? starts[starts.size() - 1 - middle] : 0;
        const int32 end = fromBack ? starts.back() : starts[middle];
        if (font.StringWidth(text + from, end - from) <= width)
            low = middle;
        else
            high = middle - 1;
    }
    return low;
}

} // namespace

void BFont::TruncateString(BString* inOut, uint32 mode, float width) const {
    const char* text = inOut->String();
    const int32 length = inOut->Length();
    if (StringWidth(text, length) <= width)
        return;
    const std::vector<int32> starts = CharacterStarts(text, length);
    const float room = std::max(0.0F, width - StringWidth(kEllipsis));
    const bool keepsFront = mode == B_TRUNCATE_END;
    const bool keepsBack = mode == B_TRUNCATE_BEGINNING;
    const float frontRoom = keepsFront ? room : keepsBack ? 0 : room / 2;
    const size_t front = CountThatFit(*this, text, starts, frontRoom, false);
    const float used = StringWidth(text, starts[front]);
    const size_t back = keepsFront ? 0 : CountThatFit(*this, text, starts, room - used, true);
    BString cut(text, starts[front]);
    cut << kEllipsis << text + starts[starts.size() - 1 - back];
    *inOut = cut;
}
