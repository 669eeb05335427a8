#pragma once

#include "noise/NoiseFilter.h"
#include "posts/PostIndex.h"
#include "views/HiddenPosts.h"
#include "views/LinkTextView.h"
#include "views/PopUpMessages.h"
#include "views/PopUpStack.h"

#include <String.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class BPopUpMenu;
struct Stretch;

// Shows a thread's posts one after another, read-only, and knows which post, URL or reference
// stands at an offset. A post comes in five calls: addNumItem, addNameItem, addMailItem,
// addDateItem, addArticleItem. A click on a URL opens its thread or the browser, one on a reference
// shows the posts in a pop-up, the secondary button opens a menu. Offsets are bytes of the text.
// The window's thread, or with its looper locked.
class NPTextView : public LinkTextView {
public:
    NPTextView(BRect frame, BRect textRect);
    ~NPTextView() override;

    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void FrameResized(float width, float height) override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void MessageReceived(BMessage* message) override;
    void MakeFocus(bool focused = true) override;
    void WindowActivated(bool active) override;
    using LinkTextView::ScrollTo;
    void ScrollTo(BPoint where) override;

    void addNumItem(int32 number);
    void addNameItem(const char* name);
    // Null when the post has no mail.
    void addMailItem(const char* mail);
    void addDateItem(const char* date);
    // The body with its line breaks as line feeds; URLs and references in it become links.
    void addArticleItem(const char* body);
    // One line feed behind what is there.
    void addLineFeed();

    // The post that the five calls have brought is whole, with its line feed: it may be hidden.
    void PostHasCome();
    // The board of the thread, "HOST/BOARD", and the rules that hide its posts; null hides none.
    // What is there already follows, at the reader's place.
    void SetNoise(const std::string& board, std::shared_ptr<const NoiseFilter> filter);

    void clearText();
    void SetArticleFont(const char* family, const char* style, float size);

    // Where the post with this number starts, and the line there; −1 without one. Of two with the
    // same number it is the later.
    int32 ArticleAt(int32 number) const;
    int32 ArticleLineAt(int32 number) const;
    // The number of the post that holds an offset, with its range; −1 (and 0, 0) without one.
    int32 GetArticleOffset(int32 offset, int32* start, int32* end) const;
    // Whether the reader has scrolled since the text was cleared.
    bool HasMoved() const { return fHasMoved; }
    // Whether the text was laid out anew since he scrolled, with his line kept at the top.
    bool KeepsPlace() const { return fPlace.has_value(); }
    // Scrolls to where the reader was at another time, in pixels from the top: no move of his.
    void RestorePlace(float top);

    // The first of the posts that the last reload brought, 0 without any: a hairline stands before
    // it, and a key leads there.
    void SetFirstNew(int32 number);
    int32 FirstNew() const { return fFirstNew; }
    // The posts that were sent from here, by their numbers; cleared with the text.
    void SetOwnPosts(std::vector<int32> numbers);
    // Where these and the answers to them begin, in no order.
    struct Tick {
        int32 offset;
        bool isOwn;
    };
    const std::vector<Tick>& Ticks() const { return fTicks; }
    // The last post as it is or was before it was hidden; borrowed likewise.
    std::string_view LastPost() const {
        return fArticles.empty() ? std::string_view() : _WholePost(fArticles.size() - 1);
    }
    // The posts behind this one; they borrow from the text until it changes.
    std::vector<PostText> PostsBehind(int32 number) const;

    // The start of the first URL of a text, or −1. Only the first "://" is looked at: servers' own
    // pages decide likewise what is a link.
    static int32 FindUrl(const BString& text);

    // Opens the pop-up of the reference at a point of the view, if there is one.
    void showPopUpWindow(BPoint where);
    // Fills the context menu for what stands at an offset.
    void GetRightClickMenu(BPopUpMenu* menu, int32 offset);
    // The address that searches the web for an encoded query: 0 and a string that the caller frees,
    // or −1.
    static int32 GetUrlForGoogle(char** out, const char* query, bool japaneseOnly);

protected:
    void AnchorPointed(bool isOn) override;

private:
    struct ArticleStart {
        int32 offset;
        int32 number;
    };
    class Piece;

