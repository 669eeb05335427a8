#include "net/NPUrl.h"

#include <string_view>

int32 NPUrl::SetTo(const char* text) {
    fStatus = -1;
    fHost.clear();
    fBoard.clear();
    const std::string_view url = text != nullptr ? text : "";
    const size_t slashes = url.find("//");
    if (slashes == url.npos || slashes == 0)
        return -1;
    const size_t hostEnd = url.find('/', slashes + 2);
    const size_t last = url.rfind('/');
    if (hostEnd == url.npos || last <= hostEnd)
        return -1;
    fHost = url.substr(slashes + 2, hostEnd - slashes - 2);
    fBoard = url.substr(hostEnd + 1, last - hostEnd - 1);
    fStatus = 0;
    return 0;
}
