#include "interface/fonts/Typeface.h"

#include "interface/fonts/FontNames.h"
#include "interface/fonts/ScriptShaping.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGlyphRun>
#include <QTextLayout>
#include <QtEndian>

#include <cstring>
#include <map>
#include <unordered_map>

namespace {

const double kMeasuringSize = 16;
const uint32 kReplacement = 0xfffd;

// The raw fonts of one thread: they may not leave it.
struct ThreadFonts {
    struct Key {
        uint32 typeface;
        uint32 face;
        int32 size; // 1/64 pixels
        bool operator==(const Key& other) const = default;
    };
    struct Hash {
        size_t operator()(const Key& key) const {
            return (size_t(key.typeface) * 31 + key.face) * 8191 + size_t(key.size);
        }
    };
    std::unordered_map<Key, QRawFont, Hash> fonts;
};

thread_local ThreadFonts sThreadFonts;

struct Typefaces {
    std::mutex lock;
    std::map<std::pair<uint32, uint16>, Typeface*> known; // guarded by lock
};

// Never destroyed: windows draw while the process ends.
Typefaces& TheTypefaces() {
    static Typefaces* typefaces = new Typefaces;
    return *typefaces;
}

// Families that are asked first for Japanese, so that it isn't drawn with another language's forms.
const char* const kSansJapanese[] = {"Noto Sans CJK JP", "Noto Sans JP",      "IPAexGothic",
                                     "IPAPGothic",       "IPAGothic",         "TakaoPGothic",
                                     "VL PGothic",       "Source Han Sans JP"};
const char* const kSerifJapanese[] = {"Noto Serif CJK JP", "Noto Serif JP", "IPAexMincho",
                                      "IPAPMincho", "IPAMincho"};
const char* const kFixedJapanese[] = {"Noto Sans Mono CJK JP", "IPAGothic", "VL Gothic"};

bool IsEastAsian(uint32 codePoint) {
    return (codePoint >= 0x2e80 && codePoint < 0xa000) ||
           (codePoint >= 0xf900 && codePoint < 0xfb00) ||
           (codePoint >= 0xff00 && codePoint < 0xfff0) ||
           (codePoint >= 0x2000 && codePoint < 0x2e00) ||
           (codePoint >= 0x20000 && codePoint < 0x30000);
}

template <size_t kCount>
QStringList Names(const char* const (&names)[kCount]) {
    QStringList list;
    for (const char* name : names)
        list += QString::fromLatin1(name);
    return list;
}

QStringList JapaneseFamiliesFor(const QString& family) {
    if (family.contains(QLatin1String("Mono")))
        return Names(kFixedJapanese) + Names(kSansJapanese);
    if (family.contains(QLatin1String("Serif")) && !family.contains(QLatin1String("Sans")))
        return Names(kSerifJapanese) + Names(kSansJapanese);
    return Names(kSansJapanese);
}

QFont Prepared(QFont font) {
    font.setHintingPreference(QFont::PreferVerticalHinting);
    font.setKerning(false);
    return font;
}

struct DesktopFonts {
    QFont plain;
    QFont fixed;
};

// Constant once the server has connected. Never destroyed.
DesktopFonts& SystemFonts() {
    static DesktopFonts* fonts = new DesktopFonts;
    return *fonts;
}

QFont BaseFont(const FontName& name, uint16 face) {
    QFont font = name.family.empty() ? (name.fixed ? SystemFonts().fixed : SystemFonts().plain)
                                     : QFont(QString::fromStdString(name.family));
    if (!name.style.empty()) {
        const QString family = QString::fromStdString(name.family);
        const QString style = QString::fromStdString(name.style);
        font = QFontDatabase::font(family, style, 10);
    }
    if (face & B_BOLD_FACE)
        font.setBold(true);
    if (face & B_ITALIC_FACE)
        font.setItalic(true);
    return Prepared(font);
}

} // namespace

void Typeface::SetSystemFonts(const QFont& plain, const QFont& fixed) {
    SystemFonts() = {plain, fixed};
}

QFont Typeface::MenuFont() {
    QFont font = SystemFonts().plain;
    const QString family = QFontInfo(font).family();
    font.setFamilies(QStringList(family) + JapaneseFamiliesFor(family));
    return font;
}

