// What the importer may still do once it has limited itself.

#include <editor/files/importer/process_limits.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Ends the process: with 0 if files can be read and nothing else can be done.
[[noreturn]] void tryAll(const char* path, const char* other)
{
    editor::limitProcess();
    const char* const none[] = {nullptr};
    const int readable = ::open(path, O_RDONLY | O_CLOEXEC);
    int allowed = readable >= 0 ? 0 : 1;
    const auto expectRefusal = [&allowed](const char* call, int result) {
        if (result == -1 && errno == EPERM)
            return;
        std::fprintf(stderr, "%s is possible\n", call);
        ++allowed;
    };
    expectRefusal("writing", ::open(path, O_WRONLY));
    expectRefusal("emptying", ::open(path, O_RDONLY | O_TRUNC));
    expectRefusal("creating", ::open(other, O_RDWR | O_CREAT, 0600));
    expectRefusal("creating", ::creat(other, 0600));
    expectRefusal("creating", ::mkfifo(other, 0600));
    expectRefusal("shortening", ::truncate(path, 0));
    expectRefusal("removing", ::unlink(path));
    expectRefusal("renaming", ::rename(path, other));
    expectRefusal("linking", ::link(path, other));
    expectRefusal("changing rights", ::chmod(path, 0777));
    expectRefusal("connecting", ::socket(AF_INET, SOCK_STREAM, 0));
    expectRefusal("starting", ::execve("/bin/true", const_cast<char**>(none), nullptr));
    expectRefusal("signalling", ::kill(::getppid(), 0));
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
