#pragma once

#include "gate/TestGate.h"

#include "today/TodayServer.h"

// The sample server of today and a gate that reaches it as its settings file says: over TLS, with
// certificates checked against the server's own authority.
class TodayGate : public testing::Test {
protected:
    TodayGate() {
        std::string error;
        EXPECT_TRUE(fServer.LoadBoards(TODAY_BOARDS, &error)) << error;
        EXPECT_TRUE(fServer.Start(fFolder.Path(), &error)) << error;
        const std::string file = fFolder.Write("gate.toml", fServer.GateSettings());
        fGate = std::make_unique<TestGate>(nullptr, [&](gate::Settings* settings) {
            std::vector<std::string> remarks;
            settings->families.clear();
            EXPECT_TRUE(gate::ReadSettings(file, settings, &error, &remarks)) << error;
            EXPECT_TRUE(remarks.empty());
        });
    }

    GateAnswer Get(const std::string& host, const std::string& path) {
        return fGate->Get(path, "", host);
    }
    // Of a copy that holds `size` bytes and was last answered with `since`.
    GateAnswer GetRest(const std::string& host, const std::string& path, size_t size,
                       const std::string& since = "Thu, 01 Jan 1970 00:00:00 GMT") {
        return fGate->Get(path,
                          "If-Modified-Since: " + since +
                              "\r\nRange: bytes=" + std::to_string(size) + "-\r\n",
                          host);
    }

    ScratchFolder fFolder;
    TodayServer fServer;
    std::unique_ptr<TestGate> fGate;
};
