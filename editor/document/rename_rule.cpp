#include "rename_rule.h"

#include <cstdlib>

namespace editor {

namespace {

QString padded(qint64 number, int digits)
{
    const QString text = QString::number(std::abs(number)).rightJustified(digits, QLatin1Char('0'));
    return number < 0 ? QLatin1Char('-') + text : text;
}

} // namespace

QString RenameRule::apply(const QString& name, int index) const
{
    QString old = name;
    if (!find.isEmpty())
        old.replace(find, replacement);
    const qint64 number = first + qint64(step) * index;
    QString result;
    for (int at = 0; at < pattern.size();) {
        if (pattern[at] == QLatin1Char('#')) {
            int end = at;
            while (end < pattern.size() && pattern[end] == QLatin1Char('#'))
                ++end;
            result += padded(number, end - at);
            at = end;
        } else {
            result += pattern[at] == QLatin1Char('*') ? old : QString(pattern[at]);
            ++at;
        }
    }
    return result.trimmed();
}

} // namespace editor
