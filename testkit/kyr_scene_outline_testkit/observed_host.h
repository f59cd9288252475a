#pragma once

#include <kyr_scene_outline_testkit/scene_rows.h>

#include <algorithm>

namespace kyr::testkit {

/// What one browser writes to a selection that belongs to the host.
class CountedSelection : public IAssetSelection
{
public:
    explicit CountedSelection(IAssetSelection& selection) : m_selection(selection) {}

    int takeWrites() { return std::exchange(m_writes, 0); }
    /// What was set last, as it was handed over.
    const Objects& written() const { return m_written; }
    /// Whether what was set is being told.
    bool isWriting() const { return m_writing; }

    const Objects& objects() const override { return m_selection.objects(); }
    void setSelection(Objects objects, bool keepPresent) override
    {
        ++m_writes;
        m_written = objects;
        const bool before = std::exchange(m_writing, true);
        m_selection.setSelection(std::move(objects), keepPresent);
        m_writing = before;
    }
    void clearSelection() override
    {
        ++m_writes;
        m_selection.clearSelection();
    }
    bool isSelected(const ReflectedObject& object) const override
    {
        return m_selection.isSelected(object);
    }
    void setHoveredObjects(Objects objects) override
    {
        m_selection.setHoveredObjects(std::move(objects));
    }
    std::weak_ptr<Zar::ChangesController> changesController() const override
    {
        return m_selection.changesController();
    }
    vex::Connection connectSelectionChanged(SelectionChangedCallback callback) override
    {
        return m_selection.connectSelectionChanged(std::move(callback));
    }
    vex::Connection connectHoverChanged(HoverChangedCallback callback) override
    {
        return m_selection.connectHoverChanged(std::move(callback));
    }

private:
    IAssetSelection& m_selection;
    Objects m_written;
    int m_writes = 0;
    bool m_writing = false;
};

/// Keeps the hover marks that one browser gives an asset model.
class MarkedModel : public IAssetModel
{
public:
    explicit MarkedModel(IAssetModel& model) : m_model(model) {}

    const Objects& marks() const { return m_marks; }

    QAbstractItemModel* itemModel() const override { return m_model.itemModel(); }
    QModelIndex indexOf(const ReflectedObject& object) const override
    {
        return m_model.indexOf(object);
    }
    void setObjectHovered(const ReflectedObject& object, bool hovered) override
    {
        const PersistentObject marked(object);
        m_marks.erase(std::remove(m_marks.begin(), m_marks.end(), marked), m_marks.end());
        if (hovered)
            m_marks.push_back(marked);
        m_model.setObjectHovered(object, hovered);
    }
    void activateItem(const QModelIndex& index) override { m_model.activateItem(index); }

private:
    IAssetModel& m_model;
    Objects m_marks;
};

} // namespace kyr::testkit
