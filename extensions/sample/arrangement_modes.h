#pragma once

#include <kyr_scene_outline/abstract_selectable_data.h>

namespace sample {

/// How the panel arranges the rows; it reads `arrangement`.
class ArrangementModes : public AbstractSelectableData
{
    Q_OBJECT
    Q_PROPERTY(QString arrangement READ arrangement NOTIFY currentIndexChanged)

public:
    QStringList labels() const override
    {
        return {tr("Hierarchy"), tr("Flat list"), tr("By type")};
    }
    int currentIndex() const override { return m_index; }
    void setCurrentIndex(int index) override
    {
        if (index == m_index || index < 0 || index >= labels().size())
            return;
        m_index = index;
        Q_EMIT currentIndexChanged();
    }
    /// "hierarchy", "flat" or "type".
    QString arrangement() const { return QStringList{"hierarchy", "flat", "type"}.value(m_index); }

private:
    int m_index = 0;
};

} // namespace sample
