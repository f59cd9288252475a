#pragma once

#include <host/reflection/persistent_object.h>
#include <host/undo/changes_controller.h>
#include <kyr_cpp_utils/signal.h>

#include <QMetaType>

#include <functional>
#include <memory>
#include <vector>

/// The editor's current object selection and the objects under the pointer, shared by all views.
/// What an implementation throws passes through the browser that called it.
class IAssetSelection
{
public:
    /// Ordered: the object selected last is the primary one.
    using Objects = std::vector<kyr::PersistentObject>;

    /// What was selected before a change and what is now. The lists live as long as the
    /// notification.
    struct SelectionChange
    {
        const Objects& before;
        const Objects& after;
    };

    using SelectionChangedCallback =
        std::function<void(const vex::Connection&, const SelectionChange&)>;
    /// Takes the objects that became hovered and those that stopped being hovered.
    using HoverChangedCallback = std::function<void(const Objects&, const Objects&)>;

    virtual ~IAssetSelection() = default;

    virtual const Objects& objects() const = 0;
    /// Makes `objects` the selection, added to the present one when `keepPresent` is set.
    virtual void setSelection(Objects objects, bool keepPresent) = 0;
    virtual void clearSelection() = 0;
    /// Expected to cost O(1): it is asked for each row that comes.
    virtual bool isSelected(const kyr::ReflectedObject& object) const = 0;

    virtual void setHoveredObjects(Objects objects) = 0;

    /// The controller under which selection changes are recorded.
    virtual std::weak_ptr<Zar::ChangesController> changesController() const = 0;

    /// The first argument of the callback is the subscription that caused the change; it is empty
    /// when the change has another cause.
    virtual vex::Connection connectSelectionChanged(SelectionChangedCallback callback) = 0;
    virtual vex::Connection connectHoverChanged(HoverChangedCallback callback) = 0;
};

Q_DECLARE_METATYPE(IAssetSelection*)
