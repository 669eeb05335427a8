// An answer of a server: its head, then the lines of its body. The first byte says in what portions
// the rest arrives.
#include "Fuzz.h"

#include "net/DownloadPlan.h"
#include "net/LineReader.h"
#include "net/ResponseHead.h"

#include <algorithm>
#include <cstring>

namespace {

void Plan(const ResponseHead& head) {
    DownloadAnswer answer;
    answer.namesSize = true;
    answer.cachedSize = 1000;
    answer.status = head.Status()->code;
    answer.contentRange = head.Find("Content-Range");
    JudgeAnswer(answer);
    DownloadBody body;
    body.status = answer.status;
    body.contentLength = head.Find("Content-Length");
    body.contentRange = answer.contentRange;
    body.received = 1000;
    IsWholeBody(body);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size == 0)
        return 0;
    const size_t portion = static_cast<size_t>(data[0]) + 1;
    const unsigned char* rest = data + 1;
    const unsigned char* end = data + size;
    const LineReader::Source source = [&](void* to, size_t room) {
        const size_t count = std::min({room, portion, static_cast<size_t>(end - rest)});
        memcpy(to, rest, count);
        rest += count;
        return static_cast<int32>(count);
    };
    LineReader reader;
    reader.Reset();
    ResponseHead head;
    const bool isGood =
        head.Read([&](char* to, size_t room) { return reader.ReadLine(to, room, source); });
    Claim(isGood == (head.Status() != nullptr), "a good head has a status");
    if (isGood)
        Plan(head);
    char line[512];
    int32 length = 0;
    while ((length = reader.ReadPart(line, sizeof(line), source)) > 0)
        Claim(line[length - 1] == '\n' || length == sizeof(line), "a part is a line or full");
    return 0;
}
