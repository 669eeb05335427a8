#include "views/Icons.h"

#include "widgets/PrefilledBitmap.h"

#include <GraphicsDefs.h>
#include <Screen.h>

namespace {

constexpr int32 kSize = 16;
using Rows = const char* const[kSize];

// One letter a pixel; "." is transparent.
struct Ink {
    char letter;
    rgb_color color;
};

constexpr Ink kInks[] = {
    {'k', {64, 68, 75, 255}},   {'g', {148, 155, 164, 255}}, {'w', {255, 255, 255, 255}},
    {'b', {38, 110, 210, 255}}, {'r', {212, 62, 48, 255}},   {'v', {46, 145, 78, 255}},
    {'y', {222, 160, 22, 255}}, {'l', {222, 228, 236, 255}}, {'s', {245, 205, 104, 255}},
};

constexpr Rows kThreadNotFetched = {
    "................", "................", "................", "................",
    "................", "................", "......gggg......", ".....g....g.....",
    ".....g....g.....", ".....g....g.....", ".....g....g.....", "......gggg......",
    "................", "................", "................", "................",
};

constexpr Rows kThreadCached = {
    "................", "................", "...kkkkkkkkk....", "...klllllllk....",
    "...klggggglk....", "...klllllllk....", "...klgggggggk...", "...klllllllk....",
    "...klggggglk....", "...klllllllk....", "...klgggglllk...", "...klllllllk....",
    "...kkkkkkkkk....", "................", "................", "................",
};

constexpr Rows kThreadRead = {
    "................", "................", "................", "............vv..",
    "...........vvv..", "..........vvv...", ".........vvv....", ".vv.....vvv.....",
    ".vvv...vvv......", "..vvv.vvv.......", "...vvvvv........", "....vvv.........",
    ".....v..........", "................", "................", "................",
};

constexpr Rows kThreadNew = {
    "................", ".......rr.......", ".......rr.......", ".......rr.......",
    "...r...rr...r...", "...rr.rrrr.rr...", "....rrrrrrrr....", ".....rrrrrr.....",
    ".rrrrrrrrrrrrrr.", ".....rrrrrr.....", "....rrrrrrrr....", "...rr.rrrr.rr...",
    "...r...rr...r...", ".......rr.......", ".......rr.......", "................",
};

constexpr Rows kBookmark = {
    "................", "....bbbbbbbb....", "....bbbbbbbb....", "....bbbbbbbb....",
    "....bbbbbbbb....", "....bbbbbbbb....", "....bbbbbbbb....", "....bbbbbbbb....",
    "....bbbbbbbb....", "....bbbbbbbb....", "....bbbbbbbb....", "....bbb..bbb....",
    "....bb....bb....", "....b......b....", "................", "................",
};

constexpr Rows kCategory = {
    "................", "................", "................", ".yyyyyy.........",
    ".yssssyy........", ".yyyyyyyyyyyyy..", ".yssssssssssy...", ".yssssssssssy...",
    ".yssssssssssy...", ".yssssssssssy...", ".yssssssssssy...", ".yssssssssssy...",
    ".yyyyyyyyyyyy...", "................", "................", "................",
};

constexpr Rows kBoard = {
    "................", "................", "...ggggggggg....", "...gwwwwwwwg....",
    "...gwlllllwg....", "...gwwwwwwwg....", "...gwlllllwg....", "...gwwwwwwwg....",
    "...gwlllllwg....", "...gwwwwwwwg....", "...gwlllwwwg....", "...gwwwwwwwg....",
    "...ggggggggg....", "................", "................", "................",
};

constexpr Rows kCurrentBoard = {
    "................", "................", "...bbbbbbbbb....", "...bbbbbbbbb....",
    "...bbwwwwwbb....", "...bbbbbbbbb....", "...bbwwwwwbb....", "...bbbbbbbbb....",
    "...bbwwwwwbb....", "...bbbbbbbbb....", "...bbwwwbbbb....", "...bbbbbbbbb....",
    "...bbbbbbbbb....", "................", "................", "................",
};

constexpr Rows kOnline = {
    "................", "................", "................", ".....vv..vv.....",
    ".....vv..vv.....", ".....vv..vv.....", "....vvvvvvvv....", "....vvvvvvvv....",
    "....vvvvvvvv....", "....vvvvvvvv....", ".....vvvvvv.....", "......vvvv......",
    ".......vv.......", ".......vv.......", ".......vv.......", "................",
};

constexpr Rows kOffline = {
    "................", "..r.............", "..rr............", "...rrgg..gg.....",
    "....rrg..gg.....", ".....rr..gg.....", "....g.rr...g....", "....g..rr..g....",
    "....g...rr.g....", "....g....rrg....", ".....g....rr....", "......gggg.rr...",
    ".......gg...rr..", ".......gg....r..", ".......gg.......", "................",
};

constexpr Rows kReload = {
    "................", "................", ".....kkkkk...k..", "....kkkkkkk.kk..",
    "...kk.....kkkk..", "..kk.......kkk..", "..kk......kkkk..", "..kk............",
    "..kk............", "..kk.......kk...", "..kkk.....kkk...", "...kkk...kkk....",
    "....kkkkkkk.....", "......kkk.......", "................", "................",
};

constexpr Rows kReloadFromScratch = {
    "................", "................", ".......k........", "......kk........",
    ".....kkkkkkkk...", "......kk.....k..", ".......k.....k..", "..r.......r..k..",
    "...r.....r...k..", "....r...r....k..", ".....r.r.....k..", "......r.....k...",
    ".....r.r..kk....", "....r...r.......", "...r.....r......", "..r.......r.....",
};

constexpr Rows kWrite = {
    "................", "............kk..", "...........kkkk.", "..........kkkkk.",
    ".........k.kkk..", "........k...k...", ".......k...k....", "......k...k.....",
    ".....k...k......", "....k...k.......", "...k...k........", "...kk.k.........",
    "..kkkk..........", "..kk............", "................", "................",
};

constexpr Rows kClose = {
    "................", "................", "................", "................",
    "....k......k....", ".....k....k.....", "......k..k......", ".......kk.......",
    ".......kk.......", "......k..k......", ".....k....k.....", "....k......k....",
    "................", "................", "................", "................",
};

Rows* RowsOf(Icon icon) {
    switch (icon) {
    case Icon::kThreadNotFetched: return &kThreadNotFetched;
    case Icon::kThreadCached: return &kThreadCached;
    case Icon::kThreadRead: return &kThreadRead;
    case Icon::kThreadNew: return &kThreadNew;
    case Icon::kBookmark: return &kBookmark;
    case Icon::kCategory: return &kCategory;
    case Icon::kBoard: return &kBoard;
    case Icon::kCurrentBoard: return &kCurrentBoard;
    case Icon::kOnline: return &kOnline;
    case Icon::kOffline: return &kOffline;
    case Icon::kReload: return &kReload;
    case Icon::kReloadFromScratch: return &kReloadFromScratch;
    case Icon::kWrite: return &kWrite;
    case Icon::kClose: return &kClose;
    }
    return &kBoard;
}

uint8 IndexOf(char letter) {
    for (const Ink& ink : kInks) {
        if (ink.letter == letter)
            return BScreen().IndexForColor(ink.color);
    }
    return B_TRANSPARENT_MAGIC_CMAP8;
}

} // namespace

std::unique_ptr<BBitmap> MakeIcon(Icon icon) {
    uint8 pixels[kSize * kSize];
    uint8 indexes[256] = {};
    indexes[static_cast<uint8>('.')] = IndexOf('.');
    for (const Ink& ink : kInks)
        indexes[static_cast<uint8>(ink.letter)] = IndexOf(ink.letter);
    Rows& rows = *RowsOf(icon);
    for (int32 i = 0; i < kSize * kSize; i++)
        pixels[i] = indexes[static_cast<uint8>(rows[i / kSize][i % kSize])];
    return std::make_unique<PrefilledBitmap>(BRect(0, 0, kSize - 1, kSize - 1), pixels);
}
