#include <gtest/gtest.h>

#include "adapters/html/Html.h"

namespace quillbox {
namespace {

struct Case {
    std::string written;
    std::string resolved;
};

class HtmlAddresses : public testing::Test {
  protected:
    std::string resolved(const std::string& head, const std::string& address, const std::string& tag = "a",
                         const std::string& attribute = "href") {
        const auto document = mFactory->NewDocument("<head>" + head + "</head><body><" + tag + " " +
                                                    attribute + "=\"" + address + "\"></body>");
        return document->all()->tags(tag)->Items().at(0)->getAttribute(attribute);
    }

    void expectAll(const std::string& head, const std::vector<Case>& cases) {
        for (const auto& [written, expected] : cases) {
            EXPECT_EQ(resolved(head, written), expected) << head << " " << written;
        }
    }

    std::shared_ptr<DOMFactory> mFactory = makeHtmlFactory();
};

TEST_F(HtmlAddresses, WithoutABaseRelativeOnesComeBackBehindAboutBlank) {
    expectAll("", {{"Topic1.html", "about:blankTopic1.html"},
                   {"Topic1.html#x", "about:blankTopic1.html#x"},
                   {"sub/a%20b.gif", "about:blanksub/a%20b.gif"},
                   {"sub\\a.gif", "about:blanksub\\a.gif"},
                   {"../x", "about:blank../x"},
                   {"?a=1", "about:blank?a=1"},
                   {" Topic1.html\n", "about:blankTopic1.html"}});
    EXPECT_EQ(resolved("", "x.png", "img", "src"), "about:blankx.png");
    EXPECT_EQ(resolved("", "x.png", "img", "SRC"), "about:blankx.png");
    EXPECT_EQ(resolved("", "x.png", "a", "title"), "x.png");
}

TEST_F(HtmlAddresses, WhatIsNotRelativeComesBackAsWritten) {
    for (const std::string head : {"", "<base href='/p/'>", "<base href='http://h/p/'>"}) {
        for (const std::string address :
             {"", "#", "#x", "http://a/../b", "HTTPS://a", "mailto:a@b", "javascript:f('x')", "ftp://x",
              "C:\\x.html", "ms-its:a.chm::/b.htm", "file:///C:/x%20y"}) {
            EXPECT_EQ(resolved(head, address), address);
        }
    }
}

TEST_F(HtmlAddresses, AFolderAsBaseBecomesAFileAddress) {
    expectAll("<base href=\"/home/me/My Project/\"/>",
              {{"x y.html", "file:///home/me/My Project/x y.html"},
               {"x%20y.html#b", "file:///home/me/My Project/x%20y.html#b"},
               {"sub\\x.html", "file:///home/me/My Project/sub/x.html"},
               {"./x.html", "file:///home/me/My Project/x.html"},
               {"../x.html", "file:///home/me/x.html"},
               {"../../../../../x.html", "file:///x.html"},
               {"/x.html", "file:///x.html"},
               {"//host/x.html", "file://host/x.html"},
               {"?q", "file:///home/me/My Project/?q"}});
    expectAll("<base href=\"c:\\proj\\\"/>",
              {{"x y.html", "file:///c:/proj/x y.html"}, {"../x.html", "file:///c:/x.html"}});
    expectAll("<base href=\"/a/../b#1/100%/?/\"/>", {{"x", "file:///a/../b#1/100%/?/x"}});
    expectAll("<base href=\"\\\\server\\share\\\"/>", {{"x", "file:////server/share/x"}});
    EXPECT_EQ(resolved("<base href=\"/p/\"/>", "i/x.png", "img", "src"), "file:///p/i/x.png");
}

TEST_F(HtmlAddresses, AnAddressAsBaseIsResolvedByTheRulesOfTheWeb) {
    expectAll("<base href=\"http://a/b/c/d;p?q\">", {{"g:h", "g:h"},
                                                     {"g", "http://a/b/c/g"},
                                                     {"./g", "http://a/b/c/g"},
                                                     {"g/", "http://a/b/c/g/"},
                                                     {"/g", "http://a/g"},
                                                     {"//g", "http://g"},
                                                     {"?y", "http://a/b/c/d;p?y"},
                                                     {"g?y", "http://a/b/c/g?y"},
                                                     {"#s", "#s"},
                                                     {"g#s", "http://a/b/c/g#s"},
                                                     {"g?y#s", "http://a/b/c/g?y#s"},
                                                     {";x", "http://a/b/c/;x"},
                                                     {"g;x=1/../y", "http://a/b/c/y"},
                                                     {".", "http://a/b/c/"},
                                                     {"./", "http://a/b/c/"},
                                                     {"..", "http://a/b/"},
                                                     {"../g", "http://a/b/g"},
                                                     {"../..", "http://a/"},
                                                     {"../../../g", "http://a/g"},
                                                     {"/./g", "http://a/g"},
                                                     {"/../g", "http://a/g"},
                                                     {"g.", "http://a/b/c/g."},
                                                     {"..g", "http://a/b/c/..g"},
                                                     {"g?y/../x", "http://a/b/c/g?y/../x"},
                                                     {"g#s/../x", "http://a/b/c/g#s/../x"}});
    expectAll("<base href=\"https://host\">", {{"x", "https://host/x"}});
    expectAll("<base href=\"file:///C:/p/index.html\">", {{"x", "file:///C:/p/x"}});
}

TEST_F(HtmlAddresses, WhatIsNeitherFolderNorAddressIsNoBase) {
    for (const std::string head : {"<base>", "<base href>", "<base href='  '>", "<base href='sub/'>",
                                   "<base href='mailto:x'>", "<base target=_top>"}) {
        EXPECT_EQ(resolved(head, "x"), "about:blankx") << head;
    }
}

TEST_F(HtmlAddresses, TheFirstBaseWithAnAddressCounts) {
    EXPECT_EQ(resolved("<base target=x><base href='/a/'><base href='/b/'>", "x"), "file:///a/x");
}

TEST_F(HtmlAddresses, AChangedBaseCountsAtOnce) {
    const auto document = mFactory->NewDocument("<base href='/a/'><a href=x>y</a>");
    const auto link = document->all()->tags("a")->Items().at(0);
    const auto base = document->all()->tags("base")->Items().at(0);
    EXPECT_EQ(link->getAttribute("href"), "file:///a/x");
    base->setAttribute("href", "/b/");
    EXPECT_EQ(link->getAttribute("href"), "file:///b/x");
    base->setOuterHTML("");
    EXPECT_EQ(link->getAttribute("href"), "about:blankx");
}

TEST_F(HtmlAddresses, StoredTextIsNeverResolved) {
    const std::string html = "<head><base href=\"/a/\"></head><body><a href=x>y</a></body>";
    const auto document = mFactory->NewDocument(html);
    EXPECT_EQ(document->all()->tags("a")->Items().at(0)->getAttribute("href"), "file:///a/x");
    EXPECT_EQ(document->documentElement()->outerHTML(), html);
}

}  // namespace
}  // namespace quillbox
