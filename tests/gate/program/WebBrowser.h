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
    bool Press(const std::string& selector); // as a mouse does; false when there is no such element

    std::string Address();
    std::string Title();
    std::string Text(); // what a reader sees
    // What a script calls `done` with.
    std::string Run(const std::string& script);
    // A picture of the whole page, as PNG.
    void Picture(const std::string& file);

private:
    nlohmann::json _Ask(const std::string& method, const std::string& path,
                        const nlohmann::json& body);

    int fPort = 0;
    pid_t fDriver = -1;
    std::string fSession; // "/session/ID"
};