Typeface& Typeface::For(const BFont& font) {
    const std::pair<uint32, uint16> key(font.FamilyAndStyle(), font.Face());
    thread_local std::pair<uint32, uint16> sLastKey;
    thread_local Typeface* sLast = nullptr;
    if (sLast != nullptr && sLastKey == key)
        return *sLast;
    Typefaces& typefaces = TheTypefaces();
    std::lock_guard lock(typefaces.lock);
    Typeface*& typeface = typefaces.known[key];
    if (typeface == nullptr) {
        typeface = new Typeface(font);
        typeface->fId = static_cast<uint32>(typefaces.known.size());
    }
    sLastKey = key;
    return *(sLast = typeface);
}

Typeface::Typeface(const BFont& font)
    : fFont(BaseFont(FontNameOf(font.FamilyAndStyle()), font.Face())) {
    fFaces.push_back(std::make_unique<Face>());
    _ReadMetrics();
}

void Typeface::_ReadMetrics() {
    QFont font(fFont);
    font.setPixelSize(static_cast<int>(kMeasuringSize));
    const QRawFont raw = QRawFont::fromFont(font);
    fAscent = static_cast<float>(raw.ascent() / kMeasuringSize);
    fDescent = static_cast<float>(raw.descent() / kMeasuringSize);
    fLeading = static_cast<float>(qMax(0.0, raw.leading()) / kMeasuringSize);
    Face& face = *fFaces[0];
    face.family = raw.familyName();
    face.style = raw.styleName();
    fFamilies = QStringList(face.family) + JapaneseFamiliesFor(face.family);
    _ReadAdvances(face, raw);
}

void Typeface::_ReadAdvances(Face& face, const QRawFont& raw) {
    const QByteArray head = raw.fontTable("head");
    const QByteArray hhea = raw.fontTable("hhea");
    if (head.size() < 20 || hhea.size() < 36)
        return;
    face.unitsPerEm = qFromBigEndian<quint16>(head.constData() + 18);
    face.advances = raw.fontTable("hmtx");
    face.advanceCount = qMin<uint32>(qFromBigEndian<quint16>(hhea.constData() + 34),
                                     static_cast<uint32>(face.advances.size() / 4));
}

QFont Typeface::FontAt(double pixelSize) const {
    QFont font(fFont);
    font.setFamilies(fFamilies);
    font.setPixelSize(qMax(1, qRound(pixelSize)));
    return font;
}

QRawFont Typeface::RawFont(uint32 face, double pixelSize) {
    const ThreadFonts::Key key{fId, face, static_cast<int32>(pixelSize * 64)};
    const auto found = sThreadFonts.fonts.find(key);
    if (found != sThreadFonts.fonts.end())
        return found->second;
    QFont font(fFont);
    if (face > 0) {
        std::lock_guard lock(fLock);
        font.setFamilies({fFaces[face]->family});
    }
    font.setPixelSize(qMax(1, qRound(pixelSize)));
    QRawFont raw = QRawFont::fromFont(font);
    if (raw.pixelSize() != pixelSize)
        raw.setPixelSize(pixelSize);
    sThreadFonts.fonts.emplace(key, raw);
    return raw;
}

TypefaceGlyph Typeface::Unpack(uint64 packed) {
    const uint32 bits = static_cast<uint32>(packed);
    TypefaceGlyph glyph{};
    glyph.face = static_cast<uint32>(packed >> 48) & 0x7fff;
    glyph.glyph = static_cast<uint32>(packed >> 32) & 0xffff;
    memcpy(&glyph.advance, &bits, sizeof(bits));
    return glyph;
}

uint64 Typeface::Pack(const TypefaceGlyph& glyph) {
    uint32 bits = 0;
    memcpy(&bits, &glyph.advance, sizeof(bits));
    return uint64(1) << 63 | uint64(glyph.face & 0x7fff) << 48 |
           uint64(glyph.glyph & 0xffff) << 32 | bits;
}

TypefaceGlyph Typeface::_FindAndKeep(uint32 codePoint) {
    const TypefaceGlyph glyph = _Find(codePoint);
    if (codePoint >= kPages * kPageSize)
        return glyph;
    std::atomic<Page*>& slot = fPages[codePoint / kPageSize];
    Page* page = slot.load(std::memory_order_acquire);
    if (page == nullptr) {
        auto fresh = std::make_unique<Page>();
        // Another thread may have put its page in meanwhile: then that one stays.
        if (slot.compare_exchange_strong(page, fresh.get(), std::memory_order_acq_rel))
            page = fresh.release();
    }
    (*page)[codePoint % kPageSize].store(Pack(glyph), std::memory_order_relaxed);
    return glyph;
}

