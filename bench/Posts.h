#pragma once

#include <string>
#include <string_view>
#include <vector>

// The posts that everything is measured with: like a busy board's, about 190 characters and five
// lines each, made here and the same in every run. UTF-8.

struct SamplePost {
    std::string name;
    std::string mail;
    std::string date;
    std::string body; // lines separated by line feeds, references as ">>12"
};

SamplePost MakePost(int number);
std::vector<SamplePost> MakePosts(int count);

// A post's body as a dat holds it, but for its line feeds: a reference is a link.
std::string BodyWithLinks(const SamplePost& post);

// A post as it is shown, cut where the colour changes (0xRRGGBB).
struct ColoredText {
    std::string text;
    unsigned color;
};
std::vector<ColoredText> ColoredPost(const SamplePost& post, int number);

// A dat file of about so many bytes, in cp932.
std::string MakeDat(size_t bytes);
