// Who wrote and who answered: the menu's lines, what they open, the keys to links, the hairline
// before new posts, the posts that came from here.
#include "views/NPTextView.h"

#include "views/PopUpCopy.h"
#include "views/ShownPost.h"

#include <InterfaceDefs.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kDeepestAnswer = 3;
constexpr size_t kMostShown = 100; // posts in a pop-up
constexpr rgb_color kHairline = {176, 140, 70, 255};

// Where a post stands in its group.
std::string PlaceIn(const PostIndex::Numbers& group, int32 number) {
    const auto place = std::ranges::lower_bound(group, number) - group.begin() + 1;
    return "(" + std::to_string(place) + "/" + std::to_string(group.size()) + ")";
}

BMenuItem* GroupItem(const std::string& label, PostGroup group, int32 number) {
    BMessage* message = new BMessage(kMsgShowPosts);
    message->AddInt32("group", static_cast<int32>(group));
    message->AddInt32("post", number);
    return new BMenuItem(label.c_str(), message);
}

std::vector<PostIndex::Branch> InARow(const PostIndex::Numbers& numbers) {
    std::vector<PostIndex::Branch> posts;
    for (const int32 number : numbers)
        posts.push_back({number, 1});
    return posts;
}

} // namespace

PostText NPTextView::_PostAt(size_t index) const {
    return ParseShownPost(_WholePost(index));
}

// Nobody asks for it in most threads: what has come since is taken in at the next question.
const PostIndex& NPTextView::_People() {
    for (; fIndexed < fArticles.size(); fIndexed++)
        fIndex.Add(_PostAt(fIndexed));
    return fIndex;
}

void NPTextView::_ForgetPeople() {
    fIndex.Clear();
    fIndexed = 0;
    fOwn.clear();
    fTicks.clear();
    SetMarks({});
    ForgetChoice();
}

void NPTextView::_AddPeopleItems(BPopUpMenu* menu, int32 number) {
    const PostIndex& people = _People();
    std::vector<BMenuItem*> items;
    const auto add = [&](const std::string& label, PostGroup group) {
        items.push_back(GroupItem(label, group, number));
    };
    if (const auto& group = people.WithIdOf(number); !group.empty())
        add("このIDのレス " + PlaceIn(group, number), PostGroup::kId);
    if (const auto& group = people.WithTripOf(number); !group.empty())
        add("このトリップのレス " + PlaceIn(group, number), PostGroup::kTrip);
    if (const auto& answers = people.AnswersTo(number); !answers.empty())
        add("このレスへの返信 (" + std::to_string(answers.size()) + ")", PostGroup::kAnswers);
    if (!items.empty())
        menu->AddSeparatorItem();
    for (BMenuItem* item : items)
        menu->AddItem(item);
}

std::vector<PostIndex::Branch> NPTextView::_PostsOf(PostGroup group, int32 number) {
    switch (group) {
    case PostGroup::kId: return InARow(_People().WithIdOf(number));
    case PostGroup::kTrip: return InARow(_People().WithTripOf(number));
    case PostGroup::kAnswers: return _People().AnswerTree(number, kDeepestAnswer);
    }
    return {};
}

// With the line feeds behind it.
bool NPTextView::_FindPost(int32 number, Stretch* stretch) const {
    int32 end = 0;
    const int32 start = ArticleAt(number);
    if (start < 0 || GetArticleOffset(start, &stretch->start, &end) != number)
        return false;
    stretch->end = std::min(end + 1, TextLength());
    return true;
}

