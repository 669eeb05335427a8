#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace gate {

struct AnswerHead {
    int status = 200;
    std::string reason = "OK"; // UTF-8: the program shows it
    std::string type = "text/plain";
    int64_t length = 0;            // of the body, exactly
    time_t lastModified = -1;      // −1: without
    std::string contentRange;      // "": without
    std::vector<std::string> more; // further header lines
};

// The way back to one client. One head, then as many bytes as it names; fewer, and the client sees
// that the answer was cut. For the connection's thread.
class Responder {
public:
    // Answers over a connection, which stays the caller's; `stop` becomes readable when the server
    // ends. `wantsBody`: false for HEAD.
    Responder(int connection, int stop) : fConnection(connection), fStop(stop) {}
    void LeaveOutBody() { fWantsBody = false; }

    bool Begin(const AnswerHead& head);
    bool Write(std::string_view bytes); // false when the client has gone
    // A whole answer that tells the reason once more in its body.
    void Refuse(int status, const std::string& reason);
    void Reply(AnswerHead head, std::string_view body);

    int Status() const { return fStatus; } // 0: none yet
    const std::string& Reason() const { return fReason; }
    int64_t Sent() const { return fSent; } // of the body

private:
    bool _Send(std::string_view bytes);

    const int fConnection;
    const int fStop;
    bool fWantsBody = true;
    bool fIsAlive = true;
    int fStatus = 0;
    std::string fReason;
    int64_t fSent = 0;
};

// For pages that a web browser shows: no script, nothing from outside, forms that lead nowhere but
// back, and no place in another page's frame.
constexpr const char* kSafePagePolicy =
    "Content-Security-Policy: default-src 'none'; style-src 'unsafe-inline'; "
    "base-uri 'none'; form-action 'self'; frame-ancestors 'none'";

// "Sun, 06 Nov 1994 08:49:37 GMT".
std::string HttpDate(time_t date);

} // namespace gate
