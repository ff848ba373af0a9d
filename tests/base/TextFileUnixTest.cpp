// Units on devices, pipes and links, full disks and locks that other processes hold.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

#include "TextFileFixture.h"

namespace frigana {
namespace {

// The memory of this process can be opened like a file, but reading its first page fails.
TEST_F(TextFile, AReadThatFailsIsMalformedAndNotTheEndOfTheFile) {
    constexpr const char* unreadable = "/proc/self/mem";
    if (!openForReading(1, unreadable)) GTEST_SKIP() << "no file here that cannot be read";
    FixedText<4> field;
    int number = 7;
    EXPECT_EQ(readText(1, field), ReadStatus::malformed);
    EXPECT_EQ(readText(1, field), ReadStatus::malformed) << "the rest of the file is not known either";
    EXPECT_EQ(skipLine(1), ReadStatus::malformed);
    EXPECT_EQ(skipFilledLine(1), ReadStatus::malformed);
    EXPECT_EQ(readValues(1, number), ReadStatus::malformed);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(lineNumber(1), 0);
    rewindUnit(1);
    EXPECT_EQ(skipLine(1), ReadStatus::malformed);
}

TEST_F(TextFile, AFailedReadIsNotTheEndOfAFile) {
    // The memory at address 0 is a file that opens and cannot be read.
    const char* const unreadable = "/proc/self/mem";
    if (access(unreadable, R_OK) != 0) GTEST_SKIP() << "no file of this kind here";
    ASSERT_TRUE(openForReading(1, unreadable));
    int value = 7;
    FixedText<80> text;
    EXPECT_EQ(readValues(1, value), ReadStatus::malformed);
    EXPECT_EQ(readText(1, text), ReadStatus::malformed);
    EXPECT_EQ(skipLine(1), ReadStatus::malformed);
    EXPECT_EQ(skipFilledLine(1), ReadStatus::malformed);
    EXPECT_EQ(readProblem(1), "an error of reading");
    EXPECT_EQ(value, 7);
}

TEST_F(TextFile, OnlyRegularFilesAreOpened) {
    const std::string pipe = (folder / "pipe").string(), link = (folder / "link").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(openForReading(1, pipe));  // at once: nobody stands at its other end
    EXPECT_FALSE(openForReading(1, "/dev/zero"));
    EXPECT_FALSE(openForReading(1, folder.string()));
    contents("5\n");
    fs::create_symlink(path, link);
    EXPECT_TRUE(openForReading(1, link));  // an installation may be made of links
    EXPECT_FALSE(openForReading(1, std::string_view("a\0b", 3)));
}

TEST_F(TextFile, LinksAreNeverFollowedForWriting) {
    const std::string link = (folder / "link").string(), kept = "somebody's\n";
    for (const Writing how : {Writing::direct, Writing::whole}) {
        contents(kept);
        fs::remove(link);
        fs::create_symlink(path, link);
        ASSERT_TRUE(openForWriting(1, link, how));
        writeFree(1, 1);
        EXPECT_TRUE(closeUnit(1));
        EXPECT_EQ(contents(), kept);
        EXPECT_FALSE(fs::is_symlink(link));
        fs::remove(link);
        fs::create_hard_link(path, link);
        ASSERT_TRUE(openForWriting(1, link, how));
        writeFree(1, 1);
        EXPECT_TRUE(closeUnit(1));
        EXPECT_EQ(contents(), kept);
    }
    // Nor the one that somebody has laid in the way of the name beside.
    fs::remove(link);
    fs::create_symlink(path, link + "~0");
    ASSERT_TRUE(openForWriting(1, link, Writing::whole));
    writeFree(1, 1);
    EXPECT_TRUE(closeUnit(1));
    EXPECT_EQ(contents(), kept);
}

TEST_F(TextFile, ALineBeyondTheDiskFails) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no such device here";
    // The limit of the size of a file stands for a full disk.
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{65536, 65536};
        setrlimit(RLIMIT_FSIZE, &limit);
        if (!openForWriting(1, path, Writing::whole) || !openForWriting(2, path + "2")) _exit(2);
        for (int unit : {1, 2})
            for (int i = 0; i < 100000; ++i) writeFree(unit, i);
        const bool told = !closeUnit(1) && !closeUnit(2);
        _exit(told ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(filesIn(folder), 0);  // no half file is left
}

TEST_F(TextFile, AFolderThatTakesNoNewFileHasItsOldOneWrittenOver) {
    contents("old\n");
    fs::permissions(path, fs::perms::all);
    fs::permissions(folder, fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec);
    // In a process of its own, without the rights of root over every folder.
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        if (geteuid() == 0 && seteuid(nobody) != 0) _exit(1);
        if (openForWriting(1, path + "2", Writing::whole)) _exit(2);
        if (!clearFile(path) || !contents().empty()) _exit(3);
        if (!openForWriting(1, path, Writing::whole)) _exit(4);
        writeFree(1, 1);
        _exit(closeUnit(1) && contents() == " 1\n" ? 0 : 5);
    }
    int status = -1;
    waitpid(child, &status, 0);
    fs::permissions(folder, fs::perms::owner_all);
    EXPECT_EQ(status, 0);
}

TEST_F(TextFile, ALockedFolderKeepsOthersWaitingAndIsFreedByDeath) {
    const std::string base = folder.string() + "/";
    int pipe[2];
    ASSERT_EQ(::pipe(pipe), 0);
    const pid_t child = fork();
    if (child == 0) {
        const bool locked = lockFolder(base) >= 0;
        [[maybe_unused]] const auto told = write(pipe[1], locked ? "y" : "n", 1);
        usleep(100000);
        _exit(0);  // dies with the lock
    }
    char locked = 0;
    ASSERT_EQ(read(pipe[0], &locked, 1), 1);
    EXPECT_EQ(locked, 'y');
    const auto start = std::chrono::steady_clock::now();
    const int handle = lockFolder(base);
    EXPECT_GE(handle, 0);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
    waitpid(child, nullptr, 0);
    unlockFolder(handle);
    const int again = lockFolder(base);
    EXPECT_GE(again, 0);
    unlockFolder(again);
    EXPECT_EQ(lockFolder(base + "nowhere/"), -1);
    close(pipe[0]);
    close(pipe[1]);
}

}  // namespace
}  // namespace frigana
