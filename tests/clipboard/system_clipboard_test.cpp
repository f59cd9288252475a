#include <tools/common/string_utils.h>

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>

namespace {

// Runs a program to its end while this one keeps answering for its clipboard.
QByteArray outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.closeWriteChannel();
    EXPECT_TRUE(
        QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, 10000))
        << program.toStdString();
    return process.readAllStandardOutput();
}

// A peer that owns the clipboard for its own lifetime.
class Owner
{
public:
    explicit Owner(const QStringList& arguments)
    {
        m_process.start(QStringLiteral(CLIPBOARD_PEER), arguments);
        EXPECT_TRUE(QTest::qWaitFor([this] { return m_process.canReadLine(); }, 10000));
        // The change of owner reaches this program with its next events.
        QTest::qWait(100);
    }
    ~Owner()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }

    // The lines that came since the last call.
    QByteArray said()
    {
        while (m_process.waitForReadyRead(100)) {
        }
        return m_process.readAllStandardOutput();
    }
    void send(int signal) const { ::kill(static_cast<pid_t>(m_process.processId()), signal); }

private:
    QProcess m_process;
};

const std::string sample = "<objects>\n\t\xc3\xa9 \xe6\xbc\xa2 \xf0\x9f\x98\x80 &amp;</objects>\n";

TEST(SystemClipboard, otherProgramsReadExactlyTheBytes)
{
    ASSERT_TRUE(Zar::StringUtils::copyToClipboardT(sample));
    EXPECT_EQ(outputOf("xclip", {"-o", "-selection", "clipboard"}).toStdString(), sample + '\0');
    EXPECT_EQ(outputOf(CLIPBOARD_PEER, {"paste"}).toStdString(), sample);
    const auto shared = Zar::StringUtils::shareFromClipboardT<char>();
    const std::string large(5 << 20, 'x');
    ASSERT_TRUE(Zar::StringUtils::copyToClipboardT(large));
    EXPECT_EQ(outputOf(CLIPBOARD_PEER, {"paste"}).toStdString(), large);
    ASSERT_TRUE(shared);
    EXPECT_EQ(shared->data(), sample) << "stays what it was";
}

TEST(SystemClipboard, readsWhatOtherProgramsOffer)
{
    std::string text;
    {
        Owner owner({"copy", QString::fromStdString(sample)});
        EXPECT_EQ(owner.said(), "ready\n");
        EXPECT_TRUE(Zar::StringUtils::canCopyFromClipboardT<char>());
        EXPECT_TRUE(Zar::StringUtils::copyFromClipboardT(text));
        EXPECT_EQ(text, sample);
        EXPECT_EQ(owner.said(), "asked\n");
    }
    {
        const Owner owner({"image"});
        EXPECT_FALSE(Zar::StringUtils::canCopyFromClipboardT<char>());
        EXPECT_FALSE(Zar::StringUtils::copyFromClipboardT(text));
        EXPECT_EQ(text, sample);
    }
}

TEST(SystemClipboard, readsWhatXclipOffers)
{
    for (const char* format : {"UTF8_STRING", "text/plain;charset=UTF-8"}) {
        QProcess xclip;
        xclip.start("xclip", {"-i", "-selection", "clipboard", "-quiet", "-t", format});
        const std::string offered = sample + format;
        xclip.write(QByteArray::fromStdString(offered));
        xclip.closeWriteChannel();
        std::string text;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return Zar::StringUtils::copyFromClipboardT(text) && text == offered; }, 10000));
        xclip.kill();
        xclip.waitForFinished();
    }
}

TEST(SystemClipboard, anOwnerThatHangsIsNamedAndNotWaitedFor)
{
    const Owner owner({"copy", QString::fromStdString(sample)});
    std::string text;
    for (const bool knowsWhatIsOffered : {false, true}) {
        ASSERT_TRUE(QTest::qWaitFor(&Zar::StringUtils::canCopyFromClipboardT<char>, 10000));
        owner.send(SIGSTOP);
        QElapsedTimer clock;
        clock.start();
        for (int i = 0; i < 8; ++i) {
            EXPECT_FALSE(!knowsWhatIsOffered && Zar::StringUtils::canCopyFromClipboardT<char>());
            EXPECT_FALSE(Zar::StringUtils::copyFromClipboardT(text));
        }
        EXPECT_LT(clock.elapsed(), 750);
        EXPECT_NE(Zar::platform::clipboardProblem().find("clipboard_peer"), std::string::npos)
            << Zar::platform::clipboardProblem();
        owner.send(SIGCONT);
    }
    EXPECT_TRUE(QTest::qWaitFor(&Zar::StringUtils::canCopyFromClipboardT<char>, 10000));
    EXPECT_TRUE(Zar::StringUtils::copyFromClipboardT(text));
    EXPECT_EQ(text, sample);
    EXPECT_EQ(Zar::platform::clipboardProblem(), "");
}

TEST(SystemClipboard, copyReplacesEverythingElse)
{
    // Qt takes the clipboard as of the last event it has seen.
    QTest::qWait(100);
    QGuiApplication::clipboard()->setImage(QImage(8, 8, QImage::Format_RGB32));
    ASSERT_TRUE(Zar::StringUtils::copyToClipboardT(std::string("text")));
    const QByteArray targets =
        outputOf("xclip", {"-o", "-selection", "clipboard", "-t", "TARGETS"});
    EXPECT_TRUE(targets.contains("UTF8_STRING"));
    EXPECT_TRUE(targets.contains("text/plain;charset=utf-8"));
    EXPECT_FALSE(targets.contains("image/"));
}

} // namespace