void NPTextView::_ShowPosts(const BMessage* message) {
    int32 group = 0;
    int32 number = 0;
    if (message->FindInt32("group", &group) != B_OK || message->FindInt32("post", &number) != B_OK)
        return;
    const auto posts = _PostsOf(static_cast<PostGroup>(group), number);
    std::vector<Stretch> stretches;
    for (size_t i = 0; i < std::min(posts.size(), kMostShown); i++) {
        Stretch stretch{0, 0, posts[i].depth - 1};
        if (_FindPost(posts[i].number, &stretch))
            stretches.push_back(stretch);
    }
    if (stretches.empty())
        return;
    const size_t more = posts.size() - std::min(posts.size(), kMostShown);
    if (more == 0)
        stretches.back().end--;
    const std::string note = more > 0 ? "ほか " + std::to_string(more) + " レス\n" : "";
    PopUpOrigin origin = fMenuOrigin;
    if (!fPopUps.Holds(origin.opener))
        origin.opener = PopUpStack::kText;
    ForgetAnchor();
    _ShowPopUp(*this, stretches, note, origin);
}

// Letters, brackets and Enter do nothing else in a text that can't be edited. The keys of links go
// to the topmost pop-up that has any.
bool NPTextView::_HandleLinkKey(char byte, int32 raw) {
    switch (byte) {
    case ']': _ChooseByKey(Way::kForward); return true;
    case '[': _ChooseByKey(Way::kBack); return true;
    case 'n':
    case 'N': _JumpToPost(fFirstNew); return true;
    case B_ENTER: return raw == B_ENTER && _OpenByKey();
    default: return false;
    }
}

void NPTextView::_ChooseByKey(Way way) {
    BMessage choose(kMsgChooseLink);
    choose.AddBool("back", way == Way::kBack);
    if (const int32 popUp = fPopUps.WithKeys(); popUp != PopUpStack::kText)
        fPopUps.Tell(popUp, choose);
    else
        ChooseLink(way);
}

// False with nothing chosen.
bool NPTextView::_OpenByKey() {
    if (const int32 popUp = fPopUps.WithKeys(); popUp != PopUpStack::kText) {
        fPopUps.Tell(popUp, BMessage(kMsgOpenChosen));
        return true;
    }
    const Link* reference = ChosenReference();
    if (const Link* url = ChosenUrl()) {
        _FollowUrl(url->text.c_str());
    } else if (reference != nullptr) {
        PopUpOrigin origin;
        origin.screen = PlaceOf(*reference, &origin.height);
        origin.end = PopUpEnd::kByKey;
        ForgetAnchor();
        _OpenPopUp(reference->text.c_str(), origin);
    }
    return reference != nullptr || ChosenUrl() != nullptr;
}

void NPTextView::SetFirstNew(int32 number) {
    const BRect before = _Hairline();
    fFirstNew = number;
    Invalidate(before);
    Invalidate(_Hairline());
}

// In the empty line before the post; no valid one without a post.
BRect NPTextView::_Hairline() const {
    const int32 start = fFirstNew > 0 ? ArticleAt(fFirstNew) : -1;
    if (start <= 0)
        return BRect();
    float height = 0;
    const float top = PointAt(start - 1, &height).y;
    const float y = std::floor(top + height / 2);
    return BRect(TextRect().left, y, TextRect().right, y);
}

void NPTextView::Draw(BRect updateRect) {
    LinkTextView::Draw(updateRect);
    const BRect line = _Hairline();
    if (!line.IsValid() || !line.Intersects(updateRect))
        return;
    PushState();
    SetHighColor(kHairline);
    FillRect(line);
    PopState();
}

std::vector<PostText> NPTextView::PostsBehind(int32 number) const {
    std::vector<PostText> posts;
    for (size_t i = fArticles.size(); i-- > 0 && fArticles[i].number > number;)
        posts.push_back(_PostAt(i));
    std::ranges::reverse(posts);
    return posts;
}

void NPTextView::SetOwnPosts(std::vector<int32> numbers) {
    if (numbers.empty() && fOwn.empty())
        return;
    fOwn = std::move(numbers);
    std::vector<Span> marks;
    fTicks.clear();
    for (const int32 number : fOwn) {
        Stretch post{0, 0};
        if (!_FindPost(number, &post))
            continue;
        marks.push_back({post.start, post.end - 1});
        fTicks.push_back({post.start, true});
        for (const int32 answer : _People().AnswersTo(number))
            fTicks.push_back({ArticleAt(answer), false});
    }
    SetMarks(std::move(marks));
}
