#pragma once

#include <SupportDefs.h>

// What pop-ups and the article's text tell each other. A pop-up is named by the number that the
// text gave it: "id" int32.

// From a pop-up to the article's text.
constexpr uint32 kMsgPopUpClicked =
    'pPCL'; // "id", "where" BPoint of the screen; on a link also
            // "url" or "reference", a string, and "by_key" float:
            // the line's height; for a menu "menu_at", int32 of the article's text
constexpr uint32 kMsgPopUpGone = 'pPGO'; // "id"; as it is deleted

// From the article's text to a pop-up.
constexpr uint32 kMsgAnchorLeft = 'pANL'; // also from the pop-up that its anchor stands in
constexpr uint32 kMsgAnchorEntered = 'pANE';
constexpr uint32 kMsgNextOpened = 'pNXO'; // "pop_up" messenger: opened from a reference in this one
constexpr uint32 kMsgNextClosed = 'pNXC';
constexpr uint32 kMsgMenuClosed = 'pMNC'; // also from the menu to the article's text
constexpr uint32 kMsgChooseLink = 'pCHL'; // "back" bool
constexpr uint32 kMsgOpenChosen = 'pOPC';

// From the article's menu to its text.
constexpr uint32 kMsgShowPosts = 'pSHP'; // "group" int32: a PostGroup; "post" int32: a number
enum class PostGroup : int32 { kId, kTrip, kAnswers };
