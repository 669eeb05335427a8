#include "convert/Words.h"
#include "post/Cookies.h"

#include <array>
#include <charconv>
#include <chrono>

namespace gate {

namespace {

struct Parts {
    std::optional<int> day, month, year, seconds; // seconds of the day
};

// The digits at the word's start, if there are `least` to `most` of them and no more.
std::optional<int> LeadingNumber(std::string_view word, size_t least, size_t most) {
    const size_t length = std::min(word.find_first_not_of("0123456789"), word.size());
    int number = 0;
    if (length < least || length > most)
        return std::nullopt;
    std::from_chars(word.data(), word.data() + length, number);
    return number;
}

std::optional<int> TimeOf(std::string_view word) {
    int seconds = 0;
    for (int i = 0; i < 3; i++) {
        const std::optional<int> part = LeadingNumber(word, 1, 2);
        if (!part || *part > (i == 0 ? 23 : 59))
            return std::nullopt;
        seconds = seconds * 60 + *part;
        const size_t colon = word.find(':');
        if (colon == word.npos && i < 2)
            return std::nullopt;
        word.remove_prefix(colon == word.npos ? word.size() : colon + 1);
    }
    return seconds;
}

std::optional<int> MonthOf(std::string_view word) {
    constexpr std::string_view kMonths = "janfebmaraprmayjunjulaugsepoctnovdec";
    const std::string name = Lowered(word.substr(0, 3));
    const size_t at = name.size() == 3 ? kMonths.find(name) : kMonths.npos;
    return at != kMonths.npos && at % 3 == 0 ? std::optional(static_cast<int>(at / 3 + 1))
                                             : std::nullopt;
}

std::optional<int> YearOf(std::string_view word) {
    const std::optional<int> year = LeadingNumber(word, 2, 4);
    if (year && *year < 70)
        return *year + 2000;
    return year && *year < 100 ? *year + 1900 : year;
}

// Each word is the first part that it can be and that is still missing.
void TakeWord(std::string_view word, Parts* parts) {
    if (!parts->seconds && (parts->seconds = TimeOf(word)))
        return;
    if (!parts->day && (parts->day = LeadingNumber(word, 1, 2)))
        return;
    if (!parts->month && (parts->month = MonthOf(word)))
        return;
    if (!parts->year)
        parts->year = YearOf(word);
}

} // namespace

std::optional<Seconds> ParseCookieDate(std::string_view text) {
    constexpr std::string_view kWord =
        "0123456789:abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    Parts parts;
    for (size_t at = text.find_first_of(kWord); at != text.npos; at = text.find_first_of(kWord)) {
        text.remove_prefix(at);
        const std::string_view word = text.substr(0, text.find_first_not_of(kWord));
        TakeWord(word, &parts);
        text.remove_prefix(word.size());
    }
    if (!parts.day || !parts.month || !parts.year || !parts.seconds || *parts.year < 1601)
        return std::nullopt;
    const std::chrono::year_month_day day{std::chrono::year(*parts.year),
                                          std::chrono::month(static_cast<unsigned>(*parts.month)),
                                          std::chrono::day(static_cast<unsigned>(*parts.day))};
    if (!day.ok())
        return std::nullopt;
    return std::chrono::sys_days(day).time_since_epoch() / std::chrono::seconds(1) + *parts.seconds;
}

} // namespace gate
