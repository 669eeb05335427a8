#include "post/PageForm.h"

#include "convert/HtmlTree.h"
#include "convert/Words.h"

#include <algorithm>
#include <charconv>

namespace gate {

namespace {

using Kind = PageForm::Kind;
using Field = PageForm::Field;

Kind KindOf(const std::string& type) {
    if (type == "hidden")
        return Kind::kHidden;
    return type == "submit" || type == "image" || type == "button" || type == "reset"
               ? Kind::kButton
               : Kind::kOther;
}

Field FieldOf(HtmlNode* node) {
    std::string type = Lowered(Trimmed(AttributeOf(node, "type")));
    if (NameOf(node) == "button" && type.empty())
        type = "submit";
    const bool isText = NameOf(node) == "textarea";
    return {KindOf(type), AttributeOf(node, "name"),
            isText ? TextOf(node) : AttributeOf(node, "value"), type};
}

bool IsField(HtmlNode* node) {
    const std::string_view name = NameOf(node);
    return name == "input" || name == "textarea" || name == "select" || name == "button";
}

// The number of "&#N;" at the text's start, with its length; no length when it is none.
std::pair<char32_t, size_t> ReferenceAt(std::string_view text) {
    const size_t end = text.substr(0, 12).find(';');
    if (!text.starts_with("&#") || end == text.npos)
        return {0, 0};
    uint32_t code = 0;
    const char* last = text.data() + end;
    const auto [stop, error] = std::from_chars(text.data() + 2, last, code);
    const bool isGood = error == std::errc() && stop == last && code > 0 && code <= 0x10FFFF;
    return {code, isGood ? end + 1 : 0};
}

// What a page's value and the bytes that a browser makes of it have in common: the browser ends
// lines by CR and LF, writes what the charset lacks as a reference, and a broken byte as another
// mark than we do.
std::string Common(std::string_view utf8) {
    constexpr char32_t kBroken = 0xFFFD;
    std::string common;
    while (!utf8.empty()) {
        const auto [code, length] = ReferenceAt(utf8);
        if (length != 0) {
            AppendUtf8(code == kBroken ? '?' : code, &common);
        } else if (utf8[0] == '\r') {
            common += utf8.starts_with("\r\n") ? "" : "\n";
        } else {
            common += utf8[0];
        }
        utf8.remove_prefix(std::max<size_t>(length, 1));
    }
    return common;
}

bool IsFilledByTheBrowser(const Field& field) {
    return Lowered(field.name) == "_charset_";
}

bool IsOfField(const FormPairs::value_type& pair, const Field& field, Charset charset) {
    if (field.name.empty() || Common(ToUtf8(pair.first, charset)) != Common(field.name))
        return false;
    return field.kind == Kind::kOther || IsFilledByTheBrowser(field) ||
           Common(ToUtf8(pair.second, charset)) == Common(field.value);
}

bool IsSentAlways(const Field& field) {
    return field.kind == Kind::kHidden && !field.name.empty();
}

} // namespace

std::vector<PageForm> ParseForms(const HtmlTree& page) {
    std::vector<PageForm> forms;
    for (HtmlNode* node = page.Root(); node != nullptr; node = NextNode(node, page.Root())) {
        if (NameOf(node) == "form")
            forms.push_back(
                {AttributeOf(node, "action"), Lowered(AttributeOf(node, "method")), {}});
        else if (IsField(node) && !forms.empty())
            forms.back().fields.push_back(FieldOf(node));
    }
    return forms;
}

std::optional<PageForm> FormToSend(const std::vector<PageForm>& forms) {
    const auto form = std::ranges::find(forms, "post", &PageForm::method);
    return form == forms.end() ? std::nullopt : std::optional(*form);
}

bool IsOfForm(const FormPairs& pairs, const PageForm& form, Charset charset) {
    auto pair = pairs.begin();
    int buttons = 0;
    for (const Field& field : form.fields) {
        if (pair != pairs.end() && IsOfField(*pair, field, charset)) {
            buttons += field.kind == Kind::kButton;
            ++pair;
        } else if (IsSentAlways(field)) {
            return false;
        }
    }
    return pair == pairs.end() && buttons <= 1;
}

} // namespace gate
