#include "type_ahead.h"

#include <panel/outline/outline_model.h>

namespace kyr::panel {

bool TypeAhead::isActive() const
{
    return !m_text.isEmpty() && m_lastKey.isValid() && !m_lastKey.hasExpired(pause);
}

int TypeAhead::type(const QString& letters, const OutlineModel& model, int currentRow)
{
    if (!isActive())
        m_text.clear();
    m_lastKey.start();
    m_text += letters;
    const int rows = model.count();
    if (rows == 0)
        return -1;
    const bool sameLetter = m_text.count(m_text[0], Qt::CaseInsensitive) == m_text.size();
    const QString wanted = sameLetter ? m_text.left(1) : m_text;
    // One letter goes on to the next row; more letters may still mean the row that was found.
    const int start = (qMax(currentRow, -1) + (sameLetter ? 1 : 0) + rows) % rows;
    int found = -1;
    const auto matches = [&](int row, const QModelIndex& index) {
        if (index.data().toString().startsWith(wanted, Qt::CaseInsensitive))
            found = row;
        return found < 0;
    };
    model.visit(start, rows - 1, matches);
    if (found < 0)
        model.visit(0, start - 1, matches);
    return found;
}

} // namespace kyr::panel
