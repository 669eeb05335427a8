#include "interface/fonts/AdvanceTable.h"

#include <algorithm>
#include <memory>

AdvanceTable::AdvanceTable(float ascent, float descent, float leading)
    : fAscent(ascent), fDescent(descent), fLeading(leading) {}

AdvanceTable::~AdvanceTable() {
    for (std::atomic<Page*>& page : fPages)
        delete page.load(std::memory_order_acquire);
}

float AdvanceTable::_MeasureAndKeep(uint32 codePoint) const {
    const float advance = std::max(0.0f, Measure(codePoint));
    if (codePoint >= kPages * kPageSize)
        return advance;
    std::atomic<Page*>& slot = fPages[codePoint / kPageSize];
    Page* page = slot.load(std::memory_order_acquire);
    if (page == nullptr) {
        auto fresh = std::make_unique<Page>();
        for (std::atomic<float>& entry : *fresh)
            entry.store(-1, std::memory_order_relaxed);
        // Another thread may have put its page in meanwhile: then that one stays.
        if (slot.compare_exchange_strong(page, fresh.get(), std::memory_order_acq_rel))
            page = fresh.release();
    }
    (*page)[codePoint % kPageSize].store(advance, std::memory_order_relaxed);
    return advance;
}
