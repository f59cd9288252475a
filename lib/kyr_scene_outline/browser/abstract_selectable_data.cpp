#include <kyr_scene_outline/abstract_selectable_data.h>

AbstractSelectableData::AbstractSelectableData() = default;
AbstractSelectableData::~AbstractSelectableData() = default;

QString AbstractSelectableData::currentLabel() const
{
    const QStringList all = labels();
    return all.value(currentIndex());
}
