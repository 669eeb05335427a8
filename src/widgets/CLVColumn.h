#pragma once

#include <SupportDefs.h>

#include <string>

enum class CLVSortMode { kNone, kAscending, kDescending };

// What a column of a ColumnListView is like. A value.
struct CLVColumn {
    enum Flags : uint32 {
        kPlain = 0,
        kExpander = 1,     // draws the triangles of hierarchical rows
        kNotResizable = 2, // keeps its width
        kSortable = 4,     // its header may be clicked to sort
        kHideable = 8,     // the header's menu shows and hides it
    };

    std::string label;
    float width;    // pixels
    float minWidth; // pixels
    uint32 flags = kPlain;
    CLVSortMode sortMode = CLVSortMode::kNone;
    bool isShown = true;
    std::string name = ""; // in the header's menu; empty: the label

    float ShownWidth() const { return isShown ? width : 0; }
    bool Is(Flags flag) const { return (flags & flag) != 0; }
};
