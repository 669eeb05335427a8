#include "post/PageForm.h"
#include "convert/HtmlTree.h"

#include <gtest/gtest.h>

using gate::Charset;
using gate::FormPairs;
using gate::PageForm;

namespace {

std::string Sjis(std::string_view utf8) {
    return gate::ToCp932(utf8, Charset::kUtf8);
}

PageForm OnlyForm(const std::string& html) {
    const std::vector<PageForm> forms = gate::ParseForms(gate::HtmlTree(html));
    EXPECT_EQ(forms.size(), 1u);
    return forms.empty() ? PageForm() : forms[0];
}

std::string Hidden(const PageForm& form) {
    std::string text;
    for (const PageForm::Field& field : form.fields) {
        if (field.kind == PageForm::Kind::kHidden)
            text += field.name + "=" + field.value + "|";
    }
    return text;
}

const std::string kText(8000, 'x');
// One line without a line feed, as servers send it.
const std::string kForm =
    "<html><body><form method=\"POST\" action='../test/bbs.cgi?guid=ON'>"
    "<input type=hidden name=FROM value><input type=\"hidden\" name=\"mail\" value=\"sage\">"
    "<INPUT TYPE=HIDDEN NAME=MESSAGE VALUE=\"一行目\n&gt;&gt;1 &quot;a&quot; "
    "&#128512;～&amp;amp; " +
    kText +
    "\"><input type=hidden name=bbs value=news><input type=hidden name=time value=1712000000>"
    "<input type=hidden name=key value='1711999999'><input type=hidden name=oekaki_thread1 value=>"
    "<input type=hidden name=feature value=confirmed:0123456789abcdef0123456789abcdef01234567>"
    "<input type=submit value=\"上記全てを承諾して書き込む\" name=submit></form></body></html>";

// What a browser sends of it, in Shift_JIS.
FormPairs Sent() {
    return {{"FROM", ""},
            {"mail", "sage"},
            {"MESSAGE", Sjis("一行目\r\n>>1 \"a\" &#128512;～&amp; " + kText)},
            {"bbs", "news"},
            {"time", "1712000000"},
            {"key", "1711999999"},
            {"oekaki_thread1", ""},
            {"feature", "confirmed:0123456789abcdef0123456789abcdef01234567"},
            {"submit", Sjis("上記全てを承諾して書き込む")}};
}

} // namespace

TEST(FormBody, PairsComeAndGoByteForByte) {
    const struct {
        const char* body;
        FormPairs pairs;
        const char* again;
    } kCases[] = {
        {"", {}, ""},
        {"a=b&c=d", {{"a", "b"}, {"c", "d"}}, "a=b&c=d"},
        {"FROM=&mail&&x==", {{"FROM", ""}, {"mail", ""}, {"x", "="}}, "FROM=&mail=&x=%3D"},
        {"M=%82%a0+%26%0D%0A", {{"M", "\x82\xA0 &\r\n"}}, "M=%82%A0+%26%0D%0A"},
        {"a=%&b=%4&c=%zz&d=100%25&%41=1",
         {{"a", "%"}, {"b", "%4"}, {"c", "%zz"}, {"d", "100%"}, {"A", "1"}},
         "a=%25&b=%254&c=%25zz&d=100%25&A=1"},
    };
    for (const auto& item : kCases) {
        EXPECT_EQ(gate::ParseFormBody(item.body), item.pairs) << item.body;
        EXPECT_EQ(gate::MakeFormBody(item.pairs), item.again) << item.body;
    }
    EXPECT_EQ(gate::ValueOf({{"a", "1"}, {"a", "2"}}, "a"), "1");
    EXPECT_EQ(gate::ValueOf({}, "a"), std::nullopt);
}

TEST(PageForm, FieldsAreReadHoweverTheirAttributesAreWritten) {
    const PageForm form = OnlyForm(kForm);
    EXPECT_EQ(form.method, "post");
    EXPECT_EQ(form.action, "../test/bbs.cgi?guid=ON");
    EXPECT_EQ(Hidden(form), "FROM=|mail=sage|MESSAGE=一行目\n>>1 \"a\" 😀～&amp; " + kText +
                                "|bbs=news|time=1712000000|key=1711999999|oekaki_thread1=|"
                                "feature=confirmed:0123456789abcdef0123456789abcdef01234567|");
    EXPECT_EQ(form.fields.back().kind, PageForm::Kind::kButton);
    EXPECT_EQ(form.fields.back().value, "上記全てを承諾して書き込む");
}

TEST(PageForm, FieldsOutsideTheirFormsElementBelongToIt) {
    EXPECT_EQ(Hidden(OnlyForm("<input type=hidden name=x value=0><table><form action=a><tr><td>"
                              "<input type=hidden name=a value=1></tr></form></table><center>"
                              "<input type=hidden name=b value=2></center>")),
              "a=1|b=2|");
}

TEST(PageForm, WhatABrowserSendsOfItIsItsOwn) {
    const PageForm form = OnlyForm(kForm);
    EXPECT_TRUE(gate::IsOfForm(Sent(), form, Charset::kCp932));
    // By the return key no button is sent.
    FormPairs withoutButton = Sent();
    withoutButton.pop_back();
    EXPECT_TRUE(gate::IsOfForm(withoutButton, form, Charset::kCp932));
}

TEST(PageForm, EverythingElseIsNot) {
    const PageForm form = OnlyForm(kForm);
    for (size_t i = 0; i < Sent().size(); i++) {
        FormPairs changed = Sent();
        changed[i].second += 'x';
        EXPECT_FALSE(gate::IsOfForm(changed, form, Charset::kCp932)) << i;
        FormPairs shorter = Sent();
        shorter.erase(shorter.begin() + static_cast<long>(i));
        EXPECT_EQ(gate::IsOfForm(shorter, form, Charset::kCp932), i == Sent().size() - 1) << i;
        FormPairs doubled = Sent();
        doubled.insert(doubled.begin() + static_cast<long>(i), doubled[i]);
        EXPECT_FALSE(gate::IsOfForm(doubled, form, Charset::kCp932)) << i;
        if (i > 0) {
            FormPairs swapped = Sent();
            std::swap(swapped[i - 1], swapped[i]);
            EXPECT_FALSE(gate::IsOfForm(swapped, form, Charset::kCp932)) << i;
        }
    }
    FormPairs more = Sent();
    more.emplace_back("sid", "1");
    EXPECT_FALSE(gate::IsOfForm(more, form, Charset::kCp932));
    EXPECT_FALSE(gate::IsOfForm({}, form, Charset::kCp932));
}
