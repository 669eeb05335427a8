#pragma once

// Settings of how somebody reads; bool, off where they are not there.
constexpr const char* kSpaceFetches = "space_fetches";    // at a thread's end
constexpr const char* kReopensWindows = "reopen_windows"; // at the start
// What was open at the end: a text, see app/Session.h.
constexpr const char* kOpenWindows = "open_windows";
