// What the importer may still do once it has limited itself.

#include <editor/files/process_limits.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

int errorOf(int result)
{
    return result == -1 ? errno : 0;
}

/// Ends the process: with 0 if files can be read and nothing else can be done.
[[noreturn]] void tryAll(const char* path, const char* other)
{
    editor::limitProcess();
    char* none[] = {nullptr};
    const std::pair<const char*, int> calls[] = {
        {"writing", errorOf(::open(path, O_WRONLY))},
        {"emptying", errorOf(::open(path, O_RDONLY | O_TRUNC))},
        {"creating", errorOf(::creat(other, 0600))},
        {"creating", errorOf(::mkfifo(other, 0600))},
        {"shortening", errorOf(::truncate(path, 0))},
        {"removing", errorOf(::unlink(path))},
        {"renaming", errorOf(::rename(path, other))},
        {"connecting", errorOf(::socket(AF_INET, SOCK_STREAM, 0))},
        {"starting", errorOf(::execve("/bin/true", none, none))},
        {"signalling", errorOf(::kill(::getppid(), 0))}};
    int allowed = ::open(path, O_RDONLY) < 0 ? 1 : 0;
    for (const auto& [call, error] : calls) {
        if (error != EPERM)
            std::fprintf(stderr, "%s is possible\n", call);
        allowed += error == EPERM ? 0 : 1;
    }
    _exit(allowed);
}

TEST(ProcessLimitsDeathTest, filesCanBeReadAndNothingElseCanBeDone)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("content") == 7 && file.flush());
    const QByteArray path = QFile::encodeName(file.fileName());
    EXPECT_EXIT(tryAll(path, path + ".other"), testing::ExitedWithCode(0), "^$");
    EXPECT_EQ(QFile(file.fileName()).size(), 7);
}

} // namespace
