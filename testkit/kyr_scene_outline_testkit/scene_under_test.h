#pragma once

#include <host/scene/asset_model.h>
#include <host/scene/asset_selection.h>

#include <kyr_scene_outline/scene_browser_data.h>
#include <kyr_scene_outline_testkit/export.h>

#include <QModelIndex>

#include <functional>
#include <memory>
#include <string>

namespace kyr::testkit {

/// A host's scene as the kit tests it: its two interfaces and ways to change the scene.
///
/// A scene should begin with some rows on two or more levels, of which each has an object of its
/// own, and an empty selection. What a host cannot do stays as it is here and is left out.
class KYR_TESTKIT_EXPORT SceneUnderTest
{
public:
    virtual ~SceneUnderTest() = default;

    virtual IAssetModel& assetModel() = 0;
    virtual IAssetSelection& assetSelection() = 0;

    /// Adds a row with a new object. False when that is not possible there.
    virtual bool insertRow(const QModelIndex& /*parent*/, int /*row*/) { return false; }
    /// Takes rows away with all that is below them.
    virtual bool removeRows(const QModelIndex& parent, int row, int count);
    virtual bool moveRow(const QModelIndex& from, int row, const QModelIndex& to, int toRow);
    /// Emits `layoutChanged` after the rows changed places.
    virtual bool relayout() { return false; }
    /// Resets the item model; objects may stay or be others.
    virtual bool reset() { return false; }

    /// Takes back, or does again, the last recorded step of the editor. Pasted values are part of
    /// the steps where selections are.
    virtual bool undo() { return false; }
    virtual bool redo() { return false; }
    /// Whether rows that were inserted, removed or moved are such a step, what then became selected
    /// included.
    virtual bool recordsRows() const { return false; }

    // Whatever else shows the scene, such as a panel, may be driven along.

    /// A browser that such a view shows; its selection model is another than the one before.
    virtual void show(SceneBrowserData& /*browser*/) {}
    /// Lets the view do something, which the numbers in `choice` choose; says what.
    virtual std::string driveView(unsigned /*choice*/) { return {}; }
    /// What the view shows wrong after a step, empty when nothing.
    virtual std::string viewFault() { return {}; }
};

using SceneFactory = std::function<std::unique_ptr<SceneUnderTest>()>;

} // namespace kyr::testkit
