#pragma once

#include "today/World.h"

// What each family of boards says to a GET, and all to a post.
namespace today {

constexpr const char* kMenuHost = "menu.today.example";
constexpr const char* kArchiveHost = "kako.today.example";

Answer menuAnswer(const World& world); // JSON
Answer datFamilyAnswer(World& world, const Question& question);
Answer roomAnswer(World& world, const Question& question);
Answer townAnswer(World& world, const Question& question);
Answer takePost(World& world, const Question& question, time_t now);

// A whole page of cp932 or UTF-8 text as it is.
Answer page(int status, std::string body);
std::string errorPage(const std::string& text);  // UTF-8
std::string threadPage(const Thread& thread);    // every post, as today's servers write it
std::string oldThreadPage(const Thread& thread); // with dt and dd
std::string convert(const std::string& text, const char* from, const char* to);

} // namespace today
