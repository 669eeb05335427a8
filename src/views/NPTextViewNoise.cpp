// Posts that the user's rules hide.
#include "views/NPTextView.h"

#include "messages/Messages.h"
#include "noise/NoiseStore.h"
#include "posts/References.h"
#include "views/PopUpTextView.h"

#include <Application.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>
#include <ScrollBar.h>

#include <algorithm>

namespace {

constexpr rgb_color kHiddenColor = {128, 128, 128, 0};
constexpr const char* kPostEnd = "\n\n";
constexpr int32 kLongestWord = 255; // bytes of a selection that can be meant as a word

using Links = std::vector<LinkTextView::Link>;

void Shift(Links* links, size_t from, int32 delta) {
    for (size_t i = from; i < links->size(); i++) {
        (*links)[i].start += delta;
        (*links)[i].end += delta;
    }
}

// The place of the first link at or behind an offset.
size_t IndexFrom(const Links& links, int32 offset) {
    const auto first = std::partition_point(
        links.begin(), links.end(), [offset](const auto& link) { return link.start + 1 < offset; });
    return static_cast<size_t>(first - links.begin());
}

// Takes the links of a stretch out of a table, with offsets from its start; those behind it move by
// `delta`.
Links TakeLinks(Links* links, int32 start, int32 end, int32 delta) {
    const size_t first = IndexFrom(*links, start);
    const size_t last = IndexFrom(*links, end);
    const auto begin = links->begin() + static_cast<std::ptrdiff_t>(first);
    Links taken(begin, links->begin() + static_cast<std::ptrdiff_t>(last));
    links->erase(begin, links->begin() + static_cast<std::ptrdiff_t>(last));
    Shift(links, first, delta);
    Shift(&taken, 0, -start);
    return taken;
}

void PutLinks(Links* links, int32 start, Links fresh) {
    Shift(&fresh, 0, start);
    const size_t first = IndexFrom(*links, start);
    links->insert(links->begin() + static_cast<std::ptrdiff_t>(first), fresh.begin(), fresh.end());
}

BMenuItem* RuleItem(const char* label, NoiseKind kind, std::string_view text,
                    std::string_view day = {}) {
    BMessage* message = new BMessage(kMsgAddNoise);
    message->AddInt32("kind", static_cast<int32>(kind));
    message->AddString("text", std::string(text).c_str());
    message->AddString("day", std::string(day).c_str());
    BMenuItem* item = new BMenuItem(label, message);
    item->SetEnabled(!text.empty());
    return item;
}

} // namespace

void NPTextView::SetNoise(const std::string& board, std::shared_ptr<const NoiseFilter> filter) {
    fBoard = board;
    fNoise = std::move(filter);
    if (fNoise == nullptr && fHidden.IsEmpty())
        return;
    _ClosePopUps();
    const Place top = fPlace.value_or(_TopPlace());
    const size_t index = _IndexAt(top.offset);
    const int32 within = index < fArticles.size() ? top.offset - fArticles[index].offset : 0;
    fLaysOut = true;
    for (size_t i = 0; i < fArticles.size(); i++)
        _HideOrShow(i);
    ForgetChoice(); // what stood there has moved
    if (index < fArticles.size()) {
        const int32 length = _EndOf(index) - fArticles[index].offset;
        const Place place = {fArticles[index].offset + std::min(within, length - 1), top.above};
        _ReturnTo(place);
        if (fPlace)
            fPlace = place;
    }
    fLaysOut = false;
    SetOwnPosts(fOwn); // their marks have moved
}

void NPTextView::PostHasCome() {
    if (fNoise != nullptr && !fArticles.empty())
        _HideOrShow(fArticles.size() - 1);
}

// The place of the post that holds an offset; the count of posts when none does.
size_t NPTextView::_IndexAt(int32 offset) const {
    const auto behind =
        std::partition_point(fArticles.begin(), fArticles.end(),
                             [offset](const ArticleStart& post) { return post.offset <= offset; });
    return behind == fArticles.begin() ? fArticles.size()
                                       : static_cast<size_t>(behind - fArticles.begin()) - 1;
}

int32 NPTextView::_EndOf(size_t index) const {
    return index + 1 < fArticles.size() ? fArticles[index + 1].offset : TextLength();
}

// As it is or was, with its number first.
std::string_view NPTextView::_WholePost(size_t index) const {
    if (const HiddenPosts::Post* hidden = fHidden.Find(fArticles[index].number))
        return hidden->text;
    const int32 start = fArticles[index].offset;
    return {Text() + start, static_cast<size_t>(_EndOf(index) - start)};
}

// Only posts before it count: they have been decided on, and two that name each other, or one that
// names itself, must not keep each other hidden.
bool NPTextView::_AnswersHidden(const PostText& post) const {
    const std::vector<PostRange> ranges = FindReferences(post.body);
    return std::ranges::any_of(ranges, [&](const PostRange& range) {
        return range.first == range.last && range.first < post.number &&
               fHidden.Find(range.first) != nullptr;
    });
}

