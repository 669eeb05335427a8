#include "windows/NPAboutWindow.h"

#include "support/OpenWindow.h"

#include <InterfaceDefs.h>

#include <gtest/gtest.h>

using namespace server::testing;

TEST(NPAboutWindow, OpensOnceAndClosesByTheKeyboard) {
    for (const char key : {B_ENTER, B_SPACE, B_ESCAPE}) {
        NPAboutWindow::Open();
        NPAboutWindow* const window = WaitForOpen<NPAboutWindow>();
        ASSERT_NE(window, nullptr);
        NPAboutWindow::Open();
        EXPECT_EQ(WaitForOpen<NPAboutWindow>(), window);
        Activate(window, true);
        WaitUntilIdle(window);
        Key(window, key);
        EXPECT_TRUE(WaitForClosed<NPAboutWindow>()) << int(key);
    }
}