uint32 Typeface::_CountFaces() {
    std::lock_guard lock(fLock);
    return static_cast<uint32>(fFaces.size());
}

TypefaceGlyph Typeface::_Find(uint32 codePoint) {
    if (HasNoWidth(codePoint))
        return {0, 0, 0};
    TypefaceGlyph glyph{};
    if (_FindInFaces(codePoint, glyph) || _FindFallback(codePoint, glyph))
        return glyph;
    if (codePoint != kReplacement)
        return GlyphOf(kReplacement);
    return {0, 0, _AdvanceOf(0, RawFont(0, kMeasuringSize), 0)};
}

bool Typeface::_FindInFaces(uint32 codePoint, TypefaceGlyph& glyph) {
    for (uint32 face = 0; face < _CountFaces(); face++) {
        if (_FindIn(face, codePoint, glyph))
            return true;
    }
    return false;
}

bool Typeface::_FindIn(uint32 face, uint32 codePoint, TypefaceGlyph& glyph) {
    QChar units[2];
    int count = 1;
    if (QChar::requiresSurrogates(codePoint)) {
        units[0] = QChar(QChar::highSurrogate(codePoint));
        units[1] = QChar(QChar::lowSurrogate(codePoint));
        count = 2;
    } else {
        units[0] = QChar(static_cast<ushort>(codePoint));
    }
    quint32 indexes[2] = {};
    int found = 2;
    const QRawFont raw = RawFont(face, kMeasuringSize);
    if (!raw.glyphIndexesForChars(units, count, indexes, &found) || indexes[0] == 0)
        return false;
    glyph = {face, indexes[0], _AdvanceOf(face, raw, indexes[0])};
    return true;
}

// Japanese families first, then whatever the desktop would take for the character.
// One thread at a time looks: the others then find what it added, and so all take the same face.
bool Typeface::_FindFallback(uint32 codePoint, TypefaceGlyph& glyph) {
    const std::lock_guard fallback(fFallbackLock);
    if (_FindInFaces(codePoint, glyph))
        return true;
    if (IsEastAsian(codePoint) && !fJapaneseAdded.exchange(true)) {
        for (const QString& family : JapaneseFamiliesFor(fFaces[0]->family)) {
            if (_AddFace(family, QString()))
                break;
        }
        if (_FindIn(_CountFaces() - 1, codePoint, glyph))
            return true;
    }
    const char32_t code = codePoint;
    QTextLayout layout(QString::fromUcs4(&code, 1), FontAt(kMeasuringSize));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    for (const QGlyphRun& run : layout.glyphRuns()) {
        const QRawFont raw = run.rawFont();
        const bool drawn = !run.glyphIndexes().isEmpty() && run.glyphIndexes().first() != 0;
        if (drawn && _AddFace(raw.familyName(), raw.styleName()))
            return _FindIn(_CountFaces() - 1, codePoint, glyph);
    }
    return false;
}

bool Typeface::_AddFace(const QString& family, const QString& style) {
    auto face = std::make_unique<Face>();
    face->family = family;
    face->style = style;
    QFont font(fFont);
    font.setFamilies({family});
    font.setPixelSize(static_cast<int>(kMeasuringSize));
    const QRawFont raw = QRawFont::fromFont(font);
    if (raw.familyName() != family)
        return false;
    _ReadAdvances(*face, raw);
    std::lock_guard lock(fLock);
    for (const auto& known : fFaces) {
        if (known->family == family)
            return false;
    }
    fFaces.push_back(std::move(face));
    return true;
}

float Typeface::_AdvanceOf(uint32 face, const QRawFont& raw, uint32 glyph) {
    const Face* known = nullptr;
    {
        std::lock_guard lock(fLock);
        known = fFaces[face].get();
    }
    if (known->advanceCount > 0 && known->unitsPerEm > 0) {
        const uint32 index = qMin(glyph, known->advanceCount - 1);
        const quint16 units = qFromBigEndian<quint16>(known->advances.constData() + index * 4);
        return static_cast<float>(units) / static_cast<float>(known->unitsPerEm);
    }
    QPointF advance;
    if (!raw.advancesForGlyphIndexes(&glyph, &advance, 1))
        return 0;
    return static_cast<float>(advance.x() / raw.pixelSize());
}
