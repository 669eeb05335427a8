#include "Text.h"

#include "convert/ReadCgiPage.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    const char* what;
    int version;
    std::string page, lines;
};

// The same three posts as each version of the servers' and archives' page makers writes them.
const Case kCases[] = {
    {"dt and dd", 5, R"(<html><head><title>題名 &amp; 😀</title></head><body>
<h1 style="color:red">題名 &amp; 😀</h1><dl class="thread">
<dt>1 ：<a href="mailto:sage"><b>名無し</b></a>：2008/01/02(水) 03:04:05 ID:abc<dd> 一行目 <br> &gt;&gt;2 &lt;b&gt; <br><br>
<dt>2 ：<font color=green><b>名 </b>◆trip <b></b></font>：2008/01/02(水) 03:04:06 ID:d <a href="javascript:be(123);">?2BP(45)</a><dd> <a href="../test/read.cgi/board/1712000000/1" target="_blank">&gt;&gt;1</a> <br>  <br> <a href="http://jump.example.net/?http://x.example/" target="_blank">http://x.example/</a> <br><br>
<dt>3 ：<a href="mailto:a%b&lt;"><b>あぼーん</b></a>：あぼーん<dd>あぼーん <br><br>
</dl><hr>read.cgi ver 05.04.00 2008/02/01</body></html>)",
     "1|名無し<>sage<>2008/01/02(水) 03:04:05 ID:abc<> 一行目 <br> &gt;&gt;2 &lt;b&gt; "
     "<>題名 &amp; &#128512;\n"
     "2|名 </b>◆trip <b><><>2008/01/02(水) 03:04:06 ID:d BE:123-2BP(45)<> "
     "<a href=\"../test/read.cgi/board/1712000000/1\" target=\"_blank\">&gt;&gt;1</a> <br>  <br> "
     "http://x.example/ <>\n"
     "3|あぼーん<>a%b&lt;<>あぼーん<> あぼーん <>\n"},
    {"a log of 2001", 0, R"(<html><title>昔</title><body><dl>
<dt>1 名前：<font color=forestgreen><b>名無し</b></font> 投稿日：2001/02/03(土) 04:05<dd>本文<br>続き<br><br>
</dl></body></HTML>)",
     "1|名無し<><>2001/02/03(土) 04:05<> 本文 <br> 続き <>昔\n"},
    {"tags left open", 0, R"(<html><title>題</title><dl>
<dt>1 ：<b>a</b>：d1<dd> <b>太字 <br><br><dt>2 ：<b>b</b>：d2<dd> <i><font>次 <br><br>
<dt>3 ：<font><b>c</b></font>：d3<dd> 三 <br><br></dl></html>)",
     "1|a<><>d1<> 太字 <>題\n2|b<><>d2<> 次 <>\n3|c<><>d3<> 三 <>\n"},
    {"blocks left open", 0, R"(<html><title>題</title>
<article class=post id=1><span class=date>d1</span><section class=post-content> <div>一 </section></article>
<article class=post id=2><span class=date>d2</span><section class=post-content> 二 </section></article></html>)",
     "1| <><>d1<> 一 <>題\n2| <><>d2<> 二 <>\n"},
    {"divs", 6,
     R"(<html><head><title>題名</title></head><body><h1 class="title">題名</h1><div class="thread">
<div class="post" id="1"><div class="number">1 : </div><div class="name"><b><a href="mailto:sage">名無し</a></b></div><div class="date">2017/01/02(月) 03:04:05.67 ID:abc</div><div class="message"> 一行目 <br>  字下げ <br> <img src="//img.example.net/ico/u.gif"><img src="//ads.example/x.png"> </div></div>
<div class="post" id="2"><div class="number">2 : </div><div class="name"><b>名 </b>◆trip<b></b></div><div class="date">2017/01/02(月) 03:04:06.00 ID:d <a href="http://be.example.net/user/123" target="_blank">?DIA(45)</a></div><div class="message"> <a href="../test/read.cgi/b/17/1-2" class="reply_link">&gt;&gt;1-2</a> </div></div>
</div>read.cgi ver 06.01</body></html>)",
     "1|名無し<>sage<>2017/01/02(月) 03:04:05.67 ID:abc<> 一行目 <br>  字下げ <br> "
     "sssp://img.example.net/ico/u.gif <>題名\n"
     "2|名 </b>◆trip<b><><>2017/01/02(月) 03:04:06.00 ID:d BE:123-DIA(45)<> "
     "<a href=\"../test/read.cgi/b/17/1-2\" target=\"_blank\">&gt;&gt;1-2</a> <>\n"},
    {"definition lists with classes", 6, R"(<html><title>題名</title><body>
<dl class="post" id="1"><dt class="post-head"><span class="number">1</span><span class="name"><a href="mailto:sage"><b>名無し</b></a></span><span class="date">2016/01/02(土) 03:04:05.67 ID:0</span></dt><dd class="thread_in"> 本文 </dd></dl>
<dl class="post" id="2"><dt>2 ：<font color="green"><b>名無し</b></font>：2016/01/02(土) 03:04:06</dt><dd class="thread_in">次<br></dd></dl>
read.cgi ver 06</body></html>)",
     "1|名無し<>sage<>2016/01/02(土) 03:04:05.67 ID:0<> 本文 <>題名\n"
     "2|名無し<><>2016/01/02(土) 03:04:06<> 次 <>\n"},
    {"spans", 7, R"(<!DOCTYPE html><html><head><meta charset="Shift_JIS"><title>題名
</title></head><body><h1 class="title">題名
</h1><div class="thread"><div class="post" id="1" data-date="NG" data-userid="ID:abc" data-id="1"><div class="meta"><span class="number">1</span><span class="name"><b><a href="mailto:sage">名 </b>◆trip<b></a></b></span><span class="date">2020/01/02(木) 03:04:05.67</span><span class="uid">ID:abc</span><span class="be r2BP"><a href="http://be.example.net/user/123" target="_blank">?2BP(1000)</a></span></div><div class="message"><span class="escaped"> 一行目 <br> <a href="http://jump.example.net/?https://x.example/?a=1&amp;b=2" target="_blank">https://x.example/?a=1&amp;b=2</a> </span></div></div><br><div class="post" id="2" data-date="NG" data-userid="" data-id="2"><div class="meta"><span class="number">2</span><span class="name"><b>名無し</b></span><span class="date">2020/01/02(木) 03:04:06.67</span><span class="uid"></span></div><div class="message"><span class="escaped"><span class="AA"> 　∧＿∧ <br> （　´∀｀） </span></span></div></div><div class="post" id="1001" data-id="3"><div class="meta"><span class="number">0003</span><span class="name"><b>１００１</b></span><span class="date">Over 1000</span><span class="uid">Thread</span></div><div class="message"><span class="escaped"> &amp;#9829; 終わり <script>x()</script></span></div></div></div><footer>read.cgi ver 07.2.0</footer></body></html>)",
     "1|名 </b>◆trip<b><>sage<>2020/01/02(木) 03:04:05.67 ID:abc BE:123-2BP(1000)<> 一行目 <br> "
     "https://x.example/?a=1&amp;b=2 <>題名\n"
     "2|名無し<><>2020/01/02(木) 03:04:06.67<> 　∧＿∧ <br> （　´∀｀） <>\n"
     "3|１００１<><>Over 1000 Thread<> &amp;#9829; 終わり <>\n"},
    {"articles", 7,
     R"(<!DOCTYPE html><html lang="ja"><head><title>題名</title></head><body><div id="threadtitle">題名</div>
<article id="1" data-date="NG" data-userid="ID:abc" data-id="1" class="clear post"><details open class="post-header"><summary><span class="postid">0001</span><span class="postusername"><b><a rel="nofollow" href="mailto:sage">名無し</a></b></span></summary><span class="date">2023/09/02(土) 03:04:05.67</span><span class="uid">ID:abc</span><span class="be r2BP"><a href="https://be.example.net/user/9">?2BP(1)</a></span></details><section class="post-content"> 本文 <br> <a href="https://agree.example.net/test/read.cgi/b/17/1" class="reply_link">&gt;&gt;1</a> </section></article>
<article id="2" data-userid="NG" data-id="2" class="clear post"><details open class="post-header"><summary><form method="get"><button>x</button><span class="postid">2</span></form><span class="postusername"><b>名 </b>◆t <b></b></span></summary><span style="color:gray"><span class="date">2024/04/02(火) 03:04:05.67</span> <span class="uid">NG</span></span></details><section class="post-content">  <a href="/cdn-cgi/l/email-protection" class="__cf_email__" data-cfemail="5532153b">[email&#160;protected]</a>  </section></article>
<footer>read.cgi ver 07.4.1</footer></body></html>)",
     "1|名無し<>sage<>2023/09/02(土) 03:04:05.67 ID:abc BE:9-2BP(1)<> 本文 <br> "
     "<a href=\"../test/read.cgi/b/17/1\" target=\"_blank\">&gt;&gt;1</a> <>題名\n"
     "2|名 </b>◆t <b><><>2024/04/02(火) 03:04:05.67 NG<>  g@n  <>\n"},
    {"the archive of 2026", 8,
     R"(<html><head><title>題名</title></head><body><h1 class="title">題名</h1>
<div id="1" data-date="NG" data-userid="ID:abc" data-id="1" class="clear post">
  <div class="post-header"><div><span class="postid">1</span><span class="postusername"><b>名無し</b></span></div>
    <span class="date">2026/03/06(金) 03:04:05.67</span><span class="uid">ID:abc</span></div>
  <div class="post-content">
    <div><div> 一行目 <br> <br> 三行目 </div></div>
  </div>
</div>
<div id="2" class="clear post"><div class="post-header"><span class="postid">2</span><span class="postusername"><b>名無し</b></span><span class="date">2026/03/06(金) 03:04:06.67</span><span class="uid">ID:d</span></div><div class="post-content"> sssp://img.example.net/ico/a.gif <br> <img src="//img.example.net/emoji/x.gif"> <img src="https://o.example.net/1.png"> 😀 </div></div>
read.cgi ver 08.1</body></html>)",
     "1|名無し<><>2026/03/06(金) 03:04:05.67 ID:abc<> 一行目 <br>  <br> 三行目 <>題名\n"
     "2|名無し<><>2026/03/06(金) 03:04:06.67 ID:d<> sssp://img.example.net/ico/a.gif <br> "
     "sssp://img.example.net/emoji/x.gif sssp://o.example.net/1.png &#128512; <>\n"},
};

} // namespace

