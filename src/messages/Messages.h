#pragma once

#include <SupportDefs.h>

// The codes of the program's own messages, each with its sender, its receiver and its fields.
// "frame" is a BRect, "url" a board's address, "dat" a thread's file name, both strings.

// From menus and windows to the application.
constexpr uint32 kMsgNewWindow = 'mNWD';      // window: "frame"
constexpr uint32 kMsgNextWindow = 'mCWD';     // menu, Command-G
constexpr uint32 kMsgToggleOnline = 'mTOM';   // menu, network button; broadcast to every window
constexpr uint32 kMsgToggleClick = 'mTCM';    // menu; broadcast to every window
constexpr uint32 kMsgFontChanged = 'mFCH';    // "family", "style", "size" float; broadcast
constexpr uint32 kMsgWindowClosed = 'mWQT';   // every browser window as it closes
constexpr uint32 kMsgBusyCursor = 'mTMC';     // workers: "cursor" bool
constexpr uint32 kMsgThreadInWindow = 'mTNW'; // window: "frame", "dat", "url", "title", "parent"
constexpr uint32 kMsgThreadInWindowCached = 'mTCW'; // also "jump" int32: a post's number
constexpr uint32 kMsgBoardInWindow = 'mBNW';        // window: "frame", "board", "url"
constexpr uint32 kMsgBoardInWindowCached = 'mBNC';
constexpr uint32 kMsgNoiseChanged = 'mNGC'; // whoever changes the rules that hide posts; broadcast
constexpr uint32 kMsgKeysChanged = 'mKYC';  // the window of keys; broadcast
constexpr uint32 kMsgUpdateBoardMenu = 'mUBT'; // menu
constexpr uint32 kMsgUpdateEnded =
    'mUBF'; // update window as it closes: "complete" bool; its worker: "menu" raw bytes

// To the update window.
constexpr uint32 kMsgBeginUpdate = 'mUBB';  // the application
constexpr uint32 kMsgUpdateStatus = 'mUBS'; // its worker: "text" string

// To a browser window.
constexpr uint32 kMsgBoardSelected =
    'mBSL'; // board pane: "board" name, "url"; loads from the server
constexpr uint32 kMsgBoardSelectedCached = 'mBSC';
constexpr uint32 kMsgThreadSelected =
    'mTSL'; // thread list, article pane: "dat", "url", "res" int32, "from_scratch" bool
constexpr uint32 kMsgThreadSelectedCached = 'mTSC';
constexpr uint32 kMsgBoardComplete = 'mBRF'; // subject workers: "port" int32, the list's own fields
constexpr uint32 kMsgThreadComplete = 'mTRF';   // thread workers: "port", "dat", "res_num",
                                                // "last_modified", "cut" bool: more is missing,
                                                // "told" bool: the status line says why
constexpr uint32 kMsgNextThreads = 'mNXL';      // next thread worker: "port", of each one "title",
                                                // "dat", "count" int32, the likeliest first
constexpr uint32 kMsgOpenNextThread = 'mNXO';   // menu of these: "url", "dat", "title", "old_dat"
constexpr uint32 kMsgMoveBookmark = 'mNXB';     // alert: the same and "which" int32, 1 for yes
constexpr uint32 kMsgBoardMenuChanged = 'mUBV'; // application: the menu file is another

// From the menu to a browser window.
constexpr uint32 kMsgListBookmarks = 'mBMS';
constexpr uint32 kMsgStartPatrol = 'mBMP';
constexpr uint32 kMsgOpenBookmarkFolder = 'mBME';
constexpr uint32 kMsgOpenPrefs = 'mPPG';
constexpr uint32 kMsgOpenSearch = 'mSRQ';
constexpr uint32 kMsgFilterThreads = 'mTFL';
constexpr uint32 kMsgFindNextThread = 'mNXF';
constexpr uint32 kMsgOpenNoise = 'mNGO';
constexpr uint32 kMsgOpenCacheSearch = 'mCSO';
constexpr uint32 kMsgOpenKeys = 'mKYO';
constexpr uint32 kMsgNextNews = 'mNXN'; // key: the next thread with new posts

// To the cache-search window, from its worker: "port", "files" int32, and of each match "host",
// "board", "dat", "title", "line" strings, "number" int32, "modified" int64.
constexpr uint32 kMsgCacheMatches = 'mCSM';
constexpr uint32 kMsgCacheSearched = 'mCSE'; // "port", "files" int32, "limited" bool

// Between a browser window and its search window.
constexpr uint32 kMsgSearchStep = 'mSBG';   // to the browser: "thread", "article" bool, "text"
constexpr uint32 kMsgSearchClosed = 'mSQT'; // to the browser: "window" messenger

// Between a browser window and its patrol window.
constexpr uint32 kMsgStepEnded = 'mBPB';   // to the patrol: the list or a visit has ended
constexpr uint32 kMsgVisitNext = 'mBNI';   // from the patrol: "index" int32, the visits so far
constexpr uint32 kMsgVisiting = 'mBCI';    // to the patrol: "item" pointer, "title"
constexpr uint32 kMsgPatrolEnded = 'mBPF'; // from the patrol as it closes

// From a pane's own menus and buttons to the pane.
constexpr uint32 kMsgBoardInBrowser = 'mBOB';    // "url"
constexpr uint32 kMsgThreadInBrowser = 'mTOB';   // "dat", "url"
constexpr uint32 kMsgDeleteCached = 'mTDC';      // "selection" int32, "mode" int32, "dat", "url"
constexpr uint32 kMsgAddBookmark = 'mBMA';       // "dat", "url", "title", "selection" int32
constexpr uint32 kMsgRemoveBookmark = 'mBMD';    // "item" pointer, "dat", "url"
constexpr uint32 kMsgReloadThread = 'mRLD';      // article pane's button, key
constexpr uint32 kMsgReloadFromScratch = 'mRAR'; // article pane's button
constexpr uint32 kMsgCopyRange = 'mCTC';         // "start", "finish" int32: offsets, both included
constexpr uint32 kMsgSearchWeb = 'mGGS';         // "start", "finish" int32 (behind it), "ja" bool
constexpr uint32 kMsgAddNoise = 'mNGN';          // "kind" int32 of NoiseKind, "text", "day" strings
constexpr uint32 kMsgJumpToPost = 'mJSL';        // "jump" int32: a post's number

// To a write window.
constexpr uint32 kMsgOpenWriteWindow = 'mWMS'; // article pane's button, to the pane
constexpr uint32 kMsgSendPost = 'mWMG';        // its button
constexpr uint32 kMsgCancelPost = 'mWMC';      // its button
constexpr uint32 kMsgPostProgress = 'mWMP';    // post worker: "progress" int32, "message" string
constexpr uint32 kMsgPostFailed =
    'mWME'; // post worker: "dialog" bool when the user has been told why
constexpr uint32 kMsgPostDone =
    'mWMF'; // post worker: "unconfirmed" bool when the server's answer was lost
constexpr uint32 kMsgNameChosen = 'mWMM'; // menus of earlier entries: "text" string
constexpr uint32 kMsgMailChosen = 'mWMN';
constexpr uint32 kMsgTextChanged = 'mWTC';    // its editor and fields
constexpr uint32 kMsgTextRests = 'mWTR';      // its editor, when nothing has changed for a while
constexpr uint32 kMsgActivateWindow = 'mWMA'; // to any window that opens once: it is wanted again
constexpr uint32 kMsgQuotePaste = 'mTQP';     // the editor's own menu

// From a window to its worker's port, with one byte of value 1.
constexpr int32 kStopWorker = 'pMQT';
