#pragma once

#include <string>
#include <string_view>

// Where the program finds what is not a board: the portal that publishes the board menu, and the
// web search. UTF-8.
struct Services {
    std::string portalHost = "portal.itamori.example";
    std::string searchPage = "http://search.itamori.example/search?q=%s";
};

// Reads "services.txt": lines "name = value", "#" begins a remark. What is missing or makes no
// sense keeps its default, with a line on standard error.
Services ParseServices(std::string_view text);

// The same from a file; without one, the defaults and a line on standard error.
Services ReadServices(const char* path);
