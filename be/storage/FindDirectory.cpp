#include <FindDirectory.h>

#include <cstdlib>
#include <string>

#include <pwd.h>
#include <unistd.h>

#include <Directory.h>
#include <Path.h>

namespace {

// A variable that holds an absolute path, or "".
std::string folderFrom(const char* variable) {
    const char* value = getenv(variable);
    return value && *value == '/' ? value : "";
}

std::string homeFolder() {
    std::string home = folderFrom("HOME");
    if (!home.empty())
        return home;
    passwd user;
    passwd* found = nullptr;
    char buffer[4096];
    bool isKnown = getpwuid_r(getuid(), &user, buffer, sizeof(buffer), &found) == 0 && found;
    return isKnown ? user.pw_dir : "/";
}

std::string settingsFolder() {
    std::string folder = folderFrom("XDG_CONFIG_HOME");
    return folder.empty() ? homeFolder() + "/.config" : folder;
}

std::string temporaryFolder() {
    std::string folder = folderFrom("TMPDIR");
    return folder.empty() ? "/tmp" : folder;
}

std::string folderFor(directory_which which) {
    switch (which) {
    case B_USER_DIRECTORY: return homeFolder();
    case B_USER_CONFIG_DIRECTORY:
    case B_USER_SETTINGS_DIRECTORY: return settingsFolder();
    case B_SYSTEM_TEMP_DIRECTORY: return temporaryFolder();
    }
    return {};
}

} // namespace

status_t find_directory(directory_which which, BPath* path, bool createIt, BVolume* /*volume*/) {
    std::string folder = folderFor(which);
    if (!path || folder.empty())
        return B_BAD_VALUE;
    status_t status = createIt ? create_directory(folder.c_str(), 0755) : B_OK;
    return status == B_OK ? path->SetTo(folder.c_str()) : status;
}
