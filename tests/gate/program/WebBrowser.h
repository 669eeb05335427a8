#pragma once

#include <nlohmann/json_fwd.hpp>

#include <sys/types.h>

#include <string>

// A real web browser without a display, driven by the W3C WebDriver protocol. Every name but
// localhost is unknown to it, except evil.example, which is this machine.
class WebBrowser {
public:
    static bool IsThere(); // whether one is installed

    explicit WebBrowser(const std::string& folder); // for its files
    ~WebBrowser();
    WebBrowser(const WebBrowser&) = delete;
    WebBrowser& operator=(const WebBrowser&) = delete;

    // Each returns when the page that results has loaded.
    void Open(const std::string& address);
    // As a mouse does, what leads to another page; false when there is no such element.
    bool Press(const std::string& selector);

    std::string Address();
    std::string Title();
    std::string Text(); // what a reader sees
    // What a script calls `done` with.
    std::string Run(const std::string& script);
    // A picture of the whole page, as PNG.
    void Picture(const std::string& file);

private:
    // The value of the answer, which has an "error" where it went wrong; a test fails by it in the
    // second.
    nlohmann::json _Send(const std::string& method, const std::string& path,
                         const nlohmann::json& body);
    nlohmann::json _Ask(const std::string& method, const std::string& path,
                        const nlohmann::json& body);

    int fPort = 0;
    pid_t fDriver = -1;
    int fOutput = -1;     // what the driver says
    std::string fSession; // "/session/ID"
};
