#include "windows/NPNoiseWindow.h"

#include "messages/Messages.h"
#include "noise/NoiseStore.h"
#include "support/OpenWindow.h"
#include "support/ScratchFolder.h"
#include "windows/NoiseListView.h"

#include <AppDefs.h>
#include <Button.h>
#include <CheckBox.h>
#include <StringView.h>
#include <TextControl.h>

#include <gtest/gtest.h>

using namespace server::testing;

namespace {

class NoiseWindow : public testing::Test {
protected:
    void SetUp() override {
        NPNoiseWindow::Open();
        fWindow = WaitForOpen<NPNoiseWindow>();
        ASSERT_NE(fWindow, nullptr);
    }
    void TearDown() override {
        fWindow->PostMessage(B_QUIT_REQUESTED);
        EXPECT_TRUE(WaitForClosed<NPNoiseWindow>());
    }
    template <class Kind>
    Kind* Find(const char* name) {
        return dynamic_cast<Kind*>(fWindow->FindView(name));
    }
    void Fill(const char* field, const std::string& text) {
        fWindow->Lock();
        Find<BTextControl>(field)->SetText(text.c_str());
        fWindow->Unlock();
    }
    void Check(const char* box, bool isOn) {
        fWindow->Lock();
        Find<BCheckBox>(box)->SetValue(isOn ? B_CONTROL_ON : B_CONTROL_OFF);
        fWindow->Unlock();
    }
    void Press(const char* button) {
        fWindow->Lock();
        Find<BButton>(button)->Invoke();
        fWindow->Unlock();
        WaitUntilIdle(fWindow);
    }
    std::string Status() {
        fWindow->Lock();
        const std::string text = Find<BStringView>("status")->Text();
        fWindow->Unlock();
        return text;
    }
    void Choose(int32 row) {
        fWindow->Lock();
        auto* list = Find<NoiseListView>("rules");
        list->FullListSelect(row);
        list->InvokeRow(row);
        fWindow->Unlock();
        WaitUntilIdle(fWindow);
    }
    static std::vector<NoiseRule> Rules() { return NoiseStore::Shared().Rules().list; }

    ScratchFolder fFolder;
    NPNoiseWindow* fWindow = nullptr;
};

TEST_F(NoiseWindow, RulesAreAddedChangedPassedOnAndDeleted) {
    Press("add");
    EXPECT_EQ(Status(), "規則が空です。");
    Fill("text", "(");
    Check("pattern", true);
    Press("add");
    EXPECT_NE(Status().find("正規表現が正しくありません"), std::string::npos);
    Fill("text", "宣伝|広告");
    Fill("board", "h.example/news");
    Press("add");
    ASSERT_EQ(Rules().size(), 1u);
    EXPECT_TRUE(Rules()[0].isPattern);
    EXPECT_EQ(Rules()[0].board, "h.example/news");
    Press("add");
    EXPECT_EQ(Status(), "同じ規則があります。");

    Choose(0);
    Check("pattern", false);
    Press("change");
    EXPECT_FALSE(Rules().at(0).isPattern);

    const std::string file = fFolder / "shared.txt";
    Fill("file", file);
    Press("export");
    EXPECT_NE(fFolder.Read("shared.txt").find("word\tplain\th.example/news"), std::string::npos);
    Choose(0);
    Press("remove");
    EXPECT_TRUE(Rules().empty());
    Press("import");
    EXPECT_EQ(Rules().size(), 1u);
    Press("import");
    EXPECT_EQ(Status(), "0件を読み込みました。");
    fFolder.Write("other.txt", "<xml>");
    for (const char* other : {"other.txt", "none.txt"}) {
        Fill("file", fFolder / other);
        Press("import");
        EXPECT_NE(Status(), "");
        EXPECT_EQ(Rules().size(), 1u);
    }
}

} // namespace
