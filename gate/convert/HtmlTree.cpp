#include "convert/HtmlTree.h"

#include "convert/Words.h"

#include <libxml/HTMLparser.h>
#include <libxml/SAX2.h>

#include <algorithm>
#include <array>
#include <climits>
#include <memory>

namespace gate {

namespace {

constexpr int kOptions = HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                         HTML_PARSE_NONET | HTML_PARSE_IGNORE_ENC | HTML_PARSE_COMPACT;

std::string_view ViewOf(const xmlChar* text) {
    return text == nullptr ? "" : reinterpret_cast<const char*>(text);
}

const xmlAttr* FindAttribute(HtmlNode* node, const char* name) {
    if (node->type != XML_ELEMENT_NODE)
        return nullptr;
    const xmlAttr* attribute = node->properties;
    while (attribute != nullptr && ViewOf(attribute->name) != name)
        attribute = attribute->next;
    return attribute;
}

// The first element below `top` that pleases.
template <typename Pleases>
HtmlNode* Find(HtmlNode* top, Pleases pleases) {
    HtmlNode* node = top == nullptr ? nullptr : NextNode(top, top);
    while (node != nullptr && !pleases(node))
        node = NextNode(node, top);
    return node;
}

} // namespace

HtmlTree::HtmlTree(std::string_view utf8) : fDocument(nullptr) {
    static const bool sReady = (xmlInitParser(), true);
    const std::unique_ptr<htmlParserCtxt, decltype(&htmlFreeParserCtxt)> context(
        sReady ? htmlNewParserCtxt() : nullptr, htmlFreeParserCtxt);
    if (context == nullptr || utf8.empty() || utf8.size() > INT_MAX)
        return;
    // Blanks between tags are lines of a post.
    context->sax->ignorableWhitespace = xmlSAX2Characters;
    fDocument = htmlCtxtReadMemory(context.get(), utf8.data(), static_cast<int>(utf8.size()),
                                   nullptr, "UTF-8", kOptions);
    fRoot = fDocument == nullptr ? nullptr : xmlDocGetRootElement(fDocument);
    fIsWhole = fRoot != nullptr && context->disableSAX == 0;
}

HtmlTree::~HtmlTree() {
    xmlFreeDoc(fDocument);
}

HtmlNode* NextNode(HtmlNode* node, HtmlNode* top) {
    HtmlNode* child = FirstChild(node);
    return child != nullptr ? child : NodeAfter(node, top);
}

HtmlNode* NodeAfter(HtmlNode* node, HtmlNode* top) {
    while (node != nullptr && node != top && node->next == nullptr)
        node = node->parent;
    return node == nullptr || node == top ? nullptr : node->next;
}

HtmlNode* ParentOf(HtmlNode* node) {
    return node->parent;
}

HtmlNode* FirstChild(HtmlNode* node) {
    return node->type == XML_ELEMENT_NODE ? node->children : nullptr;
}

HtmlNode* NextSibling(HtmlNode* node) {
    return node->next;
}

bool IsText(HtmlNode* node) {
    return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

std::string_view ContentOf(HtmlNode* text) {
    return IsText(text) ? ViewOf(text->content) : "";
}

std::string_view NameOf(HtmlNode* node) {
    return node->type == XML_ELEMENT_NODE ? ViewOf(node->name) : "";
}

bool HasAttribute(HtmlNode* node, const char* name) {
    return FindAttribute(node, name) != nullptr;
}

std::string AttributeOf(HtmlNode* node, const char* name) {
    std::string value;
    const xmlAttr* attribute = FindAttribute(node, name);
    for (HtmlNode* part = attribute == nullptr ? nullptr : attribute->children; part != nullptr;
         part = part->next)
        value += ContentOf(part);
    return value;
}

bool HasClass(HtmlNode* node, const std::vector<std::string>& names) {
    const std::string classes = AttributeOf(node, "class");
    std::string_view rest = Trimmed(classes);
    while (!rest.empty()) {
        const std::string_view name = rest.substr(0, rest.find_first_of(" \t\r\n"));
        if (std::ranges::find(names, name) != names.end())
            return true;
        rest = Trimmed(rest.substr(name.size()));
    }
    return false;
}

HtmlNode* FindClass(HtmlNode* top, const std::vector<std::string>& names) {
    return Find(top, [&names](HtmlNode* node) { return HasClass(node, names); });
}

HtmlNode* FindElement(HtmlNode* top, std::string_view name) {
    return Find(top, [name](HtmlNode* node) { return NameOf(node) == name; });
}

std::string TextOf(HtmlNode* top) {
    std::string text;
    for (HtmlNode* node = top; node != nullptr;) {
        text += ContentOf(node);
        node = IsHidden(node) ? NodeAfter(node, top) : NextNode(node, top);
    }
    return text;
}

bool IsHidden(HtmlNode* node) {
    constexpr std::array<std::string_view, 9> kHidden = {
        "script", "style", "noscript", "template", "iframe", "form", "button", "select", "object"};
    return std::ranges::find(kHidden, NameOf(node)) != kHidden.end();
}

} // namespace gate
