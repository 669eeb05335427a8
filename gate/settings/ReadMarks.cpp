#include "settings/ReadMarks.h"

#include <algorithm>

namespace gate {

namespace {

const std::map<std::string, PostKind>& PostKinds() {
    static const std::map<std::string, PostKind> kKinds = {{"bbs", PostKind::kBbs},
                                                           {"utf8", PostKind::kUtf8},
                                                           {"rawmode", PostKind::kRawmode},
                                                           {"offlaw", PostKind::kOfflaw}};
    return kKinds;
}

// A code that stands there already is changed, another added.
void ReadCodes(Section* answer, std::vector<std::string>* remarks, AnswerMarks* marks) {
    const toml::node* node = answer->Take("codes");
    if (node == nullptr)
        return;
    for (const auto& [key, item] : TableOf(*node, "answer.codes")) {
        const std::string code(key.str());
        auto known = std::ranges::find(marks->codes, code, &AnswerCode::code);
        if (known == marks->codes.end())
            known = marks->codes.insert(known, {code, "", ""});
        Section section(TableOf(item, "answer.codes." + code), "answer.codes." + code);
        section.Text("meaning", &known->meaning);
        section.Text("broken_cookie", &known->brokenCookie);
        section.Remark(remarks);
    }
}

void ReadFields(Section* section, FormShape* form) {
    const toml::node* node = section->Take("fields");
    if (node == nullptr)
        return;
    form->fields.clear();
    section->ForEach(*node, "fields", [form](const toml::node& item) {
        const toml::array* pair = item.as_array();
        if (pair == nullptr || pair->size() != 2)
            Refuse(item, "fields takes [\"NAME\", \"VALUE\"]");
        form->fields.emplace_back(TextOf(*pair->get(0)), TextOf(*pair->get(1)));
    });
}

void ReadForm(Section* section, FormShape* form) {
    section->Text("path", &form->path);
    section->Text("page", &form->page);
    section->Whole("seconds_before", 0, 86400, &form->secondsBefore);
    if (const toml::node* charset = section->Take("charset"))
        form->charset = CharsetOf(*charset);
    ReadFields(section, form);
}

} // namespace

void ReadPageMarks(Section* section, PageMarks* marks) {
    section->Texts("post", &marks->post);
    section->Texts("number", &marks->number);
    section->Texts("name", &marks->name);
    section->Texts("date", &marks->date);
    section->Texts("user", &marks->user);
    section->Texts("be", &marks->be);
    section->Texts("message", &marks->message);
    section->Texts("title", &marks->title);
    section->Texts("pictures", &marks->pictures);
    section->Text("end", &marks->end);
}

void ReadAnswerMarks(Section* section, std::vector<std::string>* remarks, AnswerMarks* marks) {
    section->Texts("posted_titles", &marks->postedTitles);
    section->Texts("error_titles", &marks->errorTitles);
    section->Texts("confirmation_titles", &marks->confirmationTitles);
    section->Text("comment_mark", &marks->commentMark);
    section->Text("posted_word", &marks->postedWord);
    section->Text("confirmation_word", &marks->confirmationWord);
    section->Text("error_word", &marks->errorWord);
    section->Text("code_header", &marks->codeHeader);
    section->Text("number_header", &marks->numberHeader);
    section->Text("confirmation_code", &marks->confirmationCode);
    section->Text("broken_mark", &marks->brokenMark);
    section->Texts("proofs", &marks->proofs);
    marks->codeHeader = LowerCase(marks->codeHeader);
    marks->numberHeader = LowerCase(marks->numberHeader);
    ReadCodes(section, remarks, marks);
}

void ReadForms(Section* section, std::vector<std::string>* remarks,
               std::map<PostKind, FormShape>* forms) {
    for (const auto& [name, kind] : PostKinds())
        section->Table(name, remarks,
                       [form = &(*forms)[kind]](Section* inner) { ReadForm(inner, form); });
}

PostKind PostKindOf(const toml::node& node) {
    const auto known = PostKinds().find(TextOf(node));
    if (known == PostKinds().end())
        Refuse(node, "post is \"bbs\", \"utf8\", \"rawmode\" or \"offlaw\"");
    return known->second;
}

Charset CharsetOf(const toml::node& node) {
    const std::string name = TextOf(node);
    if (name != "cp932" && name != "euc-jp" && name != "utf-8")
        Refuse(node, "charset is \"cp932\", \"euc-jp\" or \"utf-8\"");
    return name == "cp932" ? Charset::kCp932 : name == "euc-jp" ? Charset::kEucJp : Charset::kUtf8;
}

} // namespace gate
