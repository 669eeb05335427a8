// A server's answer to a post: the line before the first line feed is its code.
#include "Fuzz.h"

#include "convert/HtmlTree.h"
#include "post/Answer.h"
#include "post/PostAnswer.h"

namespace {

void ClaimRefusal(const std::string& words) {
    const std::string page = gate::MakeRefusalPage(words);
    ::PostAnswer answer;
    std::string_view rest = page;
    size_t length = 0;
    while (!rest.empty()) {
        const size_t end = rest.find('\n');
        Claim(end != rest.npos, "every line ends");
        answer.AddLine(rest.data(), static_cast<int32>(end + 1));
        rest.remove_prefix(end + 1);
    }
    length = gate::ToUtf8(page, gate::Charset::kCp932).size();
    Claim(length <= 4095, "a refusal fits");
    Claim(!answer.IsSuccess(), "a refusal is no success");
    Claim(!answer.ErrorText().empty(), "a refusal says something");
    Claim(page.find('&') == page.npos, "a refusal has no references");
}

// What a browser would send of a form when nothing is filled in.
void ClaimForm(const gate::PageForm& form) {
    gate::FormPairs pairs;
    for (const gate::PageForm::Field& field : form.fields) {
        if (field.kind == gate::PageForm::Kind::kHidden && !field.name.empty())
            pairs.emplace_back(field.name, field.value);
    }
    Claim(gate::ParseFormBody(gate::MakeFormBody(pairs)) == pairs, "pairs come back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const std::string text = TextOf(data, size);
    const size_t end = std::min(text.find('\n'), text.size());
    const std::string_view body = std::string_view(text).substr(std::min(end + 1, text.size()));
    gate::AnswerMarks marks;
    marks.codes = {{"E3000", "invalid", "ticket"}};
    const gate::PostAnswer answer =
        gate::JudgeAnswer({200, body, std::string_view(text).substr(0, end), ""}, marks);
    Claim(body.starts_with(answer.page), "a page is shown byte for byte");
    ClaimRefusal(answer.words);
    const gate::HtmlTree page(gate::ToUtf8(body, gate::Charset::kUtf8));
    for (const gate::PageForm& form : gate::ParseForms(page))
        ClaimForm(form);
    gate::MakeFormBody(gate::ParseFormBody(body));
    return 0;
}
