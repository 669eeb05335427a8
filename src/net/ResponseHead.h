#pragma once

#include <SupportDefs.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// The head of an HTTP response: its status line and its headers, apart from any connection. For one
// thread.
class ResponseHead {
public:
    struct StatusRecord {
        int32 code;
        std::string reason; // as received, with the carriage return that ends the line
    };
    // Delivers one line with its line feed into `buffer`: its length, or 0 or less when there is
    // none that fits.
    using LineSource = std::function<int32(char* buffer, size_t size)>;

    // Forgets an earlier head and reads up to the empty line. False when that does not come, or a
    // line is no good; nothing is kept then.
    bool Read(const LineSource& source);
    void Clear();

    // Null until a head was read.
    const StatusRecord* Status() const { return fStatus.get(); }
    // The value of the last header of that name, ignoring case; null when there is none.
    const char* Find(const char* name) const;
    // Writes the headers to standard error.
    void Print() const;

private:
    struct Header {
        std::string name;
        std::string value;
    };

    bool _Read(const LineSource& source);
    bool _ParseStatus(const std::string& line);
    void _ParseHeader(const char* line);

    std::unique_ptr<StatusRecord> fStatus;
    std::vector<Header> fHeaders;
};
