#include "display_input.h"

#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

namespace test {

namespace {

constexpr int patience = 60000;

} // namespace

QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.closeWriteChannel();
    EXPECT_TRUE(QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, patience));
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

void DisplayInput::press(const QString& keys) const
{
    outputOf("xdotool", QStringList{"key", "--delay", "20"} + keys.split(' '));
    QTest::qWait(50);
}

QStringList DisplayInput::moveTo(const QPoint& point) const
{
    const QPoint place = m_window->mapToGlobal(point);
    return {"mousemove", "--sync", QString::number(place.x()), QString::number(place.y())};
}

void DisplayInput::click(const QPoint& point, int button) const
{
    outputOf("xdotool", moveTo(point) + QStringList{"click", QString::number(button)});
    QTest::qWait(50);
}

void DisplayInput::drag(const QPoint& from, const QPoint& to, const QString& keys) const
{
    outputOf("xdotool",
             moveTo(from) + QStringList{"mousedown", "1"} + moveTo((from + to) / 2) + moveTo(to));
    QTest::qWait(50);
    if (!keys.isEmpty())
        press(keys);
    outputOf("xdotool", {"mouseup", "1"});
    QTest::qWait(50);
}

} // namespace test
