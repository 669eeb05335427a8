#include "interface/text/TextDocument.h"

#include <TextView.h>

#include <algorithm>

TextLines::Change TextDocument::Insert(int32 offset, const char* text, int32 length,
                                       const std::vector<StyleRun>* runs) {
    buffer.Insert(offset, text, length);
    styles.Insert(offset, length);
    if (runs != nullptr && length > 0)
        _ApplyRuns(offset, offset + length, *runs);
    return lines.Update(offset, 0, length);
}

TextLines::Change TextDocument::Delete(int32 from, int32 to) {
    styles.Remove(from, to, buffer.Length());
    buffer.Remove(from, to);
    return lines.Update(from, to - from, 0);
}

TextLines::Change TextDocument::SetRuns(int32 from, int32 to, const std::vector<StyleRun>& runs) {
    _ApplyRuns(from, to, runs);
    return lines.Update(from, to - from, to - from);
}

void TextDocument::_ApplyRuns(int32 from, int32 to, const std::vector<StyleRun>& runs) {
    std::vector<StyleRun> placed;
    placed.reserve(runs.size());
    int32 least = from;
    for (const StyleRun& run : runs) {
        least = std::max(least, buffer.CharacterStart(std::clamp(from + run.offset, from, to)));
        placed.push_back({least, run.style});
    }
    styles.SetRuns(placed, to, buffer.Length());
}

StyledText TextDocument::Copy(int32 from, int32 to) const {
    StyledText copy;
    copy.text.resize(to - from);
    buffer.Copy(from, to - from, copy.text.data());
    copy.runs = RunsOf(from, to);
    return copy;
}

std::vector<StyleRun> TextDocument::RunsOf(int32 from, int32 to) const {
    std::vector<StyleRun> runs;
    for (int32 i = styles.RunIndexAt(from); i < styles.CountRuns(); i++) {
        const StyleRun& run = styles.RunAt(i);
        if (run.offset >= to && !runs.empty())
            break;
        runs.push_back({std::max(0, run.offset - from), run.style});
    }
    return runs;
}

std::vector<StyleRun> TextDocument::Intern(const text_run_array& array) {
    std::vector<StyleRun> runs;
    for (int32 i = 0; i < array.count; i++) {
        const text_run& run = array.runs[i];
        runs.push_back({std::max(0, run.offset), styles.Intern(run.font, run.color)});
    }
    return runs;
}

int32 TextDocument::Clamp(int32 offset) const {
    return buffer.CharacterStart(std::clamp(offset, 0, buffer.Length()));
}
