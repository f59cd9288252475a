#include "display_text.h"

#include <algorithm>
#include <limits>

namespace kyr::panel {

namespace {

constexpr ushort lastLatin = 0x2ff;
const QChar ellipsis(0x2026);
const QChar returnSign(0x21b5);

bool isLineBreak(QChar character)
{
    const ushort code = character.unicode();
    return code == '\n' || code == '\r' || code == '\v' || code == '\f' || code == 0x85 ||
           code == QChar::LineSeparator || code == QChar::ParagraphSeparator;
}

bool isControl(QChar character)
{
    return character.category() == QChar::Other_Control || isLineBreak(character);
}

/// Copies characters into a text of its own from the first one that has to change.
class Cleaner
{
public:
    Cleaner(const QString& text, int longest, int lines) : m_text(text), m_lines(lines)
    {
        int end = std::min(text.size(), longest);
        if (end > 0 && end < text.size() && text[end].isLowSurrogate())
            --end;
        for (m_at = 0; m_at < end && m_lines > 0; ++m_at)
            take(text[m_at]);
        if (m_at < text.size())
            change().append(ellipsis);
    }

    QString result() const { return m_changed ? m_result : m_text; }

private:
    QString& change()
    {
        if (!m_changed)
            m_result = m_text.left(m_at);
        m_changed = true;
        return m_result;
    }
    void take(QChar character)
    {
        m_marks = character.isMark() ? m_marks + 1 : 0;
        if (m_marks > DisplayText::mostMarks) {
            change();
        } else if (isLineBreak(character)) {
            takeLineBreak();
        } else if (isControl(character)) {
            change().append(character == QLatin1Char('\t') ? QChar::Space
                                                           : QChar::ReplacementCharacter);
        } else if (m_changed) {
            m_result.append(character);
        }
    }
    void takeLineBreak()
    {
        const bool pair =
            m_at > 0 && m_text[m_at] == QLatin1Char('\n') && m_text[m_at - 1] == QLatin1Char('\r');
        if (pair)
            change();
        else if (m_lines == std::numeric_limits<int>::max())
            change().append(returnSign);
        else if (--m_lines > 0)
            change().append(QLatin1Char('\n'));
    }

    const QString& m_text;
    int m_lines;
    int m_at = 0;
    int m_marks = 0;
    bool m_changed = false;
    QString m_result;
};

} // namespace

QString DisplayText::oneLine(const QString& text)
{
    return Cleaner(text, longestLine, std::numeric_limits<int>::max()).result();
}

QString DisplayText::excerpt(const QString& text)
{
    return Cleaner(text, longestExcerpt, mostLines).result();
}

bool DisplayText::mayReachOut(const QString& text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar character) { return character.unicode() > lastLatin; });
}

} // namespace kyr::panel