void NPTextView::_HideOrShow(size_t index) {
    const bool wasHidden = fHidden.Find(fArticles[index].number) != nullptr;
    const PostText post = _PostAt(index);
    const bool hides =
        fNoise != nullptr &&
        (fNoise->Hides(post, wasHidden ? NoiseFilter::Count::kNo : NoiseFilter::Count::kYes) ||
         (fNoise->HidesAnswers() && _AnswersHidden(post)));
    if (hides && !wasHidden)
        _Hide(index);
    else if (!hides && wasHidden)
        _Show(index);
}

// Puts another text in the place of a post; what stands behind it moves.
void NPTextView::_ReplacePost(size_t index, const std::string& text, const text_run_array* runs) {
    const int32 start = fArticles[index].offset;
    const int32 end = _EndOf(index);
    const auto length = static_cast<int32>(text.size());
    Delete(start, end);
    Insert(start, text.data(), length, runs);
    for (size_t i = index + 1; i < fArticles.size(); i++)
        fArticles[i].offset += length - (end - start);
}

void NPTextView::_Hide(size_t index) {
    const int32 number = fArticles[index].number;
    const int32 start = fArticles[index].offset;
    const int32 end = _EndOf(index);
    const std::string line = HiddenPosts::LineOf(number) + kPostEnd;
    const auto length = static_cast<int32>(line.size());
    HiddenPosts::Post post;
    post.text.assign(Text() + start, static_cast<size_t>(end - start));
    post.runs.reset(RunArray(start, end));
    post.urls = TakeLinks(&fUrls, start, end, length - (end - start));
    post.references = TakeLinks(&fReferences, start, end, length - (end - start));
    text_run_array* runs = AllocRunArray(1);
    runs->runs[0] = {0, fFont, kHiddenColor};
    _ReplacePost(index, line, runs);
    FreeRunArray(runs);
    const auto shown = static_cast<int32>(HiddenPosts::LineOf(number).size());
    PutLinks(&fReferences, start, {{-1, shown, HiddenPosts::LinkOf(number)}});
    fHidden.Put(number, std::move(post));
}

void NPTextView::_Show(size_t index) {
    const int32 start = fArticles[index].offset;
    const int32 end = _EndOf(index);
    HiddenPosts::Post post = fHidden.Take(fArticles[index].number);
    const int32 delta = static_cast<int32>(post.text.size()) - (end - start);
    TakeLinks(&fUrls, start, end, delta);
    TakeLinks(&fReferences, start, end, delta);
    _ReplacePost(index, post.text, post.runs.get());
    PutLinks(&fUrls, start, std::move(post.urls));
    PutLinks(&fReferences, start, std::move(post.references));
}

// False when the link is no hidden post's.
bool NPTextView::_OpenHidden(const char* link, const PopUpOrigin& origin) {
    const HiddenPosts::Post* post = fHidden.Find(HiddenPosts::NumberOf(link));
    if (post == nullptr)
        return false;
    const HiddenPostText text(*this, *post, ArticleAt(HiddenPosts::NumberOf(link)));
    // Without the line feeds behind it.
    const int32 end = std::max(text.TextLength() - 2, int32{1});
    _ShowPopUp(text, {{0, end}}, "", origin);
    return true;
}

void NPTextView::_AddNoiseMenu(BPopUpMenu* menu, int32 offset) {
    const size_t index = _IndexAt(offset);
    if (index >= fArticles.size() || offset >= TextLength())
        return;
    const PostText post = _PostAt(index);
    int32 start = 0;
    int32 end = 0;
    GetSelection(&start, &end);
    std::string_view word(Text() + start, static_cast<size_t>(end - start));
    if (end - start > kLongestWord || word.find('\n') != word.npos)
        word = {};
    BMenu* noise = new BMenu("NGに追加");
    noise->AddItem(RuleItem("このID（今日）", NoiseKind::kId, IdOf(post.date), DayOf(post.date)));
    noise->AddItem(RuleItem("この名前", NoiseKind::kName, post.name));
    noise->AddItem(RuleItem("選択した語", NoiseKind::kWord, word));
    noise->SetTargetForItems(this);
    menu->AddSeparatorItem();
    menu->AddItem(noise);
}

// IDs are a board's own; names and words are the same everywhere.
void NPTextView::_AddNoise(const BMessage* message) {
    int32 kind = 0;
    BString text;
    BString day;
    if (message->FindInt32("kind", &kind) != B_OK || message->FindString("text", &text) != B_OK ||
        message->FindString("day", &day) != B_OK || text.Length() == 0)
        return;
    NoiseRule rule;
    rule.kind = static_cast<NoiseKind>(kind);
    rule.text = text.String();
    rule.day = day.String();
    if (rule.kind == NoiseKind::kId)
        rule.board = fBoard;
    NoiseStore::Shared().Add(rule);
    be_app_messenger.SendMessage(kMsgNoiseChanged);
}
