#pragma once

#include "convert/Encodings.h"
#include "post/FormBody.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gate {

class HtmlTree;

// A form in a server's page. All texts are UTF-8, with their references decoded.
struct PageForm {
    enum class Kind {
        kHidden,
        kButton, // sent by whoever presses it
        kOther,  // what a reader fills in
    };
    struct Field {
        Kind kind;
        std::string name, value, type;
    };
    std::string action, method; // the method in lower case
    std::vector<Field> fields;
};

// The forms of a page in its order. A field belongs to the form that began last before it.
std::vector<PageForm> ParseForms(const HtmlTree& page);

// The one that a reader is to send; nothing without.
std::optional<PageForm> FormToSend(const std::vector<PageForm>& forms);

// Whether a browser that was shown the form may have sent these pairs: every hidden field as it
// stands there, in the form's order, at most one button, and nothing that the form hasn't got.
bool IsOfForm(const FormPairs& pairs, const PageForm& form, Charset charset);

} // namespace gate
