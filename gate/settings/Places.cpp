#include "settings/Places.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace gate {

namespace {

namespace fs = std::filesystem;

std::string UserFolder(const char* variable, const char* underHome) {
    const char* folder = getenv(variable);
    if (folder != nullptr && *folder == '/')
        return folder;
    const char* home = getenv("HOME");
    return std::string(home != nullptr ? home : "/") + "/" + underHome;
}

} // namespace

std::string UserSettingsFile() {
    return UserFolder("XDG_CONFIG_HOME", ".config") + "/itamori-gate/gate.toml";
}

std::string StoreFile() {
    const fs::path folder = UserFolder("XDG_DATA_HOME", ".local/share") + "/itamori-gate";
    std::error_code error;
    fs::create_directories(folder.parent_path(), error);
    mkdir(folder.c_str(), 0700);
    return folder / "gate.db";
}

bool ReadAllSettings(const std::string& config, Settings* settings, std::string* error) {
    std::error_code ignored;
    std::vector<std::string> remarks;
    const fs::path program = fs::read_symlink("/proc/self/exe", ignored);
    const std::string shipped = program.parent_path() / "gate" / "gate.toml";
    const std::string own = config.empty() ? UserSettingsFile() : config;
    if (!ReadSettings(shipped, settings, error, &remarks))
        return false;
    if ((!config.empty() || fs::exists(own, ignored)) &&
        !ReadSettings(own, settings, error, &remarks))
        return false;
    for (const std::string& remark : remarks)
        fprintf(stderr, "%s\n", remark.c_str());
    return true;
}

} // namespace gate
