// Run arrays: making, copying, and their form as bytes.

#include "interface/text/TextRunArrays.h"

#include <TextView.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr uint32 kMagic = 'TRAr';
constexpr uint32 kVersion = 1;

// The flattened form: this, then `count` records. In the machine's byte order.
struct FlatHeader {
    uint32 magic;
    uint32 version;
    int32 count;
};

struct FlatRun {
    int32 offset;
    char family[64];
    char style[64];
    float size;
    uint16 face;
    uint8 red;
    uint8 green;
    uint8 blue;
    uint8 alpha;
};

FlatRun Flatten(const text_run& run) {
    FlatRun flat{};
    font_family family;
    font_style style;
    run.font.GetFamilyAndStyle(&family, &style);
    memcpy(flat.family, family, sizeof(flat.family));
    memcpy(flat.style, style, sizeof(flat.style));
    flat.offset = run.offset;
    flat.size = run.font.Size();
    flat.face = run.font.Face();
    flat.red = run.color.red;
    flat.green = run.color.green;
    flat.blue = run.color.blue;
    flat.alpha = run.color.alpha;
    return flat;
}

void Unflatten(FlatRun flat, text_run& run) {
    flat.family[sizeof(flat.family) - 1] = '\0';
    flat.style[sizeof(flat.style) - 1] = '\0';
    run.font.SetFamilyAndStyle(flat.family, flat.style);
    if (flat.size >= 1 && flat.size <= 1000)
        run.font.SetSize(flat.size);
    run.font.SetFace(flat.face);
    run.offset = std::max(0, flat.offset);
    run.color = {flat.red, flat.green, flat.blue, flat.alpha};
}

// Where a run stands behind the first, which is part of the struct.
text_run* Runs(text_run_array* array) {
    return array->runs;
}

} // namespace

bool IsFlattenedRunArray(const void* data, ssize_t size) {
    FlatHeader header;
    if (data == nullptr || size < static_cast<ssize_t>(sizeof(header)))
        return false;
    memcpy(&header, data, sizeof(header));
    const size_t room = static_cast<size_t>(size) - sizeof(header);
    return header.magic == kMagic && header.version == kVersion && header.count >= 0 &&
           static_cast<size_t>(header.count) == room / sizeof(FlatRun) &&
           room % sizeof(FlatRun) == 0;
}

text_run_array* BTextView::AllocRunArray(int32 entryCount, int32* size) {
    const int32 entries = std::max(1, entryCount);
    const size_t bytes = sizeof(text_run_array) + (entries - 1) * sizeof(text_run);
    text_run_array* array = nullptr;
    if (bytes <= static_cast<size_t>(std::numeric_limits<int32>::max()))
        array = static_cast<text_run_array*>(calloc(1, bytes));
    if (size != nullptr)
        *size = array != nullptr ? static_cast<int32>(bytes) : 0;
    if (array == nullptr)
        return nullptr;
    array->count = std::max(0, entryCount);
    for (int32 i = 0; i < entries; i++)
        new (Runs(array) + i) text_run{0, BFont(), {0, 0, 0, 255}};
    return array;
}

text_run_array* BTextView::CopyRunArray(const text_run_array* original, int32 countDelta) {
    if (original == nullptr || original->count + countDelta < 0)
        return nullptr;
    text_run_array* copy = AllocRunArray(original->count + countDelta);
    if (copy != nullptr)
        std::copy_n(original->runs, std::min(copy->count, original->count), Runs(copy));
    return copy;
}

void BTextView::FreeRunArray(text_run_array* array) {
    if (array == nullptr)
        return;
    for (int32 i = 0; i < std::max(1, array->count); i++)
        Runs(array)[i].~text_run();
    free(array);
}

void* BTextView::FlattenRunArray(const text_run_array* array, int32* size) {
    const int32 count = array != nullptr ? array->count : 0;
    const size_t bytes = sizeof(FlatHeader) + count * sizeof(FlatRun);
    char* flat = array != nullptr ? static_cast<char*>(malloc(bytes)) : nullptr;
    if (size != nullptr)
        *size = flat != nullptr ? static_cast<int32>(bytes) : 0;
    if (flat == nullptr)
        return nullptr;
    const FlatHeader header{kMagic, kVersion, count};
    memcpy(flat, &header, sizeof(header));
    for (int32 i = 0; i < count; i++) {
        const FlatRun run = Flatten(array->runs[i]);
        memcpy(flat + sizeof(header) + i * sizeof(run), &run, sizeof(run));
    }
    return flat;
}

text_run_array* BTextView::UnflattenRunArray(const void* data, int32* size) {
    if (size != nullptr)
        *size = 0;
    FlatHeader header;
    if (data == nullptr)
        return nullptr;
    memcpy(&header, data, sizeof(header));
    if (header.magic != kMagic || header.version != kVersion || header.count < 0)
        return nullptr;
    text_run_array* array = AllocRunArray(header.count, size);
    for (int32 i = 0; array != nullptr && i < header.count; i++) {
        FlatRun run;
        memcpy(&run, static_cast<const char*>(data) + sizeof(header) + i * sizeof(run),
               sizeof(run));
        Unflatten(run, Runs(array)[i]);
    }
    return array;
}
