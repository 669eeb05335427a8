#pragma once

#include "views/LinkTextView.h"

#include <memory>
#include <string>
#include <vector>

// A part of the article's text in a pop-up; it stands `indent` steps to the right.
struct Stretch {
    int32 start;
    int32 end;
    int indent = 0;
};

// Puts a pop-up's text together from parts of another text, with its styles in the system's plain
// size, its links and its marks, and knows where each byte came from. Indented parts come with
// their line breaks, so that what wraps is indented too. Only where the other text's lock is.
class PopUpCopy {
public:
    // Lines are at most `width` pixels wide.
    PopUpCopy(const LinkTextView& from, float width) : fFrom(from), fWidth(width) {}

    void Add(const Stretch& stretch);
    // A line that stands in no other text, behind what is there.
    void AddNote(const std::string& line);

    // Where a byte of the copy stands in the other text; −1 for what came from nowhere.
    struct Piece {
        int32 at; // in the copy
        int32 source;
        int32 length;
    };
    const std::vector<Piece>& Pieces() const { return fPieces; }

    const std::string& Text() const { return fText; }
    const std::vector<LinkTextView::Link>& Urls() const { return fUrls; }
    const std::vector<LinkTextView::Link>& References() const { return fReferences; }
    const std::vector<LinkTextView::Span>& Marks() const { return fMarks; }
    using Runs = std::unique_ptr<text_run_array, decltype(&BTextView::FreeRunArray)>;
    Runs MakeRuns() const;

private:
    using Links = std::vector<LinkTextView::Link>;

    void _AddWrapped(const Stretch& stretch, const text_run_array& runs);
    void _AddPiece(int32 source, int32 length, const text_run_array& runs, int32 runStart);
    void _AddPlain(const std::string& text);
    int32 _AtOf(size_t firstPiece, int32 source) const;
    void _CopyLinks(const Stretch& stretch, size_t firstPiece, const Links& from, Links* to);
    void _CopyMarks(const Stretch& stretch, size_t firstPiece);

    const LinkTextView& fFrom;
    const float fWidth;
    std::string fText;
    std::vector<text_run> fRuns;
    std::vector<Piece> fPieces;
    Links fUrls;
    Links fReferences;
    std::vector<LinkTextView::Span> fMarks;
};
