#include "recorded_asset_selection.h"

#include <algorithm>
#include <iterator>

namespace {

IAssetSelection::Objects difference(const IAssetSelection::Objects& from,
                                    IAssetSelection::Objects without)
{
    const ObjectTable table = ObjectTable::withoutDuplicates(without);
    IAssetSelection::Objects rest;
    std::copy_if(
        from.begin(), from.end(), std::back_inserter(rest),
        [&](const kyr::PersistentObject& object) { return !table.contains(without, object); });
    return rest;
}

} // namespace

class RecordedAssetSelection::Change : public Zar::IChange
{
public:
    Change(std::weak_ptr<RecordedAssetSelection*> selection, SharedObjects before,
           SharedObjects after)
        : m_selection(std::move(selection)), m_before(std::move(before)), m_after(std::move(after))
    {}

    void undo() override { apply(m_before); }
    void redo() override { apply(m_after); }
    const void* subject() const noexcept override { return m_selection.lock().get(); }
    void absorb(IChange& later) override { m_after = static_cast<Change&>(later).m_after; }
    bool isVoid() const override { return *m_before == *m_after; }

private:
    void apply(const SharedObjects& objects)
    {
        if (const auto selection = m_selection.lock())
            (*selection)->apply(objects, ObjectTable::of(*objects));
    }

    std::weak_ptr<RecordedAssetSelection*> m_selection;
    SharedObjects m_before;
    SharedObjects m_after;
};

RecordedAssetSelection::RecordedAssetSelection(std::weak_ptr<Zar::ChangesController> controller)
    : m_controller(std::move(controller)), m_self(std::make_shared<RecordedAssetSelection*>(this))
{}

RecordedAssetSelection::~RecordedAssetSelection() = default;

void RecordedAssetSelection::setSelection(Objects objects, bool keepPresent)
{
    if (keepPresent)
        objects.insert(objects.begin(), m_objects->begin(), m_objects->end());
    if (objects == *m_objects)
        return;
    ObjectTable table = ObjectTable::withoutDuplicates(objects);
    if (objects == *m_objects)
        return;
    auto after = std::make_shared<const Objects>(std::move(objects));
    if (const auto controller = m_controller.lock())
        controller->record(std::make_unique<Change>(m_self, m_objects, after), "Set selection");
    apply(std::move(after), std::move(table));
}

void RecordedAssetSelection::apply(SharedObjects objects, ObjectTable table)
{
    const SharedObjects before = std::exchange(m_objects, std::move(objects));
    const SharedObjects after = m_objects;
    m_table = std::move(table);
    m_selectionChanged(vex::Connection(), SelectionChange{*before, *after});
}

bool RecordedAssetSelection::isSelected(const kyr::ReflectedObject& object) const
{
    return m_table.contains(*m_objects, kyr::PersistentObject(object));
}

void RecordedAssetSelection::setHoveredObjects(Objects objects)
{
    const Objects before = std::exchange(m_hovered, std::move(objects));
    const Objects entered = difference(m_hovered, before);
    const Objects left = difference(before, m_hovered);
    if (!entered.empty() || !left.empty())
        m_hoverChanged(entered, left);
}

vex::Connection RecordedAssetSelection::connectSelectionChanged(SelectionChangedCallback callback)
{
    return m_selectionChanged.connect(std::move(callback));
}

vex::Connection RecordedAssetSelection::connectHoverChanged(HoverChangedCallback callback)
{
    return m_hoverChanged.connect(std::move(callback));
}
