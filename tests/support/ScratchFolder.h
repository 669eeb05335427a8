#pragma once

#include <string>

// A folder of a test's own: empty at first, removed with all that it holds at the end. While it
// lives it is also the user's settings folder ($XDG_CONFIG_HOME), so that nothing a test does
// touches the real one.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& Path() const { return fPath; }
    // The absolute path of something in it.
    std::string operator/(const std::string& name) const { return fPath + "/" + name; }

    // `name` may lead through folders, which are made. Returns the absolute path.
    std::string Write(const std::string& name, const std::string& contents) const;
    std::string MakeFolder(const std::string& name) const;
    std::string Read(const std::string& name) const; // "" when it is not there
    bool Has(const std::string& name) const;

private:
    std::string fPath;
    std::string fOldSettings;
    bool fHadSettings;
};
