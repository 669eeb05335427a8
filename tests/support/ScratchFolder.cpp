#include "support/ScratchFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
    fPath = (fs::temp_directory_path() / "itamori-test-XXXXXX").string();
    if (!mkdtemp(fPath.data()))
        throw std::runtime_error("no scratch folder");
    const char* settings = getenv("XDG_CONFIG_HOME");
    fHadSettings = settings != nullptr;
    fOldSettings = fHadSettings ? settings : "";
    setenv("XDG_CONFIG_HOME", fPath.c_str(), 1);
}

ScratchFolder::~ScratchFolder() {
    if (fHadSettings)
        setenv("XDG_CONFIG_HOME", fOldSettings.c_str(), 1);
    else
        unsetenv("XDG_CONFIG_HOME");
    std::error_code ignored;
    for (const auto& entry : fs::recursive_directory_iterator(fPath, ignored)) {
        // A test may have taken its own rights away.
        if (entry.is_directory(ignored) && !entry.is_symlink(ignored))
            fs::permissions(entry.path(), fs::perms::owner_all, ignored);
    }
    fs::remove_all(fPath, ignored);
}

std::string ScratchFolder::Write(const std::string& name, const std::string& contents) const {
    fs::path path = fs::path(fPath) / name;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << contents;
    return path.string();
}

std::string ScratchFolder::MakeFolder(const std::string& name) const {
    fs::path path = fs::path(fPath) / name;
    fs::create_directories(path);
    return path.string();
}

std::string ScratchFolder::Read(const std::string& name) const {
    std::ifstream file(fs::path(fPath) / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool ScratchFolder::Has(const std::string& name) const {
    return fs::exists(fs::symlink_status(fs::path(fPath) / name));
}
