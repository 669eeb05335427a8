#include "net/OverlongLine.h"

#include "net/lines.h"

#include <gtest/gtest.h>

namespace {

// The fields as they are shown, or "" for a line that is none.
std::string Fields(const std::string& line) {
    _ArticleOut article = {};
    std::string fields;
    if (parseArticle(line.c_str(), &article, false) == 0) {
        for (const char* field : {article.name, article.mail, article.date, article.message})
            fields += std::string(field != nullptr ? field : "") + "|";
        fields += article.title != nullptr ? article.title : "";
    }
    ReleaseArticle(&article);
    return fields;
}

} // namespace

TEST(OverlongLine, ABeginningIsShownAsAPostWithAMark) {
    const struct {
        const char* beginning;
        const char* fields;
        bool isFirst = false;
    } kCases[] = {
        {"n<>m<>d<> textabc", "n|m|d|text…（以下略）|"},
        {"n<>m<>d<> 文\xE5\xAD\x97\xE5", "n|m|d|文…（以下略）|"},
        {"n<>m<>d<> text<br>abc", "n|m|d|text<br>…（以下略）|"},
        {"n<>m<>d<> text<brabc", "n|m|d|text…（以下略）|"},
        {"n<>m<>d<> text&#123abc", "n|m|d|text…（以下略）|"},
        {"n<>m<>d<> text &amp; more abc", "n|m|d|text &amp; more …（以下略）|"},
        {"n<>m<>longabc", "n|m|long…（以下略）||"},
        {"n,m,d,textabc", "n|m|d|text…（以下略）|"},
        // What stands behind a message is a title in the first line alone.
        {"n<>m<>d<> text<>titleabc", "n|m|d|text|title…（以下略）", true},
        {"n<>m<>d<> text<>moreabc", "n|m|d|text…（以下略）|"},
        {"neither, nor", ""},
    };
    for (const auto& item : kCases) {
        const std::string line = EndDatLine(item.beginning, item.isFirst);
        EXPECT_EQ(Fields(line), item.fields) << item.beginning;
        EXPECT_EQ(line.find('\n'), line.size() - 1);
    }
}
