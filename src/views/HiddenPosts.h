#pragma once

#include "views/LinkTextView.h"

#include <TextView.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

// What the article's text keeps of posts that a rule hides, by their numbers. The window's thread.
class HiddenPosts {
public:
    using Runs = std::unique_ptr<text_run_array, decltype(&BTextView::FreeRunArray)>;
    struct Post {
        std::string text; // as it stood, with the line feeds behind it
        Runs runs{nullptr, BTextView::FreeRunArray};
        std::vector<LinkTextView::Link> urls; // offsets from the post's start
        std::vector<LinkTextView::Link> references;
    };

    // The line that stands in a hidden post's place, and the link that it is: no reference of the
    // server's looks like it.
    static std::string LineOf(int32 number);
    static std::string LinkOf(int32 number);
    // The number of such a link; −1 for another.
    static int32 NumberOf(const char* link);

    bool IsEmpty() const { return fPosts.empty(); }
    const Post* Find(int32 number) const;
    void Put(int32 number, Post post) { fPosts[number] = std::move(post); }
    Post Take(int32 number);
    // The article's is another now.
    void SetFont(const BFont& font);
    void Clear() { fPosts.clear(); }

private:
    std::map<int32, Post> fPosts;
};

// A hidden post's own text, to be copied into a pop-up. Belongs to no window.
class HiddenPostText : public LinkTextView {
public:
    // Wrapped as wide as the article, where it stands for the line at `offset`.
    HiddenPostText(const LinkTextView& article, const HiddenPosts::Post& post, int32 offset);

    int32 StandsFor() const override { return fOffset; }

protected:
    void AnchorPointed(bool) override {}

private:
    const int32 fOffset;
};
