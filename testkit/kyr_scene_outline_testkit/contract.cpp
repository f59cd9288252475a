#include "contract.h"

#include "scene_rows.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <utility>

namespace kyr::testkit {
namespace {

QModelIndexList rowsOf(SceneUnderTest& scene)
{
    return allRows(*scene.assetModel().itemModel());
}

std::string differs(const std::string& what, const Objects& actual, const Objects& expected)
{
    return actual == expected ? std::string()
                              : what + " is " + named(actual) + ", expected " + named(expected);
}

std::string keepsItsItemModel(SceneUnderTest& scene)
{
    const QAbstractItemModel* model = scene.assetModel().itemModel();
    if (!model)
        return "itemModel() is null";
    return model == scene.assetModel().itemModel() ? "" : "itemModel() changes";
}

std::string everyRowHasAnObject(SceneUnderTest& scene)
{
    Objects seen;
    for (const QModelIndex& row : rowsOf(scene)) {
        const PersistentObject object = objectOf(row);
        const std::string text = row.data().toString().toStdString();
        if (!object.object().isValid())
            return "the row '" + text + "' has no object under role 358";
        if (std::find(seen.begin(), seen.end(), object) != seen.end())
            return "the row '" + text + "' shares its object with another";
        seen.push_back(object);
    }
    return seen.size() < 3 ? "the scene has fewer than three rows" : "";
}

std::string indexFindsEveryRow(SceneUnderTest& scene)
{
    for (const QModelIndex& row : rowsOf(scene)) {
        if (scene.assetModel().indexOf(objectOf(row).object()) != row)
            return "indexOf() gives another index for the object of '" +
                   row.data().toString().toStdString() + "'";
    }
    return {};
}

std::string strangersHaveNoRow(SceneUnderTest& scene)
{
    if (scene.assetModel().indexOf(foreignObject()).isValid())
        return "indexOf() gives a row for an object that is not in the scene";
    return scene.assetModel().indexOf({}).isValid() ? "indexOf() gives a row for no object" : "";
}

std::string removedRowsAreForgotten(SceneUnderTest& scene)
{
    const ReflectedObject object = objectOf(rowsOf(scene).constFirst()).object();
    if (!scene.removeRows({}, 0, 1))
        return {};
    return scene.assetModel().indexOf(object).isValid() ? "indexOf() gives a row that was removed"
                                                        : "";
}

std::string hoverMarksChangeNoRows(SceneUnderTest& scene)
{
    const QModelIndexList before = rowsOf(scene);
    for (const ReflectedObject& object :
         {objectOf(before.constFirst()).object(), foreignObject(), ReflectedObject()}) {
        scene.assetModel().setObjectHovered(object, true);
        scene.assetModel().setObjectHovered(object, false);
    }
    return before == rowsOf(scene) ? "" : "setObjectHovered() changes the rows";
}

std::string keepsWhatIsSetInOrder(SceneUnderTest& scene)
{
    const Objects all = objectsOf(rowsOf(scene));
    const Objects wanted{all[2], all[0], all[1]};
    scene.assetSelection().setSelection(wanted, false);
    return differs("objects()", scene.assetSelection().objects(), wanted);
}

std::string replacesTheSelection(SceneUnderTest& scene)
{
    const Objects all = objectsOf(rowsOf(scene));
    scene.assetSelection().setSelection({all[0], all[1]}, false);
    scene.assetSelection().setSelection({all[2]}, false);
    return differs("objects()", scene.assetSelection().objects(), {all[2]});
}

std::string addsToTheSelection(SceneUnderTest& scene)
{
    const Objects all = objectsOf(rowsOf(scene));
    scene.assetSelection().setSelection({all[1]}, false);
    scene.assetSelection().setSelection({all[0]}, true);
    return differs("objects()", scene.assetSelection().objects(), {all[1], all[0]});
}

std::string clears(SceneUnderTest& scene)
{
    scene.assetSelection().setSelection(objectsOf(rowsOf(scene)), false);
    scene.assetSelection().clearSelection();
    return differs("objects()", scene.assetSelection().objects(), {});
}

std::string isSelectedAgrees(SceneUnderTest& scene)
{
    const Objects all = objectsOf(rowsOf(scene));
    scene.assetSelection().setSelection({all[1], all[2]}, false);
    for (const PersistentObject& object : all) {
        const bool expected = object == all[1] || object == all[2];
        if (scene.assetSelection().isSelected(object.object()) != expected)
            return "isSelected() disagrees with objects() about " + named({object});
    }
    return scene.assetSelection().isSelected(foreignObject()) ||
                   scene.assetSelection().isSelected({})
               ? "isSelected() knows objects that are not selected"
               : "";
}

std::string notifiesWhenTheSelectionHasChanged(SceneUnderTest& scene)
{
    const Objects all = objectsOf(rowsOf(scene));
    std::string wrong;
    int told = 0;
    auto connection = scene.assetSelection().connectSelectionChanged(
        [&](const vex::Connection&, const IAssetSelection::SelectionChange& change) {
            ++told;
            wrong += differs("objects() in the notification", scene.assetSelection().objects(),
                             {all[0]}) +
                     differs("the change's `after`", change.after, {all[0]}) +
                     differs("the change's `before`", change.before, {});
        });
    if (!connection.isConnected())
        return "connectSelectionChanged() does not connect";
    scene.assetSelection().setSelection({all[0]}, false);
    if (told == 0)
        return "a change notifies nobody";
    connection.disconnect();
    scene.assetSelection().setSelection({all[1]}, false);
    return told > 1 ? "a dropped subscription is called" : wrong;
}

std::string listenersMaySetAgain(SceneUnderTest& scene)
{
    const Objects all = objectsOf(rowsOf(scene));
    bool again = true;
    const auto connection = scene.assetSelection().connectSelectionChanged(
        [&](const vex::Connection&, const IAssetSelection::SelectionChange&) {
            if (std::exchange(again, false))
                scene.assetSelection().setSelection({all[2]}, false);
        });
    scene.assetSelection().setSelection({all[0]}, false);
    return differs("objects()", scene.assetSelection().objects(), {all[2]});
}

std::string tellsHoverChanges(SceneUnderTest& scene)
{
    const Objects all = objectsOf(rowsOf(scene));
    Objects entered;
    Objects left;
    scene.assetSelection().setHoveredObjects({all[0]});
    const auto connection =
        scene.assetSelection().connectHoverChanged([&](const Objects& in, const Objects& out) {
            entered = in;
            left = out;
        });
    scene.assetSelection().setHoveredObjects({all[1]});
    return differs("what became hovered", entered, {all[1]}) +
           differs("what stopped being hovered", left, {all[0]});
}

std::string undoRestores(SceneUnderTest& scene)
{
    const Objects all = objectsOf(rowsOf(scene));
    scene.assetSelection().setSelection({all[1], all[0]}, false);
    scene.assetSelection().setSelection({all[2]}, false);
    if (!scene.undo())
        return {};
    const std::string wrong =
        differs("objects() after undo", scene.assetSelection().objects(), {all[1], all[0]});
    scene.redo();
    return wrong + differs("objects() after redo", scene.assetSelection().objects(), {all[2]});
}

} // namespace

const std::vector<ContractCheck>& contractChecks()
{
    static const std::vector<ContractCheck> checks{
        {"IAssetModel/keepsItsItemModel", keepsItsItemModel},
        {"IAssetModel/everyRowHasAnObject", everyRowHasAnObject},
        {"IAssetModel/indexFindsEveryRow", indexFindsEveryRow},
        {"IAssetModel/strangersHaveNoRow", strangersHaveNoRow},
        {"IAssetModel/removedRowsAreForgotten", removedRowsAreForgotten},
        {"IAssetModel/hoverMarksChangeNoRows", hoverMarksChangeNoRows},
        {"IAssetSelection/keepsWhatIsSetInOrder", keepsWhatIsSetInOrder},
        {"IAssetSelection/replacesTheSelection", replacesTheSelection},
        {"IAssetSelection/addsToTheSelection", addsToTheSelection},
        {"IAssetSelection/clears", clears},
        {"IAssetSelection/isSelectedAgrees", isSelectedAgrees},
        {"IAssetSelection/notifiesWhenTheSelectionHasChanged", notifiesWhenTheSelectionHasChanged},
        {"IAssetSelection/listenersMaySetAgain", listenersMaySetAgain},
        {"IAssetSelection/tellsHoverChanges", tellsHoverChanges},
        {"IAssetSelection/undoRestores", undoRestores},
    };
    return checks;
}

std::string contractViolations(const SceneFactory& makeScene)
{
    std::string violations;
    for (const ContractCheck& check : contractChecks()) {
        const std::unique_ptr<SceneUnderTest> scene = makeScene();
        const std::string violation = check.violation(*scene);
        if (violation.empty())
            continue;
        violations += check.name + ": " + violation + "\n";
        // All others look for objects of rows.
        if (&check < &contractChecks()[2])
            break;
    }
    return violations;
}

} // namespace kyr::testkit
