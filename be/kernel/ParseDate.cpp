#include <parsedate.h>

#include <strings.h>

#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <SupportDefs.h>

namespace {

constexpr std::array<const char*, 12> kMonths = {"jan", "feb", "mar", "apr", "may", "jun",
                                                 "jul", "aug", "sep", "oct", "nov", "dec"};
constexpr std::array<const char*, 7> kDays = {"sunday",   "monday", "tuesday", "wednesday",
                                              "thursday", "friday", "saturday"};

struct Zone {
    const char* name;
    int minutes;
};
constexpr Zone kZones[] = {{"gmt", 0},    {"utc", 0},    {"ut", 0},     {"z", 0},
                           {"jst", 540},  {"est", -300}, {"edt", -240}, {"cst", -360},
                           {"cdt", -300}, {"mst", -420}, {"mdt", -360}, {"pst", -480},
                           {"pdt", -420}};

struct Date {
    int year = 0;
    int month = 0; // 1 to 12
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    std::optional<int> zone; // minutes east of Greenwich; none is local time
};

using Words = std::vector<std::string_view>;

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool isLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

// One to four digits; -1 for anything else.
int number(std::string_view word) {
    if (word.empty() || word.size() > 4)
        return -1;
    int value = 0;
    for (char byte : word) {
        if (!isDigit(byte))
            return -1;
        value = value * 10 + (byte - '0');
    }
    return value;
}

// Whether `word` is `name`, or its first three letters or more.
bool isNameOrStart(std::string_view word, std::string_view name) {
    return word.size() >= min_c(size_t(3), name.size()) && word.size() <= name.size() &&
           strncasecmp(word.data(), name.data(), word.size()) == 0;
}

bool isWeekday(std::string_view word) {
    for (const char* day : kDays) {
        if (isNameOrStart(word, day))
            return true;
    }
    return false;
}

int monthNumber(std::string_view word) {
    for (size_t i = 0; i < kMonths.size(); i++) {
        if (word.size() == 3 && isNameOrStart(word, kMonths[i]))
            return static_cast<int>(i) + 1;
    }
    return -1;
}

int fullYear(std::string_view word) {
    int year = number(word);
    if (word.size() == 2)
        return year < 69 ? year + 2000 : year + 1900;
    return word.size() == 4 ? year : -1;
}

// Words are separated by white space and commas; a date such as 06-Nov-94 is three.
Words split(std::string_view text) {
    Words words;
    size_t begin = 0;
    auto isSeparator = [&](size_t i) {
        if (strchr(" \t\r\n,", text[i]))
            return true;
        bool isBetween = i > 0 && i + 1 < text.size();
        return text[i] == '-' && isBetween &&
               ((isDigit(text[i - 1]) && isLetter(text[i + 1])) ||
                (isLetter(text[i - 1]) && isDigit(text[i + 1]) && words.size() <= 2));
    };
    for (size_t i = 0; i <= text.size(); i++) {
        if (i < text.size() && !isSeparator(i))
            continue;
        if (i > begin)
            words.push_back(text.substr(begin, i - begin));
        begin = i + 1;
    }
    return words;
}

bool parseTime(std::string_view word, Date& date) {
    size_t first = word.find(':');
    if (first == std::string_view::npos)
        return false;
    size_t second = word.find(':', first + 1);
    date.hour = number(word.substr(0, first));
    date.minute = number(word.substr(first + 1, second - first - 1));
    date.second = second == std::string_view::npos ? 0 : number(word.substr(second + 1));
    return true;
}

// "+0900" or a name. The names of the local zone, as strftime writes them, mean local time.
bool parseZone(std::string_view word, Date& date) {
    if ((word[0] == '+' || word[0] == '-') && word.size() == 5 && number(word.substr(1)) >= 0) {
        int value = number(word.substr(1));
        int minutes = value / 100 * 60 + value % 100;
        date.zone = word[0] == '-' ? -minutes : minutes;
        return true;
    }
    for (const Zone& zone : kZones) {
        if (word.size() == strlen(zone.name) && isNameOrStart(word, zone.name)) {
            date.zone = zone.minutes;
            return true;
        }
    }
    tzset();
    return word == tzname[0] || word == tzname[1];
}

bool isInRange(const Date& date) {
    static constexpr int kDaysOfMonth[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (date.year < 1900 || date.month < 1)
        return false;
    bool isLeapYear = date.year % 4 == 0 && (date.year % 100 != 0 || date.year % 400 == 0);
    int days = date.month == 2 && !isLeapYear ? 28 : kDaysOfMonth[date.month - 1];
    return date.day >= 1 && date.day <= days && date.hour >= 0 && date.hour < 24 &&
           date.minute >= 0 && date.minute < 60 && date.second >= 0 && date.second <= 60;
}

// Days from 1 January 1970, by counting years from March on, so that the leap day comes last.
int64 daysSinceEpoch(const Date& date) {
    int64 year = date.month > 2 ? date.year : date.year - 1;
    int64 month = (date.month + 9) % 12;
    int64 dayOfYear = (153 * month + 2) / 5 + date.day - 1;
    return year * 365 + year / 4 - year / 100 + year / 400 + dayOfYear - 719468;
}

time_t localTime(const Date& date) {
    tm parts = {};
    parts.tm_year = date.year - 1900;
    parts.tm_mon = date.month - 1;
    parts.tm_mday = date.day;
    parts.tm_hour = date.hour;
    parts.tm_min = date.minute;
    parts.tm_sec = date.second;
    parts.tm_isdst = -1;
    return mktime(&parts);
}

// "06 Nov 1994 08:49:37 GMT"; the zone may be missing.
bool parseDayFirst(const Words& words, Date& date) {
    if (words.size() < 4 || words.size() > 5 || !parseTime(words[3], date))
        return false;
    date.day = words[0].size() <= 2 ? number(words[0]) : -1;
    date.month = monthNumber(words[1]);
    date.year = fullYear(words[2]);
    return words.size() == 4 || parseZone(words[4], date);
}

// "Nov  6 08:49:37 1994"; a zone may stand before the year.
bool parseMonthFirst(const Words& words, Date& date) {
    if (words.size() < 4 || words.size() > 5 || !parseTime(words[2], date))
        return false;
    date.month = monthNumber(words[0]);
    date.day = words[1].size() <= 2 ? number(words[1]) : -1;
    date.year = fullYear(words.back());
    return words.size() == 4 || parseZone(words[3], date);
}

} // namespace

time_t parsedate(const char* dateString, time_t /*now*/) {
    if (!dateString)
        return -1;
    Words words = split(std::string_view(dateString, strnlen(dateString, 128)));
    if (!words.empty() && isWeekday(words[0]))
        words.erase(words.begin());
    Date date;
    if (!parseDayFirst(words, date) && !parseMonthFirst(words, date))
        return -1;
    if (!isInRange(date))
        return -1;
    if (!date.zone)
        return localTime(date);
    int64 minutes = (daysSinceEpoch(date) * 24 + date.hour) * 60 + date.minute - *date.zone;
    return static_cast<time_t>(minutes * 60 + date.second);
}
