#include "Measure.h"
#include "Parts.h"
#include "Posts.h"

#include "noise/NoiseFilter.h"
#include "views/NPTextView.h"

#include <AppDefs.h>
#include <Application.h>
#include <OS.h>
#include <PopUpMenu.h>
#include <Window.h>

namespace {

const BRect kFrame(0, 0, 535, 399);
const BRect kTextRect(8, 8, 527, 391);
constexpr int kMostRounds = 7;
constexpr int kFewRounds = 3;
constexpr int kManyPosts = 50000; // from here on a few rounds say enough

struct BodyPost {
    SamplePost post;
    std::string body;
};

// A window with an empty text view, locked while it lives; nothing is drawn meanwhile.
class LockedView {
public:
    LockedView() : fWindow(new BWindow(kFrame, "layout", B_TITLED_WINDOW, 0)) {
        fView = new NPTextView(kFrame, kTextRect);
        fWindow->Lock();
        fWindow->AddChild(fView);
    }
    ~LockedView() { fWindow->Quit(); }
    LockedView(const LockedView&) = delete;
    LockedView& operator=(const LockedView&) = delete;
    NPTextView* operator->() { return fView; }

private:
    BWindow* fWindow; // deletes itself
    NPTextView* fView;
};

// Of the kinds that users write; what most of them name does not come.
std::shared_ptr<const NoiseFilter> MakeFilter() {
    NoiseRules rules;
    for (int i = 0; i < 100; i++) {
        NoiseRule rule;
        rule.kind = static_cast<NoiseKind>(i % 3);
        rule.isPattern = i % 10 == 0;
        rule.text = "宣伝" + std::to_string(i) + (rule.isPattern ? "(です|だ)+" : "");
        rules.list.push_back(rule);
    }
    return std::make_shared<const NoiseFilter>(rules, "h.example/b");
}

void AddPosts(LockedView& view, const std::vector<BodyPost>& posts) {
    for (size_t i = 0; i < posts.size(); i++) {
        const SamplePost& post = posts[i].post;
        view->addNumItem(static_cast<int32>(i) + 1);
        view->addNameItem(post.name.c_str());
        view->addMailItem(post.mail.c_str());
        view->addDateItem(post.date.c_str());
        view->addArticleItem(posts[i].body.c_str());
        view->addLineFeed();
        view->PostHasCome();
    }
}

double LayOut(const std::vector<BodyPost>& posts,
              const std::shared_ptr<const NoiseFilter>& filter = nullptr) {
    LockedView view;
    view->SetNoise("h.example/b", filter);
    const double start = ThreadTime();
    AddPosts(view, posts);
    view->TextHeight(0, view->CountLines() - 1);
    return ThreadTime() - start;
}

void MeasureMemory(const std::vector<BodyPost>& posts) {
    LockedView view;
    const size_t before = UsedHeap();
    AddPosts(view, posts);
    PrintResult("memory", static_cast<double>(UsedHeap() - before));
    PrintResult("text", static_cast<double>(view->TextLength()));
    PrintResult("lines", static_cast<double>(view->CountLines()));
}

// Who wrote and who answered is asked for the first time, and again when a post has come.
void MeasureQuestions(const std::vector<BodyPost>& posts) {
    LockedView view;
    AddPosts(view, posts);
    for (const char* name : {"question", "next question"}) {
        BPopUpMenu menu("menu");
        const double start = ThreadTime();
        view->GetRightClickMenu(&menu, 0);
        PrintResult(name, ThreadTime() - start);
        AddPosts(view, {posts.front()});
    }
}

int32 Run(void* data) {
    const int count = *static_cast<int*>(data);
    std::vector<BodyPost> posts;
    for (const SamplePost& post : MakePosts(count))
        posts.push_back({post, BodyWithLinks(post)});
    LayOut(posts); // warms the fonts
    const int rounds = count >= kManyPosts ? kFewRounds : kMostRounds;
    PrintResult("warm", BestOf(rounds, "layout", [&] { return LayOut(posts); }));
    const std::shared_ptr<const NoiseFilter> filter = MakeFilter();
    PrintResult("noise", BestOf(rounds, "noise", [&] { return LayOut(posts, filter); }));
    MeasureMemory(posts);
    MeasureQuestions(posts);
    be_app->PostMessage(B_QUIT_REQUESTED);
    return 0;
}

} // namespace

int RunLayout(const Arguments& arguments) {
    int count = std::stoi(arguments[0]);
    BApplication application("application/x-vnd.Itamori-Bench");
    resume_thread(spawn_thread(Run, "layout", B_NORMAL_PRIORITY, &count));
    application.Run();
    return 0;
}
