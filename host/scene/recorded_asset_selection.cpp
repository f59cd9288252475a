#include "recorded_asset_selection.h"

#include <algorithm>
#include <unordered_set>

namespace {

std::vector<const void*> sortedIdentities(const IAssetSelection::Objects& objects)
{
    std::vector<const void*> identities;
    identities.reserve(objects.size());
    for (const kyr::PersistentObject& object : objects)
        identities.push_back(object.identity());
    if (!std::is_sorted(identities.begin(), identities.end()))
        std::sort(identities.begin(), identities.end());
    return identities;
}

// Each object stays at its first place.
void removeDuplicates(IAssetSelection::Objects& objects)
{
    const std::vector<const void*> identities = sortedIdentities(objects);
    if (std::adjacent_find(identities.begin(), identities.end()) == identities.end())
        return;
    std::unordered_set<const void*> seen;
    objects.erase(std::remove_if(objects.begin(), objects.end(),
                                 [&seen](const kyr::PersistentObject& object) {
                                     return !seen.insert(object.identity()).second;
                                 }),
                  objects.end());
}

IAssetSelection::Objects difference(const IAssetSelection::Objects& from,
                                    const IAssetSelection::Objects& without)
{
    IAssetSelection::Objects rest;
    std::copy_if(from.begin(), from.end(), std::back_inserter(rest),
                 [&without](const kyr::PersistentObject& object) {
                     return std::find(without.begin(), without.end(), object) == without.end();
                 });
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
            (*selection)->apply(objects);
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
    removeDuplicates(objects);
    if (objects == *m_objects)
        return;
    auto after = std::make_shared<const Objects>(std::move(objects));
    if (const auto controller = m_controller.lock())
        controller->record(std::make_unique<Change>(m_self, m_objects, after), "Set selection");
    apply(std::move(after));
}

void RecordedAssetSelection::apply(SharedObjects objects)
{
    const SharedObjects before = std::exchange(m_objects, std::move(objects));
    const SharedObjects after = m_objects;
    m_identities = sortedIdentities(*after);
    m_selectionChanged(vex::Connection(), SelectionChange{*before, *after});
}

bool RecordedAssetSelection::isSelected(const kyr::ReflectedObject& object) const
{
    return std::binary_search(m_identities.begin(), m_identities.end(),
                              static_cast<const void*>(object.get()));
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
