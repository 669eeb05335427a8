#pragma once

#include "Fuzz.h"

#include "convert/Encodings.h"
#include "convert/PostLine.h"
#include "net/lines.h"

// What holds for every line that the gate makes: the program reads it as the post that it is.
inline void ClaimLines(const std::vector<gate::PostLine>& posts) {
    for (const gate::PostLine& post : posts) {
        const std::string line = gate::MakeDatLine(post);
        const std::string utf8 = gate::ToUtf8(line, gate::Charset::kCp932);
        Claim(post.number > 0 && post.number <= gate::kMostPosts, "a post has a number");
        Claim(line.find('\n') == line.size() - 1, "a line is one line");
        Claim(gate::ToCp932(utf8, gate::Charset::kUtf8) == line, "a line is good cp932");
        _ArticleOut article = {};
        Claim(parseArticle(line.c_str(), &article, true) == 0, "the program reads a line");
        ReleaseArticle(&article);
    }
}
