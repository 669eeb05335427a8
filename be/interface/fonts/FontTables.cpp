#include "interface/fonts/AdvanceTable.h"

#include "interface/fonts/Typeface.h"

#include <map>
#include <mutex>
#include <tuple>

namespace {

// A typeface's widths at one size.
class SizedTable : public AdvanceTable {
public:
    SizedTable(Typeface& typeface, float size)
        : AdvanceTable(typeface.Ascent() * size, typeface.Descent() * size,
                       typeface.Leading() * size),
          fTypeface(typeface), fSize(size) {}

protected:
    float Measure(uint32 codePoint) const override {
        return fTypeface.GlyphOf(codePoint).advance * fSize;
    }

private:
    Typeface& fTypeface;
    const float fSize;
};

struct Tables {
    std::mutex lock;
    std::map<std::tuple<uint32, uint16, float>, const AdvanceTable*> known; // guarded by lock
};

// Never destroyed: windows lay text out while the process ends.
Tables& TheTables() {
    static Tables* tables = new Tables;
    return *tables;
}

} // namespace

const AdvanceTable& AdvanceTable::For(const BFont& font) {
    Tables& tables = TheTables();
    std::lock_guard lock(tables.lock);
    const AdvanceTable*& table = tables.known[{font.FamilyAndStyle(), font.Face(), font.Size()}];
    if (table == nullptr)
        table = new SizedTable(Typeface::For(font), font.Size());
    return *table;
}
