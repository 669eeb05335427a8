#include "settings/Services.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

TEST(Services, TakesWhatMakesSenseAndKeepsTheDefaultsElsewhere) {
    const Services defaults;
    const struct {
        const char* text;
        std::string host;
        std::string page;
    } kCases[] = {
        {"", defaults.portalHost, defaults.searchPage},
        {"# portal_host = x\n portal_host=a.b \r\n", "a.b", defaults.searchPage},
        {"search_page = http://s/?q=%s&x=1", defaults.portalHost, "http://s/?q=%s&x=1"},
        {"portal_host =\nportal_host = a/b\n", defaults.portalHost, defaults.searchPage},
        {"search_page = http://s/?q=%s%s\nsearch_page = ftp://%s\nno sense\n=\n",
         defaults.portalHost, defaults.searchPage},
    };
    for (const auto& item : kCases) {
        const Services services = ParseServices(item.text);
        EXPECT_EQ(services.portalHost, item.host) << item.text;
        EXPECT_EQ(services.searchPage, item.page) << item.text;
    }
}

TEST(Services, AMissingFileMeansTheDefaults) {
    ScratchFolder folder;
    EXPECT_EQ(ReadServices((folder / "services.txt").c_str()).portalHost, Services().portalHost);
    folder.Write("services.txt", "portal_host = h\n");
    EXPECT_EQ(ReadServices((folder / "services.txt").c_str()).portalHost, "h");
}
