#include "views/NPTextView.h"

#include "browser/BrowserWindow.h"
#include "views/ShownPost.h"

#include <ScrollBar.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace {

constexpr rgb_color kText = {0, 0, 0, 0};
constexpr rgb_color kName = {34, 139, 34, 0};
constexpr rgb_color kMail = {34, 34, 239, 0};
constexpr rgb_color kLink = {0, 0, 255, 0};

constexpr std::string_view kReferenceTag = "<a href=\"../test/read.cgi";
constexpr std::string_view kClosingTag = "</a>";
constexpr size_t kMissing = std::string_view::npos;

size_t UrlStart(std::string_view text) {
    const size_t colon = text.find("://");
    if (colon == kMissing)
        return kMissing;
    for (const std::string_view scheme : {"http", "ttp", "tp", "p"}) {
        if (text.substr(0, colon).ends_with(scheme))
            return colon - scheme.size();
    }
    return kMissing;
}

// The tag of a reference; one without an end is no tag, and the text behind it is not lost.
size_t ReferenceStart(std::string_view text) {
    const size_t start = text.find(kReferenceTag);
    return start != kMissing && text.find('>', start) != kMissing ? start : kMissing;
}

size_t UrlLength(std::string_view text) {
    size_t length = 0;
    while (length < text.size() && text[length] != '\n' && text[length] != ' ' &&
           (text[length] & 0x80) == 0)
        length++;
    return length;
}

} // namespace

// A text with its runs, put together first and then inserted in one go.
class NPTextView::Piece {
public:
    void Add(std::string_view text, rgb_color color) {
        if (text.empty())
            return;
        if (fRuns.empty() || !SameColor(fRuns.back().color, color))
            fRuns.push_back({static_cast<int32>(fText.size()), color});
        fText += text;
    }

    const std::string& Text() const { return fText; }
    int32 Length() const { return static_cast<int32>(fText.size()); }

    // The caller frees it.
    text_run_array* MakeRuns(const BFont& font) const {
        text_run_array* runs = AllocRunArray(static_cast<int32>(fRuns.size()));
        for (size_t i = 0; i < fRuns.size(); i++) {
            runs->runs[i].offset = fRuns[i].offset;
            runs->runs[i].font = font;
            runs->runs[i].color = fRuns[i].color;
        }
        return runs;
    }

private:
    struct Run {
        int32 offset;
        rgb_color color;
    };

    static bool SameColor(rgb_color a, rgb_color b) {
        return a.red == b.red && a.green == b.green && a.blue == b.blue;
    }

    std::string fText;
    std::vector<Run> fRuns;
};

NPTextView::NPTextView(BRect frame, BRect textRect)
    : LinkTextView(frame, "article", textRect, B_FOLLOW_ALL_SIDES,
                   B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE) {}

NPTextView::~NPTextView() {
    fPopUps.CloseAll();
}

void NPTextView::AttachedToWindow() {
    LinkTextView::AttachedToWindow();
    GetFontAndColor(0, &fFont);
    BrowserWindow* window = dynamic_cast<BrowserWindow*>(Window());
    char family[64] = "";
    char style[64] = "";
    float size = 0;
    if (window != nullptr && window->GetFontInfo(&family, &style, &size) == 0)
        SetArticleFont(family, style, size);
    if (TextLength() == 0)
        addLineFeed();
}

void NPTextView::SetArticleFont(const char* family, const char* style, float size) {
    _ClosePopUps();
    fFont.SetFamilyAndStyle(family, style);
    if (size > 0)
        fFont.SetSize(size);
    fHidden.SetFont(fFont);
    _LayOutAnew([this] { SetFontAndColor(0, TextLength(), &fFont, B_FONT_ALL); });
}

void NPTextView::FrameResized(float width, float height) {
    _ClosePopUps();
    BRect rect = TextRect();
    rect.right = rect.left + width - 2 * rect.left;
    _LayOutAnew([&] {
        SetTextRect(rect);
        LinkTextView::FrameResized(width, height);
    });
}

NPTextView::Place NPTextView::_TopPlace() const {
    const BPoint top = Bounds().LeftTop();
    const int32 offset = OffsetAt(top);
    return {offset, PointAt(offset).y - top.y};
}

void NPTextView::_ReturnTo(const Place& place) {
    float height = 0;
    const float top = PointAt(place.offset, &height).y;
    if (BScrollBar* bar = ScrollBar(B_VERTICAL))
        bar->SetValue(std::floor(top - std::max(place.above, 1 - height)));
}

void NPTextView::RestorePlace(float top) {
    if (BScrollBar* bar = ScrollBar(B_VERTICAL))
        bar->SetValue(top);
    fPlace.reset();
    fHasMoved = false;
}

