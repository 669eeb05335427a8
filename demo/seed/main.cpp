#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <Directory.h>

#include "server/Board.h"
#include "server/Pages.h"
#include "settings/SettingsFile.h"

// Prepares a folder for a demo: demo_seed FOLDER PORT [BOARDS…] makes FOLDER/bbs/newbbsmenu.html,
// the menu of the sample boards and of those in further folders, which stands beside the program,
// and FOLDER/settings, to be the user's settings folder ($XDG_CONFIG_HOME), with settings that send
// every request to the demo server at PORT. What is there already is replaced, but for other
// settings.

namespace {

namespace fs = std::filesystem;

bool fail(const std::string& what) {
    fprintf(stderr, "demo_seed: %s\n", what.c_str());
    return false;
}

bool writeMenu(const fs::path& folder, const std::vector<std::string>& boardFolders) {
    BoardSet all;
    for (const std::string& boards : boardFolders) {
        BoardSet some;
        std::string error;
        if (!some.Load(boards, &error))
            return fail(error);
        all.Categories().splice(all.Categories().end(), some.Categories());
    }
    std::error_code failure;
    fs::create_directories(folder, failure);
    std::ofstream menu(folder / "newbbsmenu.html", std::ios::binary);
    menu << menuPage(all);
    menu.close();
    return menu ? true : fail((folder / "newbbsmenu.html").string() + " can't be written");
}

void put(SettingsFile& settings, const char* key, const char* value) {
    if (settings.Replace(key, value) != B_OK)
        settings.AddString(key, value);
}

bool writeSettings(const fs::path& folder, const char* port) {
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    create_directory((folder / "2ch").c_str(), 0755);
    SettingsFile settings("Itamori", "2ch");
    // Without a file, or with one that can't be read, it begins empty.
    settings.Load();
    // The network's settings come as a group: with the proxy given, none of the rest is added.
    for (const char* key : {"proxy", "enable_cache"}) {
        if (settings.Replace(key, true) != B_OK)
            settings.AddBool(key, true);
    }
    put(settings, "proxy_host", "127.0.0.1");
    put(settings, "proxy_port", port);
    status_t status = settings.Save();
    return status == B_OK ? true : fail(folder.string() + ": the settings can't be written");
}

} // namespace

int main(int argc, char** argv) {
    int port = argc >= 3 ? atoi(argv[2]) : 0;
    if (port < 1 || port > 65535) {
        fprintf(stderr, "usage: %s FOLDER PORT [BOARDS...]\n", argv[0]);
        return 2;
    }
    fs::path folder = fs::absolute(argv[1]);
    std::vector<std::string> boards = {DEMO_BOARDS};
    boards.insert(boards.end(), argv + 3, argv + argc);
    bool isDone = writeMenu(folder / "bbs", boards) &&
                  writeSettings(folder / "settings", std::to_string(port).c_str());
    return isDone ? 0 : 1;
}
