#include "net/SearchAddress.h"

std::string MakeSearchAddress(const std::string& page, const char* query, bool japaneseOnly) {
    std::string address = page;
    const size_t place = address.find("%s");
    if (place == address.npos)
        address += query;
    else
        address.replace(place, 2, query);
    // As the form of the service's own page would send it; the button is named "search" in cp932.
    return address + "&hl=ja&lr=" + (japaneseOnly ? "lang_ja" : "on") + "&btnG=Google+%8C%9F%8D%F5";
}
