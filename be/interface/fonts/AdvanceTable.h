#pragma once

#include <SupportDefs.h>

#include <array>
#include <atomic>

class BFont;

// The widths of a font's characters, in pixels, for the whole process: one look-up a character,
// measured on first use through the font's own fallback, without kerning and ligatures.
///
// Any thread. Tables live as long as the process. Combining marks are measured as 0.
class AdvanceTable {
public:
    // Borrowed for ever.
    static const AdvanceTable& For(const BFont& font);

    virtual ~AdvanceTable();

    float Advance(uint32 codePoint) const {
        if (codePoint < kPages * kPageSize) {
            if (const Page* page = fPages[codePoint / kPageSize].load(std::memory_order_acquire)) {
                const float advance =
                    (*page)[codePoint % kPageSize].load(std::memory_order_relaxed);
                if (advance >= 0)
                    return advance;
            }
        }
        return _MeasureAndKeep(codePoint);
    }

    float Ascent() const { return fAscent; }
    // Positive.
    float Descent() const { return fDescent; }
    float Leading() const { return fLeading; }

protected:
    AdvanceTable(float ascent, float descent, float leading);

    // May be called by several threads at once.
    virtual float Measure(uint32 codePoint) const = 0;

private:
    static constexpr uint32 kPageSize = 256;
    static constexpr uint32 kPages = 0x110000 / kPageSize;
    using Page = std::array<std::atomic<float>, kPageSize>;

    float _MeasureAndKeep(uint32 codePoint) const;

    const float fAscent;
    const float fDescent;
    const float fLeading;
    // Filled by whichever thread needs an entry first
    mutable std::array<std::atomic<Page*>, kPages> fPages{};
};
