#include <editor/app/log_model.h>

#include <QAbstractItemModelTester>
#include <QTest>

#include <gtest/gtest.h>

#include <thread>

namespace test {

using editor::LogModel;

TEST(EditorLogTest, keepsTheLatestMessagesOfAllThreads)
{
    LogModel log;
    const QAbstractItemModelTester tester(&log,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    Zar::DebugMessageHelper(0, 4).message("skipped %d", 1);
    Zar::DebugMessageHelper(0, 5).message("failed\r\n");
    ASSERT_TRUE(QTest::qWaitFor([&log] { return log.rowCount() == 2; }));
    EXPECT_EQ(log.index(0).data(LogModel::SeverityRole), LogModel::Warning);
    EXPECT_EQ(log.index(1).data().toString(), "failed");
    EXPECT_EQ(log.problemCount(), 2);

    const int each = LogModel::capacity;
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([] {
            for (int line = 0; line < each; ++line)
                Zar::DebugMessageHelper(0, 2).message("%d", line);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    const QString last = QString::number(each - 1);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return log.index(log.rowCount() - 1).data().toString() == last; }));
    EXPECT_EQ(log.rowCount(), LogModel::capacity);
    EXPECT_EQ(log.problemCount(), 2);
    log.clear();
    EXPECT_EQ(log.rowCount(), 0);
    EXPECT_EQ(log.problemCount(), 0);
}

} // namespace test
