#include "net/DownloadPlan.h"

#include <gtest/gtest.h>

TEST(DownloadPlan, JudgesByStatusAndWhatWasAsked) {
    const struct {
        DownloadAnswer answer;
        AnswerKind kind;
    } kCases[] = {
        {{false, false, 0, 200, nullptr}, AnswerKind::kBody},
        {{false, false, 0, 206, nullptr}, AnswerKind::kRefusal},
        {{false, false, 0, 304, nullptr}, AnswerKind::kRefusal},
        {{false, false, 0, 404, nullptr}, AnswerKind::kRefusal},
        {{true, false, 10, 200, nullptr}, AnswerKind::kBody},
        {{true, false, 10, 206, nullptr}, AnswerKind::kBody},
        {{true, false, 10, 304, nullptr}, AnswerKind::kUnchanged},
        {{true, false, 10, 302, nullptr}, AnswerKind::kRefusal},
        {{true, false, 10, 416, "bytes */10"}, AnswerKind::kRefusal},
        {{true, true, 10, 416, "bytes */10"}, AnswerKind::kFoundWhole},
        {{true, true, 10, 416, "bytes */9"}, AnswerKind::kRefusal},
        {{true, true, 10, 416, nullptr}, AnswerKind::kRefusal},
    };
    for (const auto& item : kCases)
        EXPECT_EQ(JudgeAnswer(item.answer), item.kind) << item.answer.status;
}

TEST(DownloadPlan, ABodyIsWholeWhenNothingOfItOrBehindItIsMissing) {
    const struct {
        DownloadBody body;
        bool isWhole;
    } kCases[] = {
        {{200, "10", nullptr, 10, false, 0}, true},
        {{200, "10", nullptr, 9, false, 0}, false},
        {{200, "10", nullptr, 10, false, -1}, false},
        {{200, nullptr, nullptr, 7, false, 0}, true},
        {{200, nullptr, nullptr, 7, true, 0}, false},
        {{200, nullptr, nullptr, 7, false, -1}, false},
        {{206, "10", "bytes 5-14/15", 10, false, 0}, true},
        {{206, "10", "bytes 5-14/16", 10, false, 0}, false},
        {{206, nullptr, "bytes 5-14/15", 9, false, 0}, false},
        {{206, "10", "bytes 5-14/*", 10, false, 0}, true},
        {{206, "10", "bytes 5-14/99999999999999999999", 10, false, 0}, true},
        {{206, "10", "nonsense", 10, false, 0}, true},
        {{200, "10", "bytes 5-14/16", 10, false, 0}, true},
        {{200, "10", nullptr, 11, false, 0}, false},
        {{200, "10", nullptr, 11, false, 0, true}, true},
        {{200, "10", nullptr, 9, false, 0, true}, false},
        {{200, "nonsense", nullptr, 9, false, 0, true}, true},
        {{200, nullptr, nullptr, 9, false, 0, true, "chunked"}, false},
        {{200, nullptr, nullptr, 9, false, 0, true, "Identity"}, true},
    };
    for (const auto& item : kCases)
        EXPECT_EQ(IsWholeBody(item.body), item.isWhole) << &item - kCases;
}
