#pragma once

#include <QColor>
#include <QQuickItem>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace test {

inline double luminance(const QColor& color)
{
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

inline double contrast(const QColor& a, const QColor& b)
{
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

/// Goes through a window's items as they are painted and looks at each text and icon.
class ContrastCheck
{
public:
    /// Of controls that cannot be used no contrast is asked.
    bool skipsDisabled = false;

    void look(QQuickItem* item, double opacity) { look(item, opacity, {-1e6, -1e6, 2e6, 2e6}); }
    int checked() const { return m_checked; }

private:
    void look(QQuickItem* item, double opacity, const QRectF& shown)
    {
        if (!item->isVisible() || item->width() <= 0 || (skipsDisabled && !item->isEnabled()))
            return;
        opacity *= item->opacity();
        const QRectF place = item->mapRectToScene({0, 0, item->width(), item->height()});
        const QColor color = item->property("color").value<QColor>();
        QList<QQuickItem*> children = item->childItems();
        std::stable_sort(children.begin(), children.end(),
                         [](QQuickItem* a, QQuickItem* b) { return a->z() < b->z(); });
        const auto front = std::find_if(children.begin(), children.end(),
                                        [](QQuickItem* child) { return child->z() >= 0; });
        const QRectF clipped = item->clip() ? shown & place : shown;
        std::for_each(children.begin(), front,
                      [&](QQuickItem* child) { look(child, opacity, clipped); });
        const bool isShown = shown.contains(place.center());
        if (item->inherits("QQuickRectangle"))
            m_painted.push_back({place & shown, withOpacity(color, opacity)});
        else if (isShown && item->inherits("QQuickText") &&
                 !item->property("text").toString().isEmpty())
            check(item, place, withOpacity(color, opacity), 4.5);
        else if (isShown && item->inherits("QQuickImage") && item->property("name").isValid())
            check(item, place, withOpacity(color, opacity), 3);
        std::for_each(front, children.end(),
                      [&](QQuickItem* child) { look(child, opacity, clipped); });
    }
    static QColor withOpacity(QColor color, double opacity)
    {
        color.setAlphaF(color.alphaF() * opacity);
        return color;
    }
    static QColor blend(const QColor& below, const QColor& above)
    {
        const double a = above.alphaF();
        return QColor::fromRgbF(below.redF() * (1 - a) + above.redF() * a,
                                below.greenF() * (1 - a) + above.greenF() * a,
                                below.blueF() * (1 - a) + above.blueF() * a);
    }
    void check(QQuickItem* item, const QRectF& place, const QColor& color, double least)
    {
        QColor behind = Qt::white;
        for (const auto& [painted, paint] : m_painted) {
            if (painted.contains(place.center()))
                behind = blend(behind, paint);
        }
        ++m_checked;
        EXPECT_GE(contrast(blend(behind, color), behind), least - 0.01)
            << item->objectName().toStdString() << ' '
            << item->property("text").toString().toStdString()
            << item->property("name").toString().toStdString() << " is "
            << color.name().toStdString() << " on " << behind.name().toStdString();
    }

    std::vector<std::pair<QRectF, QColor>> m_painted;
    int m_checked = 0;
};

} // namespace test
