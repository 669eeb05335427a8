#include "store/Store.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <sys/resource.h>
#include <sys/wait.h>

#include <csignal>

namespace {

const gate::KeptThread kThread{"page", std::string("a\0b\n", 4), 1, 7};

TEST(Store, KeepsBytesAsTheyAreBeyondItsEnd) {
    ScratchFolder folder;
    const std::string file = folder / "gate.db";
    gate::Store(file).Keep("h/b/1", kThread);
    gate::Store(file).SetMenu("m", "menu");
    gate::Store store(file);
    const std::optional<gate::KeptThread> kept = store.FindKept("h/b/1");
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->bytes, kThread.bytes);
    EXPECT_EQ(kept->date, 7);
    EXPECT_EQ(store.FindMenu("m"), "menu");
    EXPECT_EQ(store.FindMove("h", "b"), std::nullopt);
}

TEST(Store, OfManyLengthsTheLastOnesStay) {
    ScratchFolder folder;
    gate::Store store(folder / "gate.db");
    for (int length = 1; length <= 200; length++)
        store.AddLength("t", {length, "dat", length, length});
    EXPECT_FALSE(store.FindLength("t", 1));
    EXPECT_EQ(store.FindLength("t", 200)->lines, 200);
    EXPECT_FALSE(store.FindLength("u", 200));
    EXPECT_TRUE(store.IsPlain("t", "dat"));
    store.AddLength("t", {300, "page", 5, 5});
    EXPECT_FALSE(store.IsPlain("t", "dat"));
}

TEST(Store, AFileThatIsNoDatabaseIsSetAside) {
    ScratchFolder folder;
    const std::string file = folder.Write("gate.db", std::string(5000, 'x'));
    gate::Store store(file);
    EXPECT_TRUE(store.Keep("t", kThread));
    EXPECT_EQ(folder.Read("gate.db.broken"), std::string(5000, 'x'));
}

// Whatever keeps a good file from being opened now: what it holds is not lost.
TEST(Store, AFileThatCannotBeOpenedNowStaysWhereItIs) {
    ScratchFolder folder;
    const std::string file = folder / "gate.db";
    const auto openMeanwhile = [&] {
        gate::Store store(file);
        EXPECT_TRUE(store.Keep("new", kThread));
        EXPECT_FALSE(store.FindKept("old")); // in memory alone
    };
    gate::Store(file).Keep("old", kThread);
    sqlite3* other = nullptr;
    sqlite3_open(file.c_str(), &other);
    sqlite3_exec(other, "PRAGMA locking_mode=EXCLUSIVE; DELETE FROM moves", nullptr, nullptr,
                 nullptr);
    openMeanwhile();
    sqlite3_close(other);
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit full = {0, 0};
        setrlimit(RLIMIT_FSIZE, &full);
        openMeanwhile();
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(folder.Has("gate.db.broken"));
    EXPECT_TRUE(gate::Store(file).FindKept("old"));
}

TEST(Store, WithoutAPlaceOnTheDiskStandsInMemory) {
    ScratchFolder folder;
    gate::Store store(folder / "none/gate.db");
    EXPECT_TRUE(store.Keep("t", kThread));
    EXPECT_TRUE(store.FindKept("t"));
}

TEST(Store, AFullDiskCostsTheNewOnly) {
    ScratchFolder folder;
    const std::string file = folder / "gate.db";
    gate::Store(file).Keep("old", kThread);
    const pid_t child = fork();
    if (child == 0) {
        gate::Store store(file);
        signal(SIGXFSZ, SIG_IGN);
        const rlimit full = {64 << 10, 64 << 10};
        setrlimit(RLIMIT_FSIZE, &full);
        gate::KeptThread large = kThread;
        large.bytes.assign(1 << 20, 'x');
        const bool isKept = store.Keep("new", large);
        _exit(!isKept && store.FindKept("old") && !store.FindKept("new") ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    gate::Store store(file);
    EXPECT_TRUE(store.FindKept("old"));
    EXPECT_FALSE(store.FindKept("new"));
}

// Killed again and again in the middle of its writing.
TEST(Store, AKilledWriterLeavesWholeThreads) {
    ScratchFolder folder;
    const std::string file = folder / "gate.db";
    for (int round = 0; round < 10; round++) {
        int told[2];
        ASSERT_EQ(pipe(told), 0);
        const pid_t child = fork();
        if (child == 0) {
            gate::Store store(file);
            for (char c = 'a';; c = c == 'z' ? 'a' : static_cast<char>(c + 1)) {
                gate::KeptThread thread = kThread;
                thread.bytes.assign(100000, c);
                store.Keep("t", thread);
                if (write(told[1], "x", 1) != 1)
                    _exit(1);
            }
        }
        char first = 0;
        EXPECT_EQ(read(told[0], &first, 1), 1);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(told[0]);
        close(told[1]);
        gate::Store store(file);
        const std::optional<gate::KeptThread> kept = store.FindKept("t");
        ASSERT_TRUE(kept);
        EXPECT_EQ(kept->bytes, std::string(100000, kept->bytes[0]));
    }
}

} // namespace