TEST(ReadCgiPage, EveryVersionBecomesLinesOfADat) {
    for (const Case& item : kCases) {
        for (const std::string& bytes : {item.page, Sjis(item.page), Euc(item.page)}) {
            const auto page = gate::ParseReadPage(bytes);
            ASSERT_TRUE(page) << item.what;
            EXPECT_EQ(Lines(page->posts), item.lines) << item.what;
            EXPECT_TRUE(page->isWhole) << item.what;
            EXPECT_EQ(page->version, item.version) << item.what;
        }
    }
}

TEST(ReadCgiPage, ACutPageIsNotWhole) {
    for (const Case& item : kCases) {
        const std::string bytes = Sjis(item.page);
        for (size_t length = 0; length < bytes.size() - 1; length += 7) {
            const auto page = gate::ParseReadPage(std::string_view(bytes).substr(0, length));
            EXPECT_FALSE(page && page->isWhole) << item.what << " cut at " << length;
        }
    }
}

TEST(ReadCgiPage, APartOfAThreadIsNotWhole) {
    const auto post = [](int number) {
        return "<div class=post id=" + std::to_string(number) + "><span class=number>" +
               std::to_string(number) + "</span><div class=message> " + std::to_string(number) +
               " </div></div>";
    };
    const auto isWhole = [&post](std::vector<int> numbers) {
        std::string page = "<html><title>t</title>";
        for (const int number : numbers)
            page += post(number);
        const auto parsed = gate::ParseReadPage(page + "</html>");
        return parsed && parsed->isWhole;
    };
    EXPECT_TRUE(isWhole({1}));
    EXPECT_TRUE(isWhole({1, 2, 3, 2}));
    EXPECT_FALSE(isWhole({1, 51, 52}));
    EXPECT_FALSE(isWhole({2, 3}));
    EXPECT_FALSE(isWhole({}));
}

