#pragma once

#include <Font.h>
#include <SupportDefs.h>

#include <QFont>
#include <QRawFont>
#include <QStringList>

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

// Where a character comes from: one of a typeface's faces (the font itself or one of its
// fallbacks), the glyph in it, and its width as a share of the font's size.
struct TypefaceGlyph {
    uint32 face;
    uint32 glyph;
    float advance;
};

// A family, style and faces, without a size: what glyphs its characters have, kerning and ligatures
// off. Widths are the fonts' own, so they grow evenly with the size and do not depend on the
// device's scale. Typefaces live as long as the process. Any thread; each thread has raw fonts of
// its own.
class Typeface {
public:
    static Typeface& For(const BFont& font);
    // What the two codes of the desktop's fonts stand for; before the first For.
    static void SetSystemFonts(const QFont& plain, const QFont& fixed);
    static QFont MenuFont(); // the desktop's, with the same fallbacks as text elsewhere

    TypefaceGlyph GlyphOf(uint32 codePoint) {
        if (codePoint < kPages * kPageSize) {
            const Page* page = fPages[codePoint / kPageSize].load(std::memory_order_acquire);
            if (page != nullptr) {
                const uint64 packed =
                    (*page)[codePoint % kPageSize].load(std::memory_order_relaxed);
                if (packed != 0)
                    return Unpack(packed);
            }
        }
        return _FindAndKeep(codePoint);
    }

    // The calling thread's raw font of a face, in device pixels.
    QRawFont RawFont(uint32 face, double pixelSize);
    QFont FontAt(double pixelSize) const;
    // Shares of the size.
    float Ascent() const { return fAscent; }
    float Descent() const { return fDescent; }
    float Leading() const { return fLeading; }

private:
    static constexpr uint32 kPageSize = 256;
    static constexpr uint32 kPages = 0x30000 / kPageSize;
    using Page = std::array<std::atomic<uint64>, kPageSize>;

    struct Face {
        QString family;
        QString style;
        // From the font file, big endian; empty if it has none.
        QByteArray advances;
        uint32 advanceCount = 0;
        uint32 unitsPerEm = 0;
    };

    Typeface(const BFont& font);

    static TypefaceGlyph Unpack(uint64 packed);
    static uint64 Pack(const TypefaceGlyph& glyph);
    TypefaceGlyph _FindAndKeep(uint32 codePoint);
    TypefaceGlyph _Find(uint32 codePoint);
    bool _FindInFaces(uint32 codePoint, TypefaceGlyph& glyph);
    bool _FindIn(uint32 face, uint32 codePoint, TypefaceGlyph& glyph);
    bool _FindFallback(uint32 codePoint, TypefaceGlyph& glyph);
    bool _AddFace(const QString& family, const QString& style);
    float _AdvanceOf(uint32 face, const QRawFont& raw, uint32 glyph);
    uint32 _CountFaces();
    void _ReadMetrics();
    static void _ReadAdvances(Face& face, const QRawFont& raw);

    // Constant after construction
    QFont fFont;
    QStringList fFamilies; // its own, then the fallbacks for Japanese
    uint32 fId = 0;
    float fAscent = 1;
    float fDescent = 0;
    float fLeading = 0;

    std::mutex fFallbackLock; // before fLock
    std::mutex fLock;
    std::vector<std::unique_ptr<Face>> fFaces; // guarded by fLock; faces are constant and stay
    std::atomic<bool> fJapaneseAdded{false};
    // Filled by whichever thread needs an entry first
    std::array<std::atomic<Page*>, kPages> fPages{};
};
