#include "posts/ThreadTitles.h"

#include "text/Folding.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace {

constexpr double kSecondsOfDay = 24 * 60 * 60;
constexpr time_t kLeastAge = 60;          // seconds
constexpr time_t kFirstBirth = 800000000; // before it there was no board
constexpr double kLikeEnough = 0.3;
constexpr double kCountsOn = 0.5;
constexpr double kIsNewest = 0.1;

// A title without its numbers, and these.
struct TitleParts {
    std::string text;
    std::vector<int64_t> numbers;
};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

TitleParts PartsOf(std::string_view title) {
    // Lists leave a space behind a title.
    while (title.ends_with(' '))
        title.remove_suffix(1);
    const std::string folded = Folded(title);
    TitleParts parts;
    for (size_t at = 0; at < folded.size();) {
        if (!IsDigit(folded[at])) {
            parts.text += folded[at++];
            continue;
        }
        int64_t number = -1; // of more digits than a count has
        const char* const end = folded.data() + folded.size();
        const auto [stop, error] = std::from_chars(folded.data() + at, end, number);
        parts.numbers.push_back(error == std::errc() ? number : -1);
        at = static_cast<size_t>(stop - folded.data());
        parts.text += '#';
    }
    return parts;
}

// How often each pair of neighbouring characters stands in a text.
std::map<std::string_view, int> PairsOf(std::string_view text) {
    std::vector<size_t> starts;
    for (size_t i = 0; i < text.size(); i++) {
        const bool isContinuation = (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
        if (!isContinuation && text[i] != ' ')
            starts.push_back(i);
    }
    starts.push_back(text.size());
    std::map<std::string_view, int> pairs;
    for (size_t i = 0; i + 2 < starts.size(); i++)
        pairs[text.substr(starts[i], starts[i + 2] - starts[i])]++;
    return pairs;
}

// Dice's coefficient of their pairs.
double PartsLikeness(const TitleParts& one, const TitleParts& other) {
    if (one.text == other.text)
        return 1;
    const auto pairs = PairsOf(one.text);
    const auto others = PairsOf(other.text);
    int common = 0;
    int all = 0;
    for (const auto& [pair, count] : pairs) {
        const auto same = others.find(pair);
        common += same == others.end() ? 0 : std::min(count, same->second);
        all += count;
    }
    for (const auto& [pair, count] : others)
        all += count;
    return all == 0 ? 0 : 2.0 * common / all;
}

// Whether one of the numbers is one more, and those before it are the same.
bool CountsOn(const TitleParts& from, const TitleParts& to) {
    const auto [first, second] = std::mismatch(from.numbers.begin(), from.numbers.end(),
                                               to.numbers.begin(), to.numbers.end());
    return first != from.numbers.end() && second != to.numbers.end() && *first >= 0 &&
           *second == *first + 1;
}

} // namespace

time_t BirthOf(std::string_view dat) {
    int64_t seconds = 0;
    const auto [stop, error] = std::from_chars(dat.data(), dat.data() + dat.size(), seconds);
    const bool isKey = error == std::errc() && stop != dat.data() + dat.size() && *stop == '.';
    return isKey && seconds >= kFirstBirth ? static_cast<time_t>(seconds) : -1;
}

double SpeedOf(int32_t posts, std::string_view dat, time_t now) {
    const time_t birth = BirthOf(dat);
    if (birth < 0 || birth > now || posts <= 0)
        return 0;
    return posts * kSecondsOfDay / static_cast<double>(std::max(now - birth, kLeastAge));
}

double LikenessOf(std::string_view one, std::string_view other) {
    return PartsLikeness(PartsOf(one), PartsOf(other));
}

std::vector<size_t> RankNextThreads(const ListedThread& thread,
                                    const std::vector<ListedThread>& threads, size_t most) {
    struct Rank {
        double worth;
        size_t index;
    };
    const TitleParts parts = PartsOf(thread.title);
    const time_t birth = BirthOf(thread.dat);
    std::vector<Rank> ranks;
    time_t newest = birth;
    for (size_t i = 0; i < threads.size(); i++) {
        const TitleParts other = PartsOf(threads[i].title);
        const double likeness = PartsLikeness(parts, other);
        const time_t born = BirthOf(threads[i].dat);
        const bool isEarlier = born >= 0 && born <= birth;
        if (isEarlier || threads[i].dat == thread.dat || likeness < kLikeEnough)
            continue;
        newest = std::max(newest, born);
        ranks.push_back({likeness + (CountsOn(parts, other) ? kCountsOn : 0), i});
    }
    for (Rank& rank : ranks) {
        if (BirthOf(threads[rank.index].dat) == newest && newest > birth)
            rank.worth += kIsNewest;
    }
    std::ranges::stable_sort(ranks, std::greater(), &Rank::worth);
    std::vector<size_t> indexes;
    for (size_t i = 0; i < std::min(most, ranks.size()); i++)
        indexes.push_back(ranks[i].index);
    return indexes;
}
