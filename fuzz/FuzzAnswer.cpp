// A server's answer to a post, raw.
#include "Fuzz.h"

#include "post/PostAnswer.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string page = TextOf(data, size);
    PostAnswer answer;
    for (size_t start = 0; start < page.size();) {
        const size_t end = std::min(page.find('\n', start), page.size() - 1) + 1;
        answer.AddLine(page.data() + start, static_cast<int32>(end - start));
        start = end;
    }
    Claim(!answer.IsSuccess() || page.size() >= 18, "success is said by the page");
    Claim(answer.ErrorText().size() < 4096, "the text fits an alert");
    return 0;
}
