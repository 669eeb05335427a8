#include "Scratch.h"

#include "Posts.h"

#include "cache/NPCache.h"
#include "server/Text.h"
#include "settings/SettingsFile.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

constexpr int kCategories = 40;
constexpr int kBoardsEach = 15;

void Write(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

} // namespace

std::string LongThreadKey(int index) {
    return std::to_string(1011800000 + index);
}

std::string LongThreadTitle(int index) {
    return "長いスレッド その" + std::to_string(index);
}

Scratch::Scratch() {
    fPath = (fs::temp_directory_path() / "itamori-bench-XXXXXX").string();
    if (mkdtemp(fPath.data()) == nullptr)
        abort();
    setenv("XDG_CONFIG_HOME", (fPath + "/settings").c_str(), 1);
    fs::create_directories(fPath + "/settings/2ch");
    fs::create_directories(ForGate());
    const fs::path self = fs::read_symlink("/proc/self/exe");
    fs::copy_file(self, Bench());
    fs::copy_file(self.parent_path() / "itamori", Itamori());
    _WriteMenu();
    _WriteBoards();
}

Scratch::~Scratch() {
    std::error_code ignored;
    fs::remove_all(fPath, ignored);
}

void Scratch::_WriteMenu() const {
    std::string page = "<HTML><BODY>\n<B>BBS</B>\n";
    for (int category = 1; category <= kCategories; category++) {
        page += "<BR><BR><B>分類 " + std::to_string(category) + "</B><br>\n";
        for (int board = 1; board <= kBoardsEach; board++) {
            const std::string name = std::to_string(category) + "-" + std::to_string(board);
            page += "<A HREF=http://board.example/b" + name + "/>掲示板 " + name + "</A>";
            page += board < kBoardsEach ? "<br>\n" : "\n";
        }
    }
    Write(fPath + "/bbs/newbbsmenu.html", toCp932(page + "</BODY></HTML>\n"));
}

void Scratch::_WriteBoards() const {
    Write(Boards() + "/boards.txt", "[新聞] board.example\nnews ニュース\n");
    for (int i = 0; i < kLongThreads; i++) {
        std::string text = LongThreadTitle(i) + "\n";
        for (const SamplePost& post : MakePosts(kLongThreadPosts))
            text +=
                "* " + post.name + "; " + post.mail + "; " + post.date + "\n" + post.body + "\n";
        Write(Boards() + "/news/" + LongThreadKey(i) + ".txt", text);
    }
}

void Scratch::SaveSettings(const std::string& port) const {
    SettingsFile settings("Itamori", "2ch");
    settings.AddBool("proxy", true);
    settings.AddBool("enable_cache", true);
    settings.AddString("proxy_host", "127.0.0.1");
    settings.AddString("proxy_port", port.c_str());
    settings.Save();
}

void Scratch::FillCache(int threads) const {
    const std::string line = MakeDat(1);
    const std::string title = "スレッド";
    const int32 count = 1;
    for (int i = 0; i < threads; i++) {
        const std::string dat = std::to_string(kFirstManyKey + i) + ".dat";
        NPCache cache("many.example", kManyFolder, dat.c_str(), NPCache::Open::kCreate);
        cache.WriteLine(line.data(), line.size());
        cache.WriteAttr("title", B_STRING_TYPE, title.data(), title.size());
        cache.WriteAttr("res_num", B_INT32_TYPE, &count, sizeof(count));
        cache.SetMimeType("text/plain");
    }
}
