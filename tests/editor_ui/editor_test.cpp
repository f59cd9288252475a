#include "editor_test.h"

#include <editor/geometry/primitive_shapes.h>
#include <kyr_scene_outline/item_roles.h>

#include <QProcess>

namespace test {

using editor::ObjectKind;
using editor::SceneObject;
using editor::SceneObjectPtr;

namespace {

SceneObjectPtr makeBox(const char* name, float x)
{
    SceneObjectPtr box = SceneObject::create(ObjectKind::Mesh, name);
    box->mesh()->asset = editor::makePrimitive("box 1 1 1");
    box->transform()->position = {x, 0, 0};
    return box;
}

SceneObjectPtr makeLight(const char* name, float x, float intensity)
{
    SceneObjectPtr light = SceneObject::create(ObjectKind::Light, name);
    light->transform()->position = {x, 3, 0};
    light->light()->intensity = intensity;
    return light;
}

SceneObjectPtr makeScene()
{
    SceneObjectPtr root = SceneObject::create(ObjectKind::Scene, "Stage");
    const SceneObjectPtr lamps = SceneObject::create(ObjectKind::Group, "Lamps");
    lamps->append(makeLight("Left", -2, 4));
    lamps->append(makeLight("Right", 2, 5));
    root->append(lamps);
    root->append(makeBox("Near", -2));
    root->append(makeBox("Far", 2));
    root->setExpanded(true);
    return root;
}

SceneObjectPtr findBelow(const SceneObjectPtr& branch, const std::string& name)
{
    if (branch->name() == name)
        return branch;
    for (const SceneObjectPtr& child : branch->children()) {
        if (SceneObjectPtr found = findBelow(child, name))
            return found;
    }
    return nullptr;
}

QQuickItem* findVisible(QQuickItem* branch, const QString& objectName)
{
    if (branch->objectName() == objectName && branch->isVisible() && branch->width() > 0)
        return branch;
    for (QQuickItem* child : branch->childItems()) {
        if (QQuickItem* found = findVisible(child, objectName))
            return found;
    }
    return nullptr;
}

} // namespace

EditorDriver::EditorDriver()
{
    session.document()->open(makeScene(), {});
    if (!window || !QTest::qWaitForWindowExposed(window))
        throw std::runtime_error("the window does not show");
    // No window manager does it on a bare display.
    window->requestActivate();
    if (!QTest::qWaitForWindowActive(window))
        throw std::runtime_error("the window takes no keys");
}

SceneObjectPtr EditorDriver::object(const char* name) const
{
    return findBelow(const_cast<EditorDriver*>(this)->session.document()->root(), name);
}

std::vector<quint32> EditorDriver::ids(std::initializer_list<const char*> names) const
{
    std::vector<quint32> result;
    for (const char* name : names)
        result.push_back(object(name)->id());
    return result;
}

QStringList EditorDriver::selection()
{
    QStringList names;
    for (const kyr::PersistentObject& selected : session.selection().objects())
        names.append(editor::sceneObjectOf(selected.object())->displayName());
    return names;
}

QStringList EditorDriver::selectedRows()
{
    QModelIndexList rows = session.browser()->selectionModel()->selectedRows();
    QStringList names;
    for (const QModelIndex& selected : rows)
        names.append(selected.data().toString());
    names.sort();
    return names;
}

QModelIndex EditorDriver::row(const char* name)
{
    const SceneObjectPtr found = object(name);
    return found ? session.assetModel().indexOf(found->reflected()) : QModelIndex();
}

void EditorDriver::select(std::initializer_list<const char*> names)
{
    IAssetSelection::Objects objects;
    for (const char* name : names)
        objects.emplace_back(object(name)->reflected());
    session.selection().setSelection(objects, false);
}

QQuickItem* EditorDriver::item(const QString& objectName, QQuickItem* inside)
{
    QQuickItem* found = nullptr;
    if (!QTest::qWaitFor([&] {
            found = findVisible(inside ? inside : window->contentItem(), objectName);
            return found != nullptr;
        }))
        throw std::runtime_error("no visible " + objectName.toStdString());
    return found;
}

QPoint EditorDriver::centre(QQuickItem* item) const
{
    return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
}

QStringList EditorDriver::rows()
{
    const auto* tree = item("outline_tree")->property("flatModel").value<QAbstractItemModel*>();
    QStringList names;
    for (int row = 0; row < tree->rowCount(); ++row)
        names.append(tree->index(row, 0).data().toString());
    return names;
}

bool EditorDriver::waitForRows(const QStringList& names)
{
    return QTest::qWaitFor([&] { return rows() == names; });
}

// Items that a list keeps for later rows look like visible ones, so the list is asked.
QQuickItem* EditorDriver::rowItem(const char* name)
{
    QVariant found;
    if (!QTest::qWaitFor([&] {
            QMetaObject::invokeMethod(item("outline_tree"), "itemAtRow",
                                      Q_RETURN_ARG(QVariant, found),
                                      Q_ARG(QVariant, rows().indexOf(name)));
            return found.value<QQuickItem*>() != nullptr;
        }))
        throw std::runtime_error(std::string("no row ") + name);
    return found.value<QQuickItem*>();
}

QPoint EditorDriver::rowPoint(const char* name)
{
    return centre(rowItem(name));
}

bool EditorDriver::shows(const QString& objectName)
{
    return findVisible(window->contentItem(), objectName) != nullptr;
}

QPoint EditorDriver::viewPoint(const char* name)
{
    const QPointF point = session.viewport()->projectToScreen(object(name)->id());
    return item("viewport")->mapToScene(point).toPoint();
}

void EditorDriver::openRow(const char* name)
{
    click(centre(item("arrow", rowItem(name))));
}

void EditorDriver::click(const QPoint& point, Qt::KeyboardModifiers modifiers,
                         Qt::MouseButton button)
{
    QTest::mouseClick(window, button, modifiers, point);
}

void EditorDriver::drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers)
{
    QTest::mousePress(window, Qt::LeftButton, modifiers, from);
    QTest::mouseMove(window, (from + to) / 2);
    QTest::mouseMove(window, to);
    QTest::mouseRelease(window, Qt::LeftButton, modifiers, to);
}

void EditorDriver::moveTo(const QPoint& point)
{
    QTest::mouseMove(window, point);
    QTest::qWait(0);
}

void EditorDriver::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(window, key, modifiers);
}

void EditorDriver::type(const QString& text)
{
    for (const QChar character : text)
        QTest::keyClick(window, character.toLatin1());
}

void EditorDriver::displayKey(const char* name)
{
    QProcess keys;
    keys.start("xdotool", {"key", name});
    if (!QTest::qWaitFor([&] { return keys.state() == QProcess::NotRunning; }) ||
        keys.exitCode() != 0)
        throw std::runtime_error("the display sends no keys");
}

} // namespace test
