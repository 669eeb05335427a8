#pragma once

#include <SupportDefs.h>

#include <string>

// A board's address, "http://host/board/", divided into its host and its board folder. The trailing
// "/" is required; the folder may hold "/" itself.
class NPUrl {
public:
    NPUrl() = default;
    explicit NPUrl(const char* url) { SetTo(url); }

    // Forgets the earlier address; 0, or −1 when the text is no board address.
    int32 SetTo(const char* url);

    // 0 when parsed, else −1.
    int32 Status() const { return fStatus; }
    // UTF-8; null until an address was parsed.
    const char* Host() const { return fStatus == 0 ? fHost.c_str() : nullptr; }
    const char* Board() const { return fStatus == 0 ? fBoard.c_str() : nullptr; }

    // Whether both were parsed and lead to one board.
    bool IsSameBoard(const NPUrl& other) const {
        return fStatus == 0 && other.fStatus == 0 && fHost == other.fHost && fBoard == other.fBoard;
    }

private:
    int32 fStatus = -1;
    std::string fHost;
    std::string fBoard;
};
