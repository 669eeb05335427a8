#include "front/Responder.h"

#include "convert/Words.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdio>

namespace gate {

namespace {

constexpr int kPatience = 30000; // milliseconds for a client to take the next bytes
constexpr size_t kLongestReason = 900;

// One line, cut at a character.
std::string OneLine(std::string text) {
    text = WithoutControls(std::move(text));
    if (text.size() > kLongestReason) {
        size_t end = kLongestReason;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
            end--;
        text.resize(end);
    }
    return text;
}

std::string HeadText(const AnswerHead& head) {
    std::string text = "HTTP/1.1 " + std::to_string(head.status) + " " + OneLine(head.reason) +
                       "\r\nDate: " + HttpDate(time(nullptr)) + "\r\n";
    if (head.status != 304) {
        text += "Content-Type: " + head.type + "\r\n";
        text += "Content-Length: " + std::to_string(head.length) + "\r\n";
    }
    if (head.lastModified >= 0)
        text += "Last-Modified: " + HttpDate(head.lastModified) + "\r\n";
    if (!head.contentRange.empty())
        text += "Content-Range: " + head.contentRange + "\r\n";
    for (const std::string& line : head.more)
        text += line + "\r\n";
    return text + "Connection: close\r\n\r\n";
}

} // namespace

// The names of days and months are English whatever the locale.
std::string HttpDate(time_t date) {
    static constexpr std::array<const char*, 7> kDays = {"Sun", "Mon", "Tue", "Wed",
                                                         "Thu", "Fri", "Sat"};
    static constexpr std::array<const char*, 12> kMonths = {
        "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    tm parts = {};
    gmtime_r(&date, &parts);
    std::array<char, 64> text = {};
    snprintf(text.data(), text.size(), "%s, %02d %s %04d %02d:%02d:%02d GMT",
             kDays[static_cast<size_t>(parts.tm_wday)], parts.tm_mday,
             kMonths[static_cast<size_t>(parts.tm_mon)], parts.tm_year + 1900, parts.tm_hour,
             parts.tm_min, parts.tm_sec);
    return text.data();
}

bool Responder::_Send(std::string_view bytes) {
    while (fIsAlive && !bytes.empty()) {
        const ssize_t count =
            send(fConnection, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count > 0) {
            bytes.remove_prefix(static_cast<size_t>(count));
            continue;
        }
        std::array<pollfd, 2> waits = {{{fConnection, POLLOUT, 0}, {fStop, POLLIN, 0}}};
        fIsAlive = (errno == EAGAIN || errno == EINTR) &&
                   poll(waits.data(), waits.size(), kPatience) > 0 && waits[1].revents == 0;
    }
    return fIsAlive;
}

bool Responder::Begin(const AnswerHead& head) {
    fStatus = head.status;
    fReason = OneLine(head.reason);
    return _Send(HeadText(head));
}

bool Responder::Write(std::string_view bytes) {
    if (!fWantsBody)
        return fIsAlive;
    fSent += static_cast<int64_t>(bytes.size());
    return _Send(bytes);
}

void Responder::Reply(AnswerHead head, std::string_view body) {
    head.length = static_cast<int64_t>(body.size());
    if (Begin(head) && head.status != 304)
        Write(body);
}

void Responder::Refuse(int status, const std::string& reason) {
    AnswerHead head;
    head.status = status;
    head.reason = reason;
    head.type = "text/plain; charset=UTF-8";
    Reply(head, OneLine(reason) + "\n");
}

} // namespace gate
