#include "net/DownloadPlan.h"

#include <gtest/gtest.h>

TEST(DownloadPlan, DecidesByStatusAndCache) {
    const struct {
        DownloadAnswer answer;
        ReadMode mode;
    } kCases[] = {
        {{false, false, 0, 200, nullptr}, ReadMode::kNetwork},
        {{false, false, 0, 206, nullptr}, ReadMode::kError},
        {{false, false, 0, 304, nullptr}, ReadMode::kError},
        {{false, false, 0, 404, nullptr}, ReadMode::kError},
        {{true, false, 10, 200, nullptr}, ReadMode::kCacheThenNetwork},
        {{true, false, 10, 206, nullptr}, ReadMode::kCacheThenNetwork},
        {{true, false, 10, 304, nullptr}, ReadMode::kCacheOnly},
        {{true, false, 10, 302, nullptr}, ReadMode::kError},
        {{true, false, 10, 416, "bytes */10"}, ReadMode::kError},
        {{true, true, 10, 416, "bytes */10"}, ReadMode::kCacheOnly},
        {{true, true, 10, 416, "bytes */9"}, ReadMode::kError},
        {{true, true, 10, 416, nullptr}, ReadMode::kError},
    };
    for (const auto& item : kCases)
        EXPECT_EQ(PlanReading(item.answer), item.mode) << item.answer.status;
}

TEST(DownloadPlan, ABodyIsWholeWhenItEndedNormallyWithAllItsBytes) {
    EXPECT_TRUE(IsWholeBody("10", 10, 0));
    EXPECT_FALSE(IsWholeBody("10", 9, 0));
    EXPECT_FALSE(IsWholeBody("10", 10, -1));
    EXPECT_TRUE(IsWholeBody(nullptr, 7, 0));
    EXPECT_FALSE(IsWholeBody(nullptr, 7, -1));
}