    // Where a pop-up or a menu is opened from.
    struct PopUpOrigin {
        BPoint screen;
        int32 opener = PopUpStack::kText;
        PopUpEnd end = PopUpEnd::kByPointer;
        float height = 0; // of what is not to be covered, from the point down
    };

    // A line of the text and how far above its top the view begins, in pixels.
    struct Place {
        int32 offset;
        float above;
    };

    void clearList();
    Place _TopPlace() const;
    void _ReturnTo(const Place& place);
    template <typename Layout>
    void _LayOutAnew(Layout layout);
    void _Append(const Piece& piece);
    void _AppendPlain(const char* text, int32 length);
    void _AppendLabelled(const char* label, const char* text, rgb_color color);
    bool _AppendNextLink(std::string_view* rest, Piece* piece);

    // Links and pop-ups
    void _FollowUrl(const char* url);
    void _OpenPopUp(const char* anchor, const PopUpOrigin& origin);
    void _ShowPopUp(const LinkTextView& from, const std::vector<Stretch>& stretches,
                    const std::string& note, const PopUpOrigin& origin);
    void _ClosePopUps();
    void _PopUpClicked(const BMessage* message);
    void _PopUpGone(const BMessage* message);

    // Hidden posts; a post is known by its place among the posts
    size_t _IndexAt(int32 offset) const;
    int32 _EndOf(size_t index) const;
    std::string_view _WholePost(size_t index) const;
    bool _AnswersHidden(const PostText& post) const;
    void _HideOrShow(size_t index);
    void _Hide(size_t index);
    void _Show(size_t index);
    void _ReplacePost(size_t index, const std::string& text, const text_run_array* runs);
    bool _OpenHidden(const char* link, const PopUpOrigin& origin);
    void _AddNoiseMenu(BPopUpMenu* menu, int32 offset);
    void _AddNoise(const BMessage* message);
    // Who wrote and who answered; what came from here
    PostText _PostAt(size_t index) const;
    const PostIndex& _People();
    void _ForgetPeople();
    void _AddPeopleItems(BPopUpMenu* menu, int32 number);
    void _ShowPosts(const BMessage* message);
    std::vector<PostIndex::Branch> _PostsOf(PostGroup group, int32 number);
    bool _FindPost(int32 number, Stretch* stretch) const;
    BRect _Hairline() const;
    bool _HandleLinkKey(char byte, int32 raw);
    void _ChooseByKey(Way way);
    bool _OpenByKey();

    // The context menu and its commands
    void _OpenMenu(int32 offset, const PopUpOrigin& origin);
    void _OpenMenuByKey();
    void _AddSearchMenu(BPopUpMenu* menu);
    void _SearchWeb(const BMessage* message);
    void _JumpTo(const BMessage* message);
    void _JumpToPost(int32 number);
    void _CopyRange(const BMessage* message);
    bool _HandleKey(char byte);
    void _ScrollPage(bool back);

    std::optional<Place> fPlace; // where the reader is while layouts change
    bool fLaysOut = false;
    bool fHasMoved = false;
    bigtime_t fFetched = 0; // when Space last asked for new posts
    std::vector<ArticleStart> fArticles;
    PopUpStack fPopUps;
    std::string fBoard;
    std::shared_ptr<const NoiseFilter> fNoise;
    HiddenPosts fHidden;
    PopUpOrigin fMenuOrigin; // of the menu that was opened last
    PostIndex fIndex;
    size_t fIndexed = 0; // of the posts, those that the index knows
    int32 fFirstNew = 0;
    std::vector<int32> fOwn;
    std::vector<Tick> fTicks;
    BFont fFont; // the text's, as it stands at offset 0
};
