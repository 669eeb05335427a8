#pragma once

#include <Entry.h>
#include <Messenger.h>
#include <SupportDefs.h>

class BMessage;

enum {
    B_LAUNCH_MASK = 0x3,
    B_SINGLE_LAUNCH = 0x0,
    B_MULTIPLE_LAUNCH = 0x1,
    B_EXCLUSIVE_LAUNCH = 0x2,
    B_BACKGROUND_APP = 0x4,
    B_ARGV_ONLY = 0x8
};

struct app_info {
    thread_id thread = -1;
    team_id team = -1;
    port_id port = -1;
    uint32 flags = 0;
    entry_ref ref;
    char signature[B_MIME_TYPE_LENGTH] = "";
};

// The running program, and the desktop's other programs. Any thread; launching a URL waits until it
// has been taken, which may take some seconds.
class BRoster {
public:
    BRoster() = default;
    ~BRoster() = default;

    bool IsRunning(const char* signature) const;
    status_t GetAppInfo(const char* signature, app_info* info) const;
    status_t GetRunningAppInfo(team_id team, app_info* info) const;
    status_t GetActiveAppInfo(app_info* info) const;

    // A signature "application/x-vnd.Be.URL.<scheme>" opens args[0] in the desktop's program for
    // it, byte for byte; B_LAUNCH_FAILED when nobody takes it, B_BAD_VALUE when it has no scheme.
    // "application/x-vnd.Be-directory" opens the folder args[0] in the file manager; any other
    // gives B_LAUNCH_FAILED_APP_NOT_FOUND. An entry_ref opens that file or folder.
    status_t Launch(const char* mimeType, int argc, const char* const* args,
                    team_id* appTeam = nullptr) const;
    status_t Launch(const char* mimeType, BMessage* initialMessage = nullptr,
                    team_id* appTeam = nullptr) const;
    status_t Launch(const entry_ref* ref, const BMessage* initialMessage = nullptr,
                    team_id* appTeam = nullptr) const;
};

extern const BRoster* be_roster;
