#pragma once

#include <memory>

class BBitmap;

// The program's small pictures, 16 × 16, told apart by shape as well as by colour.
enum class Icon {
    kThreadNotFetched, // by thread_status
    kThreadCached,
    kThreadRead,
    kThreadNew,
    kBookmark,
    kCategory,
    kBoard,
    kCurrentBoard,
    kOnline,
    kOffline,
    kReload,
    kReloadFromScratch,
    kWrite,
    kClose,
};

// A bitmap of the icon, drawn from the program's own table.
std::unique_ptr<BBitmap> MakeIcon(Icon icon);
