// What servers ask to be kept: a "Set-Cookie" a line.
#include "Fuzz.h"

#include "convert/Words.h"
#include "post/Cookies.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    constexpr gate::Seconds kNow = 1'700'000'000;
    const gate::CookiePlace place{"www.example.io", "/test/bbs.cgi", true};
    gate::CookieJar jar({{"example.io"}, {"BAN", "PON"}, {"NAME"}});
    const std::string text = TextOf(data, size);
    std::string_view rest = text;
    for (std::string_view line; gate::TakeLine(&rest, &line);)
        jar.Take(line, place, kNow);
    for (const gate::Cookie& cookie : jar.All())
        Claim(("." + cookie.domain).ends_with(".example.io"), "a cookie is the family's");
    const std::string header = jar.HeaderFor(place, kNow);
    Claim(header.find_first_of("\r\n") == header.npos, "a header is one line");
    Claim(jar.HeaderFor({"other.net", "/", true}, kNow).empty(), "others get nothing");
    return 0;
}
