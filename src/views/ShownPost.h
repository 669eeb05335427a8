#pragma once

#include "posts/PostIndex.h"

#include <string_view>

// How a post stands in the article: its number, then its parts behind these labels, its date ending
// the line, then its body.
constexpr const char* kNameLabel = "名前：";
constexpr const char* kMailLabel = "E-mail：";
constexpr const char* kDateLabel = "投稿日：";

// The parts of one such post; they are borrowed from it. What is not there stays empty.
PostText ParseShownPost(std::string_view shown);
