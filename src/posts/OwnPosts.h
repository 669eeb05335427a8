#pragma once

#include "posts/PostIndex.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Which of the posts that have just come is the one that was sent from here: servers tell its
// number to nobody, so its text does. They change blanks and line ends: only what stands between
// counts. 0 when none has the text, or two have it.
int32_t FindOwnPost(std::string_view sent, const std::vector<PostText>& posts);

// A text that was sent and has not been seen among the posts.
struct SentPost {
    int64_t time = 0;  // seconds since 1970
    int32_t known = 0; // how many posts the thread had: it is behind them
    std::string text;  // without its blanks and line ends
};

// What is remembered of a thread.
struct OwnPosts {
    std::vector<int32_t> numbers; // ascending
    std::vector<SentPost> waiting;

    bool IsEmpty() const { return numbers.empty() && waiting.empty(); }
    void Add(std::string_view sent, int32_t known, int64_t now);
    // Looks for what waits among the thread's posts, and gives up what has waited for an hour.
    // Whether anything is different then.
    bool Settle(const std::vector<PostText>& posts, int64_t now);
};

// What waits as text, a line each, and back; lines that are none are passed over.
std::string SentAsText(const std::vector<SentPost>& sent);
std::vector<SentPost> SentFromText(std::string_view text);

// A list of post numbers as text, "12,45", and back. Numbers below 1 and what is no number are
// passed over; the list comes back in ascending order, each number once.
std::string NumbersAsText(const std::vector<int32_t>& numbers);
std::vector<int32_t> NumbersFromText(std::string_view text);
