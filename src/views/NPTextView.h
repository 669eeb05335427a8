#pragma once

#include <String.h>
#include <TextView.h>

#include <string>
#include <vector>

// Shows a thread's posts one after another, read-only, and knows which post, URL or reference
// stands at an offset. A post comes in five calls: addNumItem, addNameItem, addMailItem,
// addDateItem, addArticleItem. Offsets are bytes of the text. The window's thread, or with its
// looper locked.
class NPTextView : public BTextView {
public:
    // A link in the text: a URL (always from "http" on) or a reference such as ">>12". `start` is
    // one less than its first byte's offset, `end` the offset behind it.
    struct Link {
        int32 start;
        int32 end;
        std::string text;
    };

    NPTextView(BRect frame, BRect textRect);

    void AttachedToWindow() override;
    void FrameResized(float width, float height) override;

    void addNumItem(int32 number);
    void addNameItem(const char* name);
    // Null when the post has no mail.
    void addMailItem(const char* mail);
    void addDateItem(const char* date);
    // The body with its line breaks as line feeds; URLs and references in it become links.
    void addArticleItem(const char* body);
    // One line feed behind what is there.
    void addLineFeed();

    void clearText();
    void SetArticleFont(const char* family, const char* style, float size);

    // Where the post with this number starts, and the line there; −1 without one. Of two with the
    // same number it is the later.
    int32 ArticleAt(int32 number) const;
    int32 ArticleLineAt(int32 number) const;
    // The number of the post that holds an offset, with its range; −1 (and 0, 0) without one.
    int32 GetArticleOffset(int32 offset, int32* start, int32* end) const;
    int32 CountArticles() const { return fArticleCount; }

    // The start of the first URL of a text, or −1. Only the first "://" is looked at: servers' own
    // pages decide likewise what is a link.
    static int32 FindUrl(const BString& text);

    const std::vector<Link>& Urls() const { return fUrls; }
    const std::vector<Link>& References() const { return fReferences; }

private:
    struct ArticleStart {
        int32 offset;
        int32 number;
    };
    class Piece;

    void clearList();
    void _Append(const Piece& piece);
    void _AppendPlain(const char* text, int32 length);
    void _AppendLabelled(const char* label, const char* text, rgb_color color);
    bool _AppendNextLink(std::string_view* rest, Piece* piece);

    int32 fArticleCount = 0;
    std::vector<ArticleStart> fArticles;
    std::vector<Link> fUrls;
    std::vector<Link> fReferences;
    BFont fFont; // the text's, as it stands at offset 0
};
