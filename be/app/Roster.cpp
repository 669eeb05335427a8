#include <Roster.h>

#include "server/Desktop.h"

#include <Application.h>
#include <Entry.h>
#include <Path.h>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace {

const BRoster sRoster;
const char kUrlSignature[] = "application/x-vnd.Be.URL.";
const char kFolderSignature[] = "application/x-vnd.Be-directory";

status_t OpenFolder(const char* path) {
    if (!BEntry(path).IsDirectory())
        return B_ENTRY_NOT_FOUND;
    server::OpenPath(path);
    return B_OK;
}

// What has none could be taken for an option, or for a file.
bool HasScheme(const char* url) {
    const size_t length = strcspn(url, ":");
    return url[length] == ':' && isalpha(static_cast<unsigned char>(url[0])) != 0 &&
           std::all_of(url, url + length, [](unsigned char byte) {
               return isalnum(byte) != 0 || byte == '+' || byte == '-' || byte == '.';
           });
}

bool IsOurs(const char* signature) {
    return signature != nullptr && be_app != nullptr && strcmp(signature, be_app->Signature()) == 0;
}

} // namespace

const BRoster* be_roster = &sRoster;

bool BRoster::IsRunning(const char* signature) const {
    return IsOurs(signature);
}

status_t BRoster::GetAppInfo(const char* signature, app_info* info) const {
    return IsOurs(signature) ? be_app->GetAppInfo(info) : B_ERROR;
}

status_t BRoster::GetRunningAppInfo(team_id team, app_info* info) const {
    if (be_app == nullptr || team != be_app->Team())
        return B_BAD_TEAM_ID;
    return be_app->GetAppInfo(info);
}

status_t BRoster::GetActiveAppInfo(app_info* info) const {
    return be_app != nullptr ? be_app->GetAppInfo(info) : B_ERROR;
}

status_t BRoster::Launch(const char* mimeType, int argc, const char* const* args,
                         team_id* appTeam) const {
    if (appTeam != nullptr)
        *appTeam = -1;
    const bool isFolder = mimeType != nullptr && strcmp(mimeType, kFolderSignature) == 0;
    if (!isFolder &&
        (mimeType == nullptr || strncmp(mimeType, kUrlSignature, strlen(kUrlSignature)) != 0))
        return B_LAUNCH_FAILED_APP_NOT_FOUND;
    if (argc < 1 || args == nullptr || args[0] == nullptr || args[0][0] == 0)
        return B_BAD_VALUE;
    if (isFolder)
        return OpenFolder(args[0]);
    if (!HasScheme(args[0]))
        return B_BAD_VALUE;
    return server::OpenUrl(args[0]) == B_OK ? B_OK : B_LAUNCH_FAILED;
}

status_t BRoster::Launch(const char* mimeType, BMessage*, team_id* appTeam) const {
    return Launch(mimeType, 0, nullptr, appTeam);
}

status_t BRoster::Launch(const entry_ref* ref, const BMessage*, team_id* appTeam) const {
    if (appTeam != nullptr)
        *appTeam = -1;
    if (ref == nullptr)
        return B_BAD_VALUE;
    const BEntry entry(ref);
    BPath path;
    if (!entry.Exists() || entry.GetPath(&path) != B_OK)
        return B_ENTRY_NOT_FOUND;
    server::OpenPath(path.Path());
    return B_OK;
}
