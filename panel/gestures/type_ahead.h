#pragma once

#include <panel/kyr_scene_outline_panel_export.h>

#include <QElapsedTimer>
#include <QString>

namespace kyr::panel {

class OutlineModel;

/// Finds rows by the first letters of their names as they are typed.
///
/// Letters that follow each other quickly make one text; the same letter again and again steps
/// through the rows that start with it. A pause starts anew.
class KYR_SCENE_OUTLINE_PANEL_EXPORT TypeAhead
{
public:
    /// Milliseconds without a key that end a text.
    static constexpr int pause = 1000;

    bool isActive() const;
    void stop() { m_text.clear(); }
    /// The row that the text with the letters added leads to from `currentRow`, -1 when none starts
    /// so. Reads visible rows only, O(1) each.
    int type(const QString& letters, const OutlineModel& model, int currentRow);

private:
    QString m_text;
    QElapsedTimer m_lastKey;
};

} // namespace kyr::panel
