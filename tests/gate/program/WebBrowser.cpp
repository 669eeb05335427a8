#include "gate/program/WebBrowser.h"

#include "gate/OriginServer.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using nlohmann::json;

constexpr const char* kDriver = "chromedriver";
constexpr const char* kElement = "element-6066-11e4-a52e-4f735466cecf"; // the protocol's own name

// Starts the driver, which takes a free port and tells it.
pid_t StartDriver(int output, const std::string& folder) {
    const pid_t process = fork();
    if (process != 0)
        return process;
    prctl(PR_SET_PDEATHSIG, SIGKILL); // a test that crashes leaves nothing behind
    setenv("TMPDIR", folder.c_str(), 1);
    unsetenv("DISPLAY");
    dup2(output, 1);
    dup2(output, 2);
    execlp(kDriver, kDriver, "--port=0", nullptr);
    _exit(127);
}

int ReadPort(int output) {
    const std::string mark = "successfully on port ";
    std::string text;
    char piece[256];
    for (ssize_t count; (count = read(output, piece, sizeof(piece))) > 0;) {
        text.append(piece, static_cast<size_t>(count));
        const size_t at = text.find(mark);
        if (at != std::string::npos && text.find('\n', at) != std::string::npos)
            return atoi(text.c_str() + at + mark.size());
    }
    return 0;
}

// Sends a request and returns the answer's body; the driver keeps its connections open.
std::string Talk(int port, const std::string& request) {
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<in_port_t>(port));
    std::string all;
    if (connect(handle, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0)
        send(handle, request.data(), request.size(), MSG_NOSIGNAL);
    size_t end = std::string::npos;
    const auto isWhole = [&] {
        end = all.find("\r\n\r\n");
        return end != std::string::npos &&
               all.size() >=
                   end + 4 + strtoul(HeaderOf(all, "Content-Length").c_str(), nullptr, 10);
    };
    char piece[4096];
    for (ssize_t count; !isWhole() && (count = recv(handle, piece, sizeof(piece), 0)) > 0;)
        all.append(piece, static_cast<size_t>(count));
    close(handle);
    return end == std::string::npos ? "" : all.substr(end + 4);
}

std::string FromBase64(const std::string& text) {
    const std::string digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    unsigned bits = 0;
    int count = 0;
    for (const char c : text.substr(0, text.find('='))) {
        bits = bits << 6 | static_cast<unsigned>(digits.find(c));
        count += 6;
        if (count >= 8)
            bytes += static_cast<char>(bits >> (count -= 8));
    }
    return bytes;
}

} // namespace

bool WebBrowser::IsThere() {
    const std::string folders = getenv("PATH");
    for (size_t at = 0; at <= folders.size();) {
        const size_t end = std::min(folders.find(':', at), folders.size());
        if (std::filesystem::exists(folders.substr(at, end - at) + "/" + kDriver))
            return true;
        at = end + 1;
    }
    return false;
}

WebBrowser::WebBrowser(const std::string& folder) {
    int output[2];
    if (pipe2(output, O_CLOEXEC) != 0)
        return;
    fDriver = StartDriver(output[1], folder);
    close(output[1]);
    fOutput = output[0]; // it ends when nobody reads what it says
    fPort = ReadPort(fOutput);
    // It may tell its port before it takes connections.
    for (int i = 0; i < 500 && !_Send("GET", "/status", nullptr).value("ready", false); i++)
        poll(nullptr, 0, 20);
    const json arguments = {"--headless=new",
                            "--no-sandbox", // it can't have one for root; its pages are our own
                            "--disable-gpu",
                            "--disable-dev-shm-usage",
                            "--no-first-run",
                            "--remote-debugging-pipe", // it ends with the driver
                            "--disable-background-networking",
                            "--window-size=900,1000",
                            "--user-data-dir=" + folder + "/browser",
                            "--host-resolver-rules=MAP evil.example 127.0.0.1, "
                            "MAP * ~NOTFOUND, EXCLUDE localhost, EXCLUDE 127.0.0.1"};
    const json session = _Ask(
        "POST", "/session",
        {{"capabilities", {{"alwaysMatch", {{"goog:chromeOptions", {{"args", arguments}}}}}}}});
    fSession = "/session/" + (session.is_object() ? session.value("sessionId", "") : "");
}

WebBrowser::~WebBrowser() {
    _Ask("DELETE", fSession, nullptr);
    kill(fDriver, SIGTERM);
    waitpid(fDriver, nullptr, 0);
    close(fOutput);
}

json WebBrowser::_Send(const std::string& method, const std::string& path, const json& body) {
    const std::string text = body.is_null() ? "" : body.dump();
    const std::string answer =
        Talk(fPort, method + " " + path + " HTTP/1.1\r\nHost: localhost:" + std::to_string(fPort) +
                        "\r\nContent-Type: application/json\r\nContent-Length: " +
                        std::to_string(text.size()) + "\r\n\r\n" + text);
    const json reply = json::parse(answer, nullptr, false);
    return reply.is_object() ? reply.value("value", json()) : json{{"error", "no answer"}};
}

json WebBrowser::_Ask(const std::string& method, const std::string& path, const json& body) {
    const json value = _Send(method, path, body);
    const std::string error = value.is_object() ? value.value("error", "") : "";
    EXPECT_TRUE(error.empty() || error == "no such element")
        << method << " " << path << ": " << value;
    return error.empty() ? value : json();
}

void WebBrowser::Open(const std::string& address) {
    _Ask("POST", fSession + "/url", {{"url", address}});
}

bool WebBrowser::Press(const std::string& selector) {
    const json element =
        _Ask("POST", fSession + "/element", {{"using", "css selector"}, {"value", selector}});
    if (!element.is_object())
        return false;
    const std::string pressed = fSession + "/element/" + element.value(kElement, "");
    _Ask("POST", pressed + "/click", json::object());
    // The click may be back before its page begins to go; with the page the element does.
    for (int i = 0; i < 500 && _Send("GET", pressed + "/name", nullptr).is_string(); i++)
        poll(nullptr, 0, 20);
    return true;
}

std::string WebBrowser::Address() {
    return _Ask("GET", fSession + "/url", nullptr).get<std::string>();
}

std::string WebBrowser::Title() {
    return _Ask("GET", fSession + "/title", nullptr).get<std::string>();
}

std::string WebBrowser::Text() {
    return Run("done(document.body.innerText)");
}

std::string WebBrowser::Run(const std::string& script) {
    const json result =
        _Ask("POST", fSession + "/execute/async",
             {{"script", "const done = arguments[0];\n" + script}, {"args", json::array()}});
    return result.is_string() ? result.get<std::string>() : result.dump();
}

void WebBrowser::Picture(const std::string& file) {
    std::ofstream stream(file, std::ios::binary);
    stream << FromBase64(_Ask("GET", fSession + "/screenshot", nullptr).get<std::string>());
}
