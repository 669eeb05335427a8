#include "support/TestWindow.h"

namespace {

class Attached : public BView {
public:
    Attached(const char* name, Log& log)
        : BView(BRect(0, 0, 9, 9), name, B_FOLLOW_NONE, B_WILL_DRAW), fLog(log) {}
    ~Attached() override { fLog.Add(std::string("deleted ") + Name()); }

    void AttachedToWindow() override { _Note("attached"); }
    void AllAttached() override { _Note("all attached"); }
    void DetachedFromWindow() override { _Note("detached"); }
    void AllDetached() override { _Note("all detached"); }

private:
    void _Note(const char* what) {
        EXPECT_NE(nullptr, Window());
        fLog.Add(std::string(what) + " " + Name());
    }

    Log& fLog;
};

} // namespace

TEST(ViewTree, HooksGoFromParentToChildAndBack) {
    Log log;
    TestWindow<> window;
    auto* parent = new Attached("parent", log);
    parent->AddChild(new Attached("child", log));
    window.Add(parent);
    EXPECT_EQ(
        (Lines{"attached parent", "attached child", "all attached child", "all attached parent"}),
        log.Take());
    EXPECT_TRUE(parent->RemoveSelf());
    EXPECT_EQ(
        (Lines{"detached parent", "detached child", "all detached child", "all detached parent"}),
        log.Take());
    EXPECT_EQ(nullptr, parent->Window());
    delete parent;
    EXPECT_EQ((Lines{"deleted parent", "deleted child"}), log.Take());
}

TEST(ViewTree, AChildThatAHookAddsIsToldOnce) {
    class Adding : public Attached {
    public:
        Adding(const char* name, Log& log) : Attached(name, log), fLog(log) {}
        void AttachedToWindow() override {
            Attached::AttachedToWindow();
            ChildAt(0)->MakeFocus(true);
            AddChild(new Attached("late", fLog));
        }

    private:
        Log& fLog;
    };
    Log log;
    TestWindow<> window;
    auto* parent = new Adding("parent", log);
    auto* early = new Attached("early", log);
    parent->AddChild(early);
    window.Add(parent);
    EXPECT_EQ((Lines{"attached parent", "attached late", "all attached late", "attached early",
                     "all attached early", "all attached parent"}),
              log.Take());
    EXPECT_TRUE(early->IsFocus());
}

TEST(ViewTree, AWindowThatGoesDetachesAndDeletesItsViews) {
    Log log;
    {
        TestWindow<> window;
        window.Add(new Attached("only", log));
        window.Show();
        log.Take();
    }
    EXPECT_EQ((Lines{"detached only", "all detached only", "deleted only"}), log.Take());
}

TEST(ViewTree, ChildrenStandInTheGivenOrder) {
    BView parent(BRect(0, 0, 99, 99), "parent", B_FOLLOW_NONE, 0);
    auto* a = new BView(BRect(), "a", B_FOLLOW_NONE, 0);
    auto* b = new BView(BRect(), "b", B_FOLLOW_NONE, 0);
    auto* c = new BView(BRect(), "c", B_FOLLOW_NONE, 0);
    parent.AddChild(a);
    parent.AddChild(c);
    parent.AddChild(b, c);
    EXPECT_EQ(b, parent.ChildAt(1));
    EXPECT_EQ(c, b->NextSibling());
    EXPECT_EQ(a, b->PreviousSibling());
    EXPECT_EQ(nullptr, a->PreviousSibling());
    EXPECT_EQ(nullptr, c->NextSibling());
    EXPECT_EQ(nullptr, parent.ChildAt(3));
    EXPECT_EQ(b, parent.FindView("b"));
    EXPECT_EQ(nullptr, parent.FindView("d"));
    EXPECT_FALSE(a->RemoveChild(b));
    EXPECT_EQ(&parent, a->Parent());
}

TEST(ViewTree, MessagesGoUpToTheWindow) {
    TestWindow<> window;
    auto* parent = window.Add(new BView(BRect(0, 0, 99, 99), "parent", B_FOLLOW_NONE, 0));
    auto* child = new BView(BRect(0, 0, 9, 9), "child", B_FOLLOW_NONE, 0);
    parent->AddChild(child);
    EXPECT_EQ(parent, child->NextHandler());
    EXPECT_EQ(window.Get(), parent->NextHandler());
    EXPECT_EQ(nullptr, parent->Parent());
    EXPECT_EQ(window.Get(), child->Looper());
}

TEST(ViewTree, AViewThatGoesLeavesNothingPointingAtIt) {
    TestWindow<> window;
    auto* view = window.Add(new BView(BRect(0, 0, 99, 99), "view", B_FOLLOW_NONE, B_NAVIGABLE));
    window.Show();
    server::testing::MouseDown(window, BPoint(5, 5));
    window.Settle();
    window.Locked([&] {
        view->MakeFocus();
        EXPECT_EQ(view, window->CurrentFocus());
        EXPECT_EQ(view, window->LastMouseMovedView());
        view->RemoveSelf();
        delete view;
        EXPECT_EQ(nullptr, window->CurrentFocus());
        EXPECT_EQ(nullptr, window->LastMouseMovedView());
    });
    server::testing::MouseUp(window, BPoint(5, 5));
    server::testing::Key(window, 'a');
    window.Settle();
}
