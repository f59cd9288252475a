// Texts of a scene may hold anything and still are one line of plain text.

#include "scene_panel_fixture.h"

#include <panel/texts/display_text.h>

#include <QDirIterator>
#include <QFile>

namespace {

using kyr::panel::DisplayText;

TEST(DisplayTextTest, everyTextFitsItsPlace)
{
    const QString marks(40, QChar(0x0301));
    const std::pair<QString, QString> lines[] = {
        {"Lamp <b>&amp;</b>", "Lamp <b>&amp;</b>"},
        {"a\r\nb\tc\u2028d", "a↵b c↵d"},
        {QString("a") + QChar(0) + QChar(0x7f), "a\ufffd\ufffd"},
        {"o" + marks + "k", "o" + marks.left(DisplayText::mostMarks) + "k"},
        {QString(500, 'x'), QString(DisplayText::longestLine, 'x') + "…"},
        // Half a character never shows.
        {QString(DisplayText::longestLine - 1, 'x') + "😀😀",
         QString(DisplayText::longestLine - 1, 'x') + "…"},
    };
    for (const auto& [text, shown] : lines)
        EXPECT_EQ(DisplayText::oneLine(text), shown);
    EXPECT_EQ(DisplayText::excerpt("a\nb"), "a\nb");
    EXPECT_EQ(DisplayText::excerpt(QString(50, QLatin1Char('\n'))).count(QLatin1Char('\n')),
              DisplayText::mostLines - 1);
}

/// What stands between the brace at `from` and its counterpart, without what is in braces there.
QString directText(const QString& source, int from)
{
    QString text;
    int depth = 0;
    for (int i = from; i < source.size(); ++i) {
        depth += source[i] == '{' ? 1 : source[i] == '}' ? -1 : 0;
        if (depth == 0)
            break;
        if (depth == 1)
            text += source[i];
    }
    return text;
}

TEST(QmlTextsTest, allArePlain)
{
    const QRegularExpression item("\\b(Text|Label|MnemonicLabel) \\{");
    int texts = 0;
    for (const char* folder : {"panel", "editor", "extensions", "examples"}) {
        QDirIterator files(QStringLiteral(KYR_SOURCE_DIR "/") + QLatin1String(folder), {"*.qml"},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            ASSERT_TRUE(file.open(QFile::ReadOnly));
            const QString source = QString::fromUtf8(file.readAll());
            for (auto found = item.globalMatch(source); found.hasNext(); ++texts) {
                const QRegularExpressionMatch match = found.next();
                const QString properties = directText(source, match.capturedEnd() - 1);
                EXPECT_TRUE(properties.contains("textFormat: Text.PlainText"))
                    << file.fileName().toStdString() << ": " << properties.toStdString();
            }
            EXPECT_FALSE(source.contains("ToolTip.text"))
                << file.fileName().toStdString() << ": the shared tool tip reads markup";
        }
    }
    EXPECT_GT(texts, 40);
}

class PanelTextsTest : public ScenePanelTest
{};

TEST_F(PanelTextsTest, noNamePaintsOverOtherRows)
{
    open(house());
    const auto otherRows = [this] {
        window.settle();
        const QImage all = window.grab();
        const int row = PanelWindow::rowHeight;
        const int top = PanelWindow::headerHeight;
        return std::pair(all.copy(0, top, all.width(), row),
                         all.copy(0, top + 2 * row, all.width(), 2 * row));
    };
    const auto before = otherRows();
    const QString pile = QString(60, QChar(0x0301)) + QString(60, QChar(0x0323));
    for (const QString& name :
         QStringList{"one\ntwo\nthree\nfour", "o" + pile, "<font size=7>big<br>bigger</font>"}) {
        model->setData(model->index(0, 0, model->find("House")), name, Qt::EditRole);
        EXPECT_EQ(otherRows(), before) << name.toStdString();
    }
}

} // namespace
