#include "net/ResponseHead.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <strings.h>

namespace {

constexpr size_t kLongestLine = 4096;
constexpr size_t kMostHeaders = 1000; // a head without end costs no memory

bool ReadText(const ResponseHead::LineSource& source, std::string* line) {
    line->resize(kLongestLine);
    const int32 length = source(line->data(), line->size());
    line->resize(length > 0 ? length : 0);
    line->resize(strlen(line->c_str())); // a NUL ends the text, as it would in a C string
    return length > 0;
}

} // namespace

bool ResponseHead::Read(const LineSource& source) {
    Clear();
    const bool isGood = _Read(source);
    if (!isGood)
        Clear();
    return isGood;
}

void ResponseHead::Clear() {
    fStatus.reset();
    fHeaders.clear();
}

bool ResponseHead::_Read(const LineSource& source) {
    std::string line;
    if (!ReadText(source, &line) || !_ParseStatus(line))
        return false;
    // Only "\r\n" ends the headers: of a server that ends its lines otherwise, nothing is believed.
    while (fHeaders.size() <= kMostHeaders && ReadText(source, &line)) {
        if (line == "\r\n")
            return true;
        _ParseHeader(line.c_str());
    }
    return false;
}

bool ResponseHead::_ParseStatus(const std::string& line) {
    const size_t first = line.find(' ');
    const size_t second = first == line.npos ? line.npos : line.find(' ', first + 1);
    if (first == line.npos)
        return false;
    const std::string code =
        line.substr(first + 1, second == line.npos ? second : second - first - 1);
    if (code.empty() || !isdigit(static_cast<unsigned char>(code[0])))
        return false;
    std::string reason = second == line.npos ? "" : line.substr(second + 1);
    reason.resize(strcspn(reason.c_str(), "\n"));
    const int32 number = static_cast<int32>(strtol(code.c_str(), nullptr, 10));
    fprintf(stderr, "status: %ld:%s\n", static_cast<long>(number), reason.c_str());
    fStatus = std::make_unique<StatusRecord>(StatusRecord{number, std::move(reason)});
    return true;
}

void ResponseHead::_ParseHeader(const char* line) {
    const size_t nameLength = strcspn(line, ":");
    Header header{std::string(line, nameLength), ""};
    if (line[nameLength] == ':') {
        const char* value = line + nameLength + 1;
        value += *value == ' ' ? 1 : 0;
        header.value.assign(value, strcspn(value, "\r"));
    }
    fHeaders.push_back(std::move(header));
}

const char* ResponseHead::Find(const char* name) const {
    for (size_t i = fHeaders.size(); i-- > 0;) {
        if (strcasecmp(fHeaders[i].name.c_str(), name) == 0)
            return fHeaders[i].value.c_str();
    }
    return nullptr;
}

void ResponseHead::Print() const {
    for (const Header& header : fHeaders)
        fprintf(stderr, "%s: %s\n", header.name.c_str(), header.value.c_str());
}
