#pragma once

#include <string>
#include <string_view>
#include <vector>

struct _xmlDoc;
struct _xmlNode;

namespace gate {

using HtmlNode = const struct _xmlNode;

// An HTML page as a tree, whatever is wrong with its tags. Nodes live as long as the tree. All
// texts are UTF-8; names of elements and attributes are in lower case.
class HtmlTree {
public:
    explicit HtmlTree(std::string_view utf8);
    ~HtmlTree();
    HtmlTree(const HtmlTree&) = delete;
    HtmlTree& operator=(const HtmlTree&) = delete;

    // Null when there is nothing in the page.
    HtmlNode* Root() const { return fRoot; }
    // Whether the tree holds the page to its end: tags that are nested too deep end it early.
    bool IsWhole() const { return fIsWhole; }

private:
    // Constant after construction
    struct _xmlDoc* fDocument;
    HtmlNode* fRoot = nullptr;
    bool fIsWhole = false;
};

// The node after this one in the order of the page, within `top`, or null. The first form goes
// into the node, the second past it.
HtmlNode* NextNode(HtmlNode* node, HtmlNode* top);
HtmlNode* NodeAfter(HtmlNode* node, HtmlNode* top);
HtmlNode* ParentOf(HtmlNode* node);
HtmlNode* FirstChild(HtmlNode* node);
HtmlNode* NextSibling(HtmlNode* node);

bool IsText(HtmlNode* node);
std::string_view ContentOf(HtmlNode* text); // of a text
std::string_view NameOf(HtmlNode* node);    // of an element; empty for anything else
bool HasAttribute(HtmlNode* node, const char* name);
std::string AttributeOf(HtmlNode* node, const char* name); // empty without
bool HasClass(HtmlNode* node, const std::vector<std::string>& names);
// The first element below `top` that has one of the classes, or null.
HtmlNode* FindClass(HtmlNode* top, const std::vector<std::string>& names);
HtmlNode* FindElement(HtmlNode* top, std::string_view name);
// All text below, but of what a browser doesn't show.
std::string TextOf(HtmlNode* node);
bool IsHidden(HtmlNode* node); // scripts and the like

} // namespace gate
