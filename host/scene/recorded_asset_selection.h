#pragma once

#include <host/scene/asset_selection.h>
#include <host/scene/object_table.h>

/// A selection whose changes are recorded for undo. An object that is handed in more than once is
/// kept at its first place. Setting what is already selected notifies nobody. Setting and undoing
/// cost O(n) in the objects before and after, `isSelected` O(1).
class RecordedAssetSelection : public IAssetSelection
{
public:
    explicit RecordedAssetSelection(std::weak_ptr<Zar::ChangesController> controller = {});
    ~RecordedAssetSelection() override;

    const Objects& objects() const override { return *m_objects; }
    void setSelection(Objects objects, bool keepPresent) override;
    void clearSelection() override { setSelection({}, false); }
    bool isSelected(const kyr::ReflectedObject& object) const override;

    const Objects& hoveredObjects() const noexcept { return m_hovered; }
    void setHoveredObjects(Objects objects) override;

    std::weak_ptr<Zar::ChangesController> changesController() const override
    {
        return m_controller;
    }
    vex::Connection connectSelectionChanged(SelectionChangedCallback callback) override;
    vex::Connection connectHoverChanged(HoverChangedCallback callback) override;

private:
    class Change;
    using SharedObjects = std::shared_ptr<const Objects>;

    void apply(SharedObjects objects, ObjectTable table);

    std::weak_ptr<Zar::ChangesController> m_controller;
    SharedObjects m_objects = std::make_shared<const Objects>();
    ObjectTable m_table; // of the selected objects
    Objects m_hovered;
    vex::Signal<void(const vex::Connection&, const SelectionChange&)> m_selectionChanged;
    vex::Signal<void(const Objects&, const Objects&)> m_hoverChanged;
    // Steps on the undo stack outlive the selection; they find it through this.
    std::shared_ptr<RecordedAssetSelection*> m_self;
};
