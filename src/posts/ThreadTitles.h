#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

// What a board's list tells of a thread. Titles are UTF-8.
struct ListedThread {
    std::string title;
    std::string dat;   // "1012345678.dat"
    int32_t posts = 0; // on the server
};

// When a thread was begun, which its dat name tells in seconds since 1970; −1 when it does not.
time_t BirthOf(std::string_view dat);

// Posts a day since the thread was begun; 0 when nobody knows. A thread of less than a minute
// counts as one of a minute.
double SpeedOf(int32_t posts, std::string_view dat, time_t now);

// How much two titles are alike beside their numbers, 0 to 1.
double LikenessOf(std::string_view one, std::string_view other);

// Which threads of a board may go on with this one, the likeliest first: titles that are alike,
// whose number counts on; one that was begun earlier never does. Indexes into `threads`, at most
// `most`.
std::vector<size_t> RankNextThreads(const ListedThread& thread,
                                    const std::vector<ListedThread>& threads, size_t most);
