// The main of tests that use windows: the server gets the main thread, the tests a thread of their
// own.
#include "support/ChildProgram.h"

#include <AppDefs.h>
#include <Application.h>
#include <OS.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

int32 RunTests(void* result) {
    *static_cast<int*>(result) = RUN_ALL_TESTS();
    be_app->PostMessage(B_QUIT_REQUESTED);
    return 0;
}

std::string ScratchSettings() {
    std::string folder = (std::filesystem::temp_directory_path() / "guitest-XXXXXX").string();
    return mkdtemp(folder.data()) != nullptr ? folder : std::string();
}

int ServeTests() {
    int result = 1;
    BApplication application("application/x-vnd.Itamori-Test");
    const thread_id tests = spawn_thread(RunTests, "tests", B_NORMAL_PRIORITY, &result);
    resume_thread(tests);
    application.Run();
    status_t status = B_OK;
    wait_for_thread(tests, &status);
    return result;
}

} // namespace

int main(int argc, char** argv) {
    const char* program = getenv("TEST_PROGRAM");
    if (program != nullptr && RunTestProgram != nullptr)
        return RunTestProgram(program);
    ::testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    const std::string settings = ScratchSettings();
    setenv("XDG_CONFIG_HOME", settings.c_str(), 1);
    const int result = ServeTests();
    std::filesystem::remove_all(settings);
    return result;
}