TEST(ReadCgiPage, TagsTooDeepEndAPageThatIsNotWhole) {
    std::string page = "<html><div class=post id=1><div class=message> 1 </div></div>";
    for (int i = 0; i < 5000; i++)
        page += "<div><span>";
    const auto parsed = gate::ParseReadPage(page + "</html>");
    ASSERT_TRUE(parsed);
    EXPECT_FALSE(parsed->isWhole);
}

TEST(ReadCgiPage, OtherPagesAreNone) {
    for (const char* page : {"", "<html></html>", "not a page", "<html><body>404</body></html>",
                             "<div class=post></div>", "<dt>1<dt>2</html>", "\xFF\xFE"})
        EXPECT_FALSE(gate::ParseReadPage(page)) << page;
}

TEST(ReadCgiPage, MarksOfSettingsReplaceTheKnownOnes) {
    gate::PageMarks marks;
    marks.post = {"res"};
    marks.message = {"text"};
    marks.end = "";
    const auto page = gate::ParseReadPage(
        "<title>t</title><p class='a res' id=1><span class=name>n</span><span class=text>x</span>",
        marks);
    ASSERT_TRUE(page);
    EXPECT_EQ(Lines(page->posts), "1|n<><><> x <>t\n");
    EXPECT_TRUE(page->isWhole);
}
