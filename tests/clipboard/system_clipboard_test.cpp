#include <host/data_section/xml_section.h>
#include <tools/common/string_utils.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

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

private:
    QProcess m_process;
};

const std::string sample = "<objects>\n\t\xc3\xa9 \xe6\xbc\xa2 \xf0\x9f\x98\x80 &amp;</objects>\n";

TEST(SystemClipboard, OtherProgramsReadExactlyTheBytes)
{
    ASSERT_TRUE(Zar::StringUtils::copyToClipboardT(sample));
    EXPECT_EQ(outputOf("xclip", {"-o", "-selection", "clipboard"}).toStdString(), sample + '\0');
    EXPECT_EQ(outputOf(CLIPBOARD_PEER, {"paste"}).toStdString(), sample);
    const std::string large(5 << 20, 'x');
    ASSERT_TRUE(Zar::StringUtils::copyToClipboardT(large));
    EXPECT_EQ(outputOf(CLIPBOARD_PEER, {"paste"}).toStdString(), large);
}

TEST(SystemClipboard, DocumentsAreWellFormedForOthers)
{
    const Zar::DataSectionPtr document(new Zar::XMLSection("objects"));
    for (int byte = 0; byte < 256; ++byte)
        document->writeString("byte " + std::to_string(byte),
                              std::string(3, static_cast<char>(byte)));
    ASSERT_TRUE(Zar::StringUtils::copyToClipboardT(std::string(document->asBinary()->bytes())));
    const QString command = "xclip -o -selection clipboard | xmllint --noout - && echo well formed";
    EXPECT_EQ(outputOf("sh", {"-c", command}).toStdString(), "well formed\n");
}

TEST(SystemClipboard, ReadsWhatOtherProgramsOffer)
{
    std::string text;
    {
        const Owner owner({"copy", QString::fromStdString(sample)});
        EXPECT_TRUE(Zar::StringUtils::canCopyFromClipboardT<char>());
        EXPECT_TRUE(Zar::StringUtils::copyFromClipboardT(text));
        EXPECT_EQ(text, sample);
    }
    {
        const Owner owner({"image"});
        EXPECT_FALSE(Zar::StringUtils::canCopyFromClipboardT<char>());
        EXPECT_FALSE(Zar::StringUtils::copyFromClipboardT(text));
        EXPECT_EQ(text, sample);
    }
}

TEST(SystemClipboard, ReadsWhatXclipOffers)
{
    QProcess xclip;
    xclip.start("xclip", {"-i", "-selection", "clipboard", "-quiet", "-loops", "9"});
    xclip.write(QByteArray::fromStdString(sample));
    xclip.closeWriteChannel();
    std::string text;
    EXPECT_TRUE(QTest::qWaitFor(
        [&text] { return Zar::StringUtils::copyFromClipboardT(text) && text == sample; }, 10000));
    xclip.kill();
    xclip.waitForFinished();
}

TEST(SystemClipboard, CopyReplacesEverythingElse)
{
    // Qt takes the clipboard as of the last event it has seen.
    QTest::qWait(100);
    QGuiApplication::clipboard()->setImage(QImage(8, 8, QImage::Format_RGB32));
    ASSERT_TRUE(Zar::StringUtils::copyToClipboardT(std::string("text")));
    const QByteArray targets =
        outputOf("xclip", {"-o", "-selection", "clipboard", "-t", "TARGETS"});
    EXPECT_TRUE(targets.contains("UTF8_STRING"));
    EXPECT_FALSE(targets.contains("image/"));
}

} // namespace
