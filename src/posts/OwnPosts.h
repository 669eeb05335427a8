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

// A list of post numbers as text, "12,45", and back. Numbers below 1 and what is no number are
// passed over; the list comes back in ascending order, each number once.
std::string NumbersAsText(const std::vector<int32_t>& numbers);
std::vector<int32_t> NumbersFromText(std::string_view text);
