#include "noise/NoiseFilter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr const char* kBoard = "news.example/news";
constexpr const char* kDate = "2026/11/22(日) 10:00:00.00 ID:abc";

NoiseRule Rule(NoiseKind kind, const std::string& text, bool isPattern = false) {
    NoiseRule rule;
    rule.kind = kind;
    rule.text = text;
    rule.isPattern = isPattern;
    return rule;
}

TEST(Noise, RulesHideWhatTheyName) {
    NoiseRule today = Rule(NoiseKind::kId, "abc");
    today.day = "2026/11/22";
    NoiseRule yesterday = today;
    yesterday.day = "2026/11/21";
    NoiseRule elsewhere = Rule(NoiseKind::kWord, "宣伝");
    elsewhere.board = "other.example/news";
    NoiseRule here = elsewhere;
    here.board = kBoard;
    NoiseRule off = Rule(NoiseKind::kWord, "宣伝");
    off.failure = "時間がかかりすぎました";
    struct Case {
        const char* what;
        NoiseRule rule;
        bool hides;
    };
    const Case kCases[] = {
        {"an ID of today", today, true},
        {"an ID of another day", yesterday, false},
        {"an ID of every day", Rule(NoiseKind::kId, "abc"), true},
        {"part of an ID", Rule(NoiseKind::kId, "ab"), false},
        {"a pattern for IDs", Rule(NoiseKind::kId, "^a.c$", true), true},
        {"part of a name", Rule(NoiseKind::kName, "荒らし"), true},
        {"a name in the body", Rule(NoiseKind::kName, "宣伝"), false},
        {"a word", Rule(NoiseKind::kWord, "宣伝"), true},
        {"a word of the name", Rule(NoiseKind::kWord, "荒らし"), false},
        {"a word of another board", elsewhere, false},
        {"a word of this board", here, true},
        {"switched off", off, false},
        {"half a character", Rule(NoiseKind::kWord, "\xE5\xAE"), true},
        {"a pattern", Rule(NoiseKind::kWord, "宣.です", true), true},
        {"a pattern that fits nothing", Rule(NoiseKind::kWord, "^です", true), false},
        {"no pattern at all", Rule(NoiseKind::kWord, "(", true), false},
    };
    for (const Case& row : kCases) {
        const NoiseFilter filter({{Rule(NoiseKind::kWord, "無い"), row.rule}}, kBoard);
        EXPECT_EQ(filter.Hides({1, "荒らしさん", kDate, "宣伝です\n買ってね"}), row.hides)
            << row.what;
        filter.Hides({1, "荒らしさん", kDate, "宣伝です"}, NoiseFilter::Count::kNo);
        const auto counts = filter.TakeFindings();
        EXPECT_EQ(counts.size(), row.hides ? 1u : 0u) << row.what;
        EXPECT_TRUE(counts.empty() || (counts[0].rule->IsSame(row.rule) && counts[0].hits == 1))
            << row.what;
    }
    EXPECT_TRUE(NoiseFilter({{off}}, kBoard).IsEmpty());
    EXPECT_FALSE(NoiseFilter({{Rule(NoiseKind::kId, "")}}, kBoard).Hides({1, "", "ID:???", ""}));
}

TEST(Noise, OfManyWordsEachIsFound) {
    Words words;
    for (const char* word : {"she", "he", "hers", "his", "", "日本", "本日"})
        words.Add(word);
    words.Finish();
    struct Case {
        const char* text;
        int32_t found;
    };
    for (const Case& row : {Case{"ushers", 0}, Case{"ahers", 1}, Case{"this", 3}, Case{"日", -1},
                            Case{"日本日", 5}, Case{"本日", 6}, Case{"", -1}, Case{"sh", -1}})
        EXPECT_EQ(words.FindFirst(row.text), row.found) << row.text;
}

TEST(Noise, APatternThatWouldRunForEverIsGivenUpAndTold) {
    const NoiseFilter filter({{Rule(NoiseKind::kWord, "(a+)+$", true)}}, kBoard);
    const std::string body = std::string(5000, 'a') + "b";
    for (int round = 0; round < 3; round++)
        EXPECT_FALSE(filter.Hides({1, "", "", body}));
    const auto counts = filter.TakeFindings();
    ASSERT_EQ(counts.size(), 1u);
    EXPECT_TRUE(counts[0].tookTooLong);
    EXPECT_TRUE(filter.TakeFindings().empty());
    std::string error;
    EXPECT_EQ(Pattern::Make("a(b", &error), nullptr);
    EXPECT_NE(error.find("4文字目"), std::string::npos) << error;
    EXPECT_EQ(Pattern::Make(std::string(100000, '('), &error), nullptr);
    EXPECT_EQ(Pattern::Make("a", &error)->FindIn("\xFF\xFE"), Pattern::Found::kNo);
}

// Each look ends within its steps, but all of them together would hold up the window.
TEST(Noise, APatternThatIsSlowInEveryPostIsGivenUpToo) {
    const NoiseFilter filter({{Rule(NoiseKind::kWord, "(?:.\\n?)*[QZ]", true)}}, kBoard);
    std::string body;
    for (int i = 0; i < 150; i++)
        body += "a あいう b ";
    for (int i = 0; i < 5000; i++)
        EXPECT_FALSE(filter.Hides({1, "", "", body}));
    const auto findings = filter.TakeFindings();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_TRUE(findings[0].tookTooLong);
}

TEST(NoiseRules, SurviveTheirFile) {
    NoiseRule rule = Rule(NoiseKind::kName, "タブ\tと\\改行\n", true);
    rule.board = kBoard;
    rule.hits = 12;
    rule.lastHit = 1700000000;
    rule.failure = "遅い";
    const std::string file = WriteNoiseRules({{rule, Rule(NoiseKind::kId, "x")}, true});
    NoiseRules read;
    std::string error;
    size_t skipped = 0;
    ASSERT_TRUE(ReadNoiseRules(file, &read, &skipped, &error));
    ASSERT_EQ(read.list.size(), 2u);
    EXPECT_TRUE(read.list[0].IsSame(rule));
    EXPECT_EQ(read.list[0].hits, 12);
    EXPECT_EQ(read.list[0].lastHit, 1700000000);
    EXPECT_EQ(read.list[0].failure, "遅い");
    EXPECT_EQ(skipped, 0u);
    EXPECT_TRUE(read.hidesAnswers);
    const std::string good = "word\tplain\t\t\t0\t0\t\tx\n";
    for (const char* bad :
         {"word\tplain\t\t\t0\t0\t\t\n", "word\tplain\n", "x\tplain\t\t\t0\t0\t\tx",
          "word\tplain\t\t\t-1\t0\t\tx", "word\tplain\t\t\tz\t0\t\tx", "\xFF"}) {
        ASSERT_TRUE(ReadNoiseRules("# Itamori NG 1\n" + good + bad, &read, &skipped, &error));
        EXPECT_EQ(read.list.size(), 1u) << bad;
        EXPECT_EQ(skipped, 1u) << bad;
    }
    for (const char* other : {"", "<?xml version=\"1.0\"?>", "NGWord\tx"})
        EXPECT_FALSE(ReadNoiseRules(other, &read, &skipped, &error)) << other;
}

} // namespace
