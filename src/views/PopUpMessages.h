#pragma once

#include <SupportDefs.h>

// What pop-ups and the article's text tell each other. A pop-up is named by the number that the
// text gave it: "id" int32.

// From a pop-up to the article's text.
constexpr uint32 kMsgPopUpClicked = 'pPCL'; // "id", "where" BPoint of the screen; on a link also
                                            // "url" or "reference", a string
constexpr uint32 kMsgPopUpGone = 'pPGO';    // "id"; as it is deleted

// From the article's text to a pop-up.
constexpr uint32 kMsgAnchorLeft = 'pANL'; // also from the pop-up that its anchor stands in
constexpr uint32 kMsgAnchorEntered = 'pANE';
constexpr uint32 kMsgNextOpened = 'pNXO'; // "pop_up" messenger: opened from a reference in this one
constexpr uint32 kMsgNextClosed = 'pNXC';
