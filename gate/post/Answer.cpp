#include "post/Answer.h"

#include "convert/HtmlTree.h"
#include "convert/Words.h"
#include "post/PageWords.h"

#include <algorithm>

namespace gate {

namespace {

using Outcome = PostAnswer::Outcome;

constexpr size_t kLongestWords = 2000;

std::string FirstPage(std::string_view body) {
    constexpr std::string_view kEnd = "</html>";
    const size_t end = Lowered(body).find(kEnd);
    return std::string(end == body.npos ? body : body.substr(0, end + kEnd.size()));
}

bool Holds(std::string_view text, const std::vector<std::string>& words) {
    return std::ranges::any_of(words, [text](auto& word) { return text.find(word) != text.npos; });
}

// The word of a comment like "<!-- 2ch_X:cookie -->".
std::string CommentWord(const std::string& utf8, const AnswerMarks& marks) {
    for (size_t at = utf8.find("<!--"); at != utf8.npos; at = utf8.find("<!--", at + 1)) {
        std::string_view comment = std::string_view(utf8).substr(at, 64);
        comment = comment.substr(0, comment.find("-->"));
        const size_t mark = comment.find(marks.commentMark);
        if (mark != comment.npos)
            return std::string(Trimmed(comment.substr(mark + marks.commentMark.size())));
    }
    return "";
}

// Whether the page sends its reader elsewhere, as servers do when they took a post.
bool HasRefresh(const HtmlTree& page) {
    for (HtmlNode* node = page.Root(); node != nullptr; node = NextNode(node, page.Root())) {
        if (NameOf(node) == "meta" &&
            Lowered(Trimmed(AttributeOf(node, "http-equiv"))) == "refresh")
            return true;
    }
    return false;
}

// Whether a reader must type something.
bool HasTypedField(const std::vector<PageForm>& forms) {
    const auto isTyped = [](const PageForm::Field& field) {
        return field.kind == PageForm::Kind::kOther && field.type != "checkbox" &&
               field.type != "radio";
    };
    return std::ranges::any_of(forms, [isTyped](const PageForm& form) {
        return std::ranges::any_of(form.fields, isTyped);
    });
}

// All that a judgement looks at.
struct Signs {
    const PostReply& reply;
    const AnswerMarks& marks;
    std::string title, comment, code;
    std::string start; // of the words
    bool hasRefresh, hasTypedField, hasProof;
};

bool IsConfirmation(const Signs& signs) {
    return Holds(signs.title, signs.marks.confirmationTitles) ||
           signs.comment == signs.marks.confirmationWord ||
           signs.code == signs.marks.confirmationCode;
}

bool IsError(const Signs& signs) {
    return !signs.code.empty() || signs.comment == signs.marks.errorWord ||
           Holds(signs.title, signs.marks.errorTitles) || signs.reply.status >= 400 ||
           Holds(signs.start, signs.marks.errorTitles);
}

bool IsPosted(const Signs& signs) {
    return !Trimmed(signs.reply.number).empty() || signs.comment == signs.marks.postedWord ||
           Holds(signs.title, signs.marks.postedTitles);
}

// What the server says outright goes before what its page merely looks like: challenges of content
// networks send their readers elsewhere too.
Outcome Judge(const Signs& signs) {
    if (IsPosted(signs))
        return Outcome::kPosted;
    if (signs.hasProof)
        return Outcome::kProof;
    if (IsConfirmation(signs))
        return signs.hasTypedField ? Outcome::kProof : Outcome::kConfirmation;
    if (IsError(signs))
        return Outcome::kRefused;
    if (signs.hasTypedField)
        return Outcome::kProof;
    return signs.hasRefresh ? Outcome::kPosted : Outcome::kUnclear;
}

void AddMeaning(const Signs& signs, PostAnswer* answer) {
    const auto known = std::ranges::find(signs.marks.codes, signs.code, &AnswerCode::code);
    if (known == signs.marks.codes.end()) {
        if (!signs.code.empty() && signs.code != signs.marks.confirmationCode)
            answer->words += "(" + ToUtf8(signs.reply.code, Charset::kUtf8) + ")\n";
        return;
    }
    answer->words += "(" + known->code + ": " + known->meaning + ")\n";
    if (!known->brokenCookie.empty())
        answer->brokenCookies.push_back(known->brokenCookie);
}

// "[Broken NAME]" behind a code.
void AddBrokenCookie(std::string_view code, const AnswerMarks& marks, PostAnswer* answer) {
    const size_t at = code.find(marks.brokenMark);
    if (at == code.npos || marks.brokenMark.empty())
        return;
    code.remove_prefix(at + marks.brokenMark.size());
    const std::string_view name = code.substr(0, code.find(']'));
    if (!name.empty() && name.size() < code.size())
        answer->brokenCookies.emplace_back(name);
}

std::string TitleOf(const HtmlTree& page) {
    HtmlNode* title = page.Root() == nullptr ? nullptr : FindElement(page.Root(), "title");
    return title == nullptr ? "" : TextOf(title);
}

} // namespace

PostAnswer JudgeAnswer(const PostReply& reply, const AnswerMarks& marks) {
    PostAnswer answer;
    answer.page = FirstPage(reply.body);
    answer.charset = GuessCharset(answer.page);
    const std::string utf8 = ToUtf8(answer.page, answer.charset);
    const HtmlTree page(utf8);
    answer.words = WordsOf(page, kLongestWords);
    const std::vector<PageForm> forms = ParseForms(page);
    const std::string_view code = Trimmed(reply.code);
    const Signs signs{reply,
                      marks,
                      TitleOf(page),
                      CommentWord(utf8, marks),
                      std::string(code.substr(0, code.find(' '))),
                      answer.words.substr(0, answer.words.find('\n')),
                      HasRefresh(page),
                      HasTypedField(forms),
                      FindClass(page.Root(), marks.proofs) != nullptr};
    answer.outcome = Judge(signs);
    AddMeaning(signs, &answer);
    AddBrokenCookie(code, marks, &answer);
    if (answer.outcome == Outcome::kConfirmation)
        answer.form = FormToSend(forms);
    return answer;
}

} // namespace gate
