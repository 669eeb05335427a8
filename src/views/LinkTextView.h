#pragma once

#include <TextView.h>

#include <string>
#include <vector>

// A text with links in it that the pointer's shape shows: the article's, and its pop-ups'. What a
// click does is its subclasses' business. Offsets are bytes of the text. The window's thread, or
// with its looper locked.
class LinkTextView : public BTextView {
public:
    // A link in the text: a URL (always from "http" on) or a reference such as ">>12". `start` is
    // one less than its first byte's offset, `end` the offset behind it.
    struct Link {
        int32 start;
        int32 end;
        std::string text;
    };
    // A part of the text, without what is at `end`.
    struct Span {
        int32 start;
        int32 end;
    };

    using BTextView::BTextView;

    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;

    const std::vector<Link>& Urls() const { return fUrls; }
    const std::vector<Link>& References() const { return fReferences; }

    // The link of one of the two tables with start < offset < end; null without one.
    static const Link* LinkAt(const std::vector<Link>& links, int32 offset);

    enum class Way { kForward, kBack };
    // By the keyboard: chooses the link after the chosen one, or before it; without one in sight
    // the first in sight, or the last. Brings it into sight and draws a frame around it. False when
    // there is none.
    bool ChooseLink(Way way);
    // Null without a chosen one.
    const Link* ChosenUrl() const { return _Chosen(fUrls); }
    const Link* ChosenReference() const { return _Chosen(fReferences); }
    // Where it begins on the screen, and the height of its line.
    BPoint PlaceOf(const Link& link, float* height) const;
    void ForgetChoice();

    // Parts beside which a bar stands in the left margin, in the order of the text.
    const std::vector<Span>& Marks() const { return fMarks; }
    void SetMarks(std::vector<Span> marks);

    // The place of the article that all of this text stands for; −1 for the article itself.
    virtual int32 StandsFor() const { return -1; }

protected:
    // The offset of what is written under a point; −1 in the margin before a line, which belongs to
    // no link at the line's start.
    int32 OffsetUnder(BPoint where) const;
    // The pointer has come to or has left the reference from which a pop-up was opened.
    virtual void AnchorPointed(bool isOn) = 0;
    // From now on this reference, on which the pointer is, is the one that AnchorPointed tells of.
    void SetAnchor(const Link& reference);
    // No reference is.
    void ForgetAnchor() { fAnchor = kNoLink; }
    bool AnchorIsPointed() const { return fAnchorIsPointed; }

    // Both in the order of the text; links do not overlap.
    std::vector<Link> fUrls;
    std::vector<Link> fReferences;

private:
    static constexpr int32 kNoLink = -2; // a link's `start` may be −1

    void _PointAtAnchor(bool isOn);
    void _ShowShape(bool isLink);
    const Link* _Chosen(const std::vector<Link>& links) const;
    const Link* _ChosenInSight() const;
    void _InvalidateChoice();
    void _DrawChoice();
    void _DrawMark(const Span& mark, BRect updateRect);

    int32 fAnchor = kNoLink; // `start` of the reference
    bool fAnchorIsPointed = true;
    bool fShowsHand = false;
    int32 fChoice = kNoLink; // `start` of the link
    std::vector<Span> fMarks;
};