// The line that stood on top stays there. It is kept until the reader scrolls: a hundred widths on
// the way to another one must not each lose a little.
template <typename Layout>
void NPTextView::_LayOutAnew(Layout layout) {
    if (!fPlace)
        fPlace = _TopPlace();
    fLaysOut = true;
    layout();
    _ReturnTo(*fPlace);
    fLaysOut = false;
}

void NPTextView::_Append(const Piece& piece) {
    if (piece.Length() == 0)
        return;
    text_run_array* runs = piece.MakeRuns(fFont);
    Insert(TextLength(), piece.Text().c_str(), piece.Length(), runs);
    FreeRunArray(runs);
}

void NPTextView::_AppendPlain(const char* text, int32 length) {
    Piece piece;
    piece.Add(std::string_view(text, length), kText);
    _Append(piece);
}

void NPTextView::_AppendLabelled(const char* label, const char* text, rgb_color color) {
    Piece piece;
    piece.Add(label, kText);
    piece.Add(text, color);
    piece.Add(" ", kText);
    _Append(piece);
}

void NPTextView::addNumItem(int32 number) {
    fArticles.push_back({TextLength(), number});
    char text[16];
    const int length = snprintf(text, sizeof(text), "%d ", number);
    _AppendPlain(text, length);
}

void NPTextView::addNameItem(const char* text) {
    BString name(text);
    name.RemoveFirst("</b>");
    name.RemoveFirst("<b>");
    _AppendLabelled(kNameLabel, name.String(), kName);
}

void NPTextView::addMailItem(const char* mail) {
    _AppendLabelled(kMailLabel, mail != nullptr ? mail : "", kMail);
}

void NPTextView::addDateItem(const char* date) {
    const std::string line = std::string(kDateLabel) + date + "\n";
    _AppendPlain(line.c_str(), static_cast<int32>(line.size()));
}

void NPTextView::addArticleItem(const char* body) {
    const std::string text = std::string(body) + "\n";
    std::string_view rest = text;
    Piece piece;
    while (_AppendNextLink(&rest, &piece)) {
    }
    piece.Add(rest, kText);
    _Append(piece);
}

// Moves the text up to the first link, and the link, from `rest` into the piece; false without one.
bool NPTextView::_AppendNextLink(std::string_view* rest, Piece* piece) {
    const size_t url = UrlStart(*rest);
    const size_t reference = ReferenceStart(*rest);
    const size_t start = url < reference ? url : reference;
    if (start == kMissing)
        return false;
    piece->Add(rest->substr(0, start), kText);
    rest->remove_prefix(start);
    const bool isUrl = start == url;
    if (!isUrl)
        rest->remove_prefix(rest->find('>') + 1);
    const size_t length = isUrl ? UrlLength(*rest) : std::min(rest->find('<'), rest->size());
    const std::string_view link = rest->substr(0, length);
    rest->remove_prefix(length);
    const int32 offset = TextLength() + piece->Length();
    const Link record = {offset - 1, offset + static_cast<int32>(length),
                         isUrl ? "http" + std::string(link.substr(link.find("://")))
                               : std::string(link)};
    (isUrl ? fUrls : fReferences).push_back(record);
    piece->Add(link, kLink);
    // Of what ends a link only what nobody would miss is dropped: its closing tag, one space.
    if (!isUrl && rest->starts_with(kClosingTag))
        rest->remove_prefix(kClosingTag.size());
    else if (isUrl && rest->starts_with(' '))
        rest->remove_prefix(1);
    return true;
}

void NPTextView::addLineFeed() {
    _AppendPlain("\n", 1);
}

void NPTextView::clearList() {
    fArticles.clear();
    fUrls.clear();
    fReferences.clear();
    fHidden.Clear();
    _ForgetPeople();
}

void NPTextView::clearText() {
    _ClosePopUps();
    Delete(0, TextLength());
    clearList();
    fPlace.reset();
    fHasMoved = false;
}

int32 NPTextView::ArticleAt(int32 number) const {
    for (size_t i = fArticles.size(); i-- > 0;) {
        if (fArticles[i].number == number)
            return fArticles[i].offset;
    }
    return -1;
}

int32 NPTextView::ArticleLineAt(int32 number) const {
    const int32 offset = ArticleAt(number);
    return offset < 0 ? -1 : LineAt(offset);
}

int32 NPTextView::GetArticleOffset(int32 offset, int32* start, int32* end) const {
    int32 next = TextLength() + 1;
    for (size_t i = fArticles.size(); i-- > 0;) {
        if (offset >= fArticles[i].offset && offset < next) {
            *start = fArticles[i].offset;
            *end = next - 1;
            return fArticles[i].number;
        }
        next = fArticles[i].offset;
    }
    *start = *end = 0;
    return -1;
}

int32 NPTextView::FindUrl(const BString& text) {
    const size_t start = UrlStart(std::string_view(text.String(), text.Length()));
    return start == kMissing ? -1 : static_cast<int32>(start);
}
