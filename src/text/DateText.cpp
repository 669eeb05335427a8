#include "text/DateText.h"

#include <array>

std::string DateText(time_t when) {
    if (when <= 0)
        return {};
    tm parts = {};
    localtime_r(&when, &parts);
    std::array<char, 32> text = {};
    strftime(text.data(), text.size(), "%Y/%m/%d %H:%M", &parts);
    return text.data();
}
