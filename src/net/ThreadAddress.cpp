#include "net/ThreadAddress.h"

#include "net/NPUrl.h"

std::string MakeThreadAddress(const char* url, const char* dat) {
    const NPUrl parsed(url);
    const std::string name = dat;
    const size_t dot = name.find('.');
    if (parsed.Status() != 0 || dot == name.npos)
        return "";
    const std::string key = name.substr(0, dot);
    const std::string start = std::string("http://") + parsed.Host();
    std::string board = parsed.Board();
    if (name.find("cgi") == name.npos)
        return start + "/test/read.cgi?bbs=" + board + "&key=" + key;
    std::string prefix;
    const size_t slash = board.find('/');
    if (slash != board.npos) {
        prefix = "/" + board.substr(0, slash);
        board.erase(0, slash + 1);
    }
    return start + prefix + "/bbs/read.cgi?BBS=" + board + "&KEY=" + key;
}
