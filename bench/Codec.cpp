#include "Measure.h"
#include "Parts.h"
#include "Posts.h"

#include "text/cp932.h"

#include <cstdio>
#include <iconv.h>

namespace {

constexpr size_t kDatSize = 300 * 1024;
constexpr int kRounds = 50;

double ConvertOnce(const std::string& dat, std::string* room) {
    int32 consumed = static_cast<int32>(dat.size());
    int32 written = 0;
    const double start = ThreadTime();
    cp932_conv_to_utf8(dat.data(), &consumed, room->data(), &written);
    return ThreadTime() - start;
}

double IconvOnce(iconv_t converter, const std::string& dat, std::string* room) {
    char* from = const_cast<char*>(dat.data());
    char* to = room->data();
    size_t left = dat.size();
    size_t free = room->size();
    const double start = ThreadTime();
    iconv(converter, &from, &left, &to, &free);
    const double time = ThreadTime() - start;
    return left == 0 ? time : 0; // a yardstick that stopped early is none
}

} // namespace

int RunCodec(const Arguments&) {
    const std::string dat = MakeDat(kDatSize);
    std::string room(dat.size() * 3, '\0');
    const iconv_t converter = iconv_open("UTF-8", "CP932");
    PrintResult("ours", BestOf(kRounds, "codec", [&] { return ConvertOnce(dat, &room); }));
    PrintResult("yardstick",
                BestOf(kRounds, "iconv", [&] { return IconvOnce(converter, dat, &room); }));
    iconv_close(converter);
    return 0;
}
