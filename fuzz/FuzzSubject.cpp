// A line of a subject.txt, raw.
#include "Fuzz.h"

#include "net/lines.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    _SubjectOut out;
    memset(&out, 'x', sizeof(out)); // a string left unterminated is read past its end
    if (parseSubject(TextOf(data, size).c_str(), &out) != 0)
        return 0;
    Claim(strlen(out.dat) > 0 && strlen(out.dat) < sizeof(out.dat), "a dat name fits");
    Claim(strlen(out.title) < sizeof(out.title), "a title fits");
    Claim(strlen(out.count) < sizeof(out.count), "a count fits");
    return 0;
}
