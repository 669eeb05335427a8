#pragma once

#include "gate/GateProgram.h"
#include "gate/TestGate.h"
#include "gate/program/WebBrowser.h"

#include "today/TodayServer.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

inline constexpr const char* kHost = "news.today.example";
inline constexpr const char* kBoard = "living";
inline constexpr const char* kKey = "1772755200";

// The gate's own program before the sample server of today, and a real web browser for its pages.
// Where ITAMORI_PICTURES names a folder, pictures of the pages are left there.
class BesideWebBrowser : public testing::Test {
protected:
    void SetUp() override {
        if (!WebBrowser::IsThere())
            GTEST_SKIP() << "there is no web browser: chromium and chromium-driver drive this test";
        std::string error;
        ASSERT_TRUE(fServer.LoadBoards(TODAY_BOARDS, &error)) << error;
        ASSERT_TRUE(fServer.Start(fFolder.Path(), &error)) << error;
        fWords = {"--port", "0", "--config", fFolder.Write("own.toml", fServer.GateSettings())};
        const std::string opener = fFolder.Write(
            "bin/xdg-open", "#!/bin/sh\nprintf '%s' \"$1\" >'" + (fFolder / "opened") + "'\n");
        chmod(opener.c_str(), 0700);
        setenv("PATH", (fFolder / "bin:" + getenv("PATH")).c_str(), 1);
        fWeb = std::make_unique<WebBrowser>(fFolder.Path());
        StartGate();
    }
    // Killed, where it runs; at the same port again.
    void StartGate() {
        fGate.reset();
        fGate = std::make_unique<GateProgram>(fFolder, fWords);
        fPort = fGate->WaitForPort();
        fWords[1] = std::to_string(fPort);
    }
    int CountServed() const {
        const std::string dat = fServer.Dat(kBoard, kKey);
        return static_cast<int>(std::count(dat.begin(), dat.end(), '\n'));
    }
    // The page that the gate opened in the browser.
    std::string TakeOpened() {
        const std::string address = fFolder.Read("opened");
        std::filesystem::remove(fFolder / "opened");
        return address;
    }
    std::string Own(const std::string& path) const {
        return "http://localhost:" + std::to_string(fPort) + path;
    }
    void Picture(const std::string& name) {
        if (const char* folder = getenv("ITAMORI_PICTURES"))
            fWeb->Picture(std::string(folder) + "/" + name + ".png");
    }

    ScratchFolder fFolder;
    TodayServer fServer;
    std::vector<std::string> fWords;
    std::unique_ptr<GateProgram> fGate;
    int fPort = 0;
    std::unique_ptr<WebBrowser> fWeb;
};
