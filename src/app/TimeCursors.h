#pragma once

#include <SupportDefs.h>

#include <array>

// The busy cursor's frames, in the cursor format of 68 bytes: a clock whose hand goes round.
constexpr int32 kTimeCursorCount = 6;
using CursorData = std::array<uint8, 68>;
extern const std::array<CursorData, kTimeCursorCount> time_cursors;
