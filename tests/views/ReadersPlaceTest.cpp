#include "support/ThreadFixture.h"

#include <functional>

// What stands at the top of the view stays there when the text wraps anew.
class ReadersPlace : public ThreadFixture {
protected:
    static constexpr int32 kPosts = 200;

    void SetUp() override {
        ThreadFixture::SetUp();
        Do([this] {
            for (int32 i = 1; i <= kPosts; i++) {
                fView->addNumItem(i);
                fView->addNameItem("名無しさん");
                fView->addMailItem("sage");
                fView->addDateItem("02/01/23");
                std::string body;
                for (int32 j = 0; j < 20 + i % 7 * 13; j++)
                    body += "長い文です。";
                fView->addArticleItem(body.c_str());
                fView->addLineFeed();
            }
        });
        Settle();
    }
    void Resize(float width, float height) {
        server::testing::ResizeByUser(fWindow, width, height);
        Settle();
    }
    void SetFontSize(float size) {
        Do([&] { fView->SetArticleFont("", "", size); });
        Settle();
    }
    // The post whose first line is nearest to the top.
    int32 PostOnTop() {
        return Ask([this] {
            int32 start = 0;
            int32 end = 0;
            return fView->GetArticleOffset(fView->OffsetAt(fView->Bounds().LeftTop()), &start,
                                           &end);
        });
    }
    void ScrollToPost(int32 number) {
        Do([&] { fView->ScrollTo(BPoint(0, fView->PointAt(fView->ArticleAt(number)).y)); });
        Settle();
    }
};

TEST_F(ReadersPlace, StaysThroughEveryNewLayout) {
    ScrollToPost(120);
    const float before = Ask([this] { return fView->Bounds().top; });
    const struct {
        const char* what;
        std::function<void()> work;
    } changes[] = {
        {"narrower", [this] { Resize(320, 399); }},
        {"wider", [this] { Resize(900, 399); }},
        {"lower", [this] { Resize(900, 150); }},
        {"higher", [this] { Resize(900, 700); }},
        {"a larger font", [this] { SetFontSize(24); }},
        {"a smaller font", [this] { SetFontSize(10); }},
        {"many widths",
         [this] {
             for (int i = 0; i < 40; i++)
                 Resize(static_cast<float>(300 + i * 97 % 600), 399);
         }},
    };
    for (const auto& change : changes) {
        change.work();
        EXPECT_EQ(120, PostOnTop()) << change.what;
    }
    SetFontSize(12);
    Resize(599, 399);
    EXPECT_EQ(before, Ask([this] { return fView->Bounds().top; }));
}

TEST_F(ReadersPlace, IsWhereTheReaderScrolledLast) {
    ScrollToPost(120);
    Resize(320, 399);
    ScrollToPost(50);
    Resize(900, 399);
    EXPECT_EQ(50, PostOnTop());
}
