#include "editor_test.h"

#include <scene/scene_samples.h>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QSignalSpy>

namespace test {

using editor::SceneObjectPtr;

namespace {

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
    const SceneObjectPtr stage =
        sceneFrom("group Lamps\n"
                  "  light Left | transform.position=-2 3 0 | light.intensity=4\n"
                  "  light Right | transform.position=2 3 0 | light.intensity=5\n"
                  "mesh Near | shape=box 1 1 1 | transform.position=-2 0 0\n"
                  "mesh Far | shape=box 1 1 1 | transform.position=2 0 0",
                  "Stage");
    stage->setExpanded(true);
    session.document()->open(stage, {});
    if (!window || !QTest::qWaitForWindowExposed(window))
        throw std::runtime_error("the window does not show");
    // No window manager does it on a bare display.
    window->requestActivate();
    if (!QTest::qWaitForWindowActive(window))
        throw std::runtime_error("the window takes no keys");
}

SceneObjectPtr EditorDriver::object(const char* name)
{
    if (session.document()->root()->name() == name)
        return session.document()->root();
    for (const SceneObjectPtr& object : allObjects(*session.document())) {
        if (object->name() == name)
            return object;
    }
    return nullptr;
}

std::vector<quint32> EditorDriver::ids(std::initializer_list<const char*> names)
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

void EditorDriver::set(const char* name, const char* property, const char* text)
{
    session.document()->setProperty({object(name)}, property, lumo::Variant(text));
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

QString EditorDriver::text(const QString& objectName)
{
    return item(objectName)->property("text").toString();
}

QPoint EditorDriver::centre(QQuickItem* item) const
{
    return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
}

QStringList EditorDriver::rows()
{
    const auto* tree = item("outline_tree")->property("outline").value<QAbstractItemModel*>();
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

void EditorDriver::undo()
{
    key(Qt::Key_Z, Qt::ControlModifier);
}

void EditorDriver::redo()
{
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
}

int EditorDriver::steps()
{
    return session.document()->undoStack().index();
}

QMenu* EditorDriver::openedMenu()
{
    QMenu* menu = nullptr;
    if (!QTest::qWaitFor([&menu] {
            menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            return menu != nullptr;
        }))
        throw std::runtime_error("no menu opens");
    return menu;
}

bool EditorDriver::chooseInMenu(const QString& text)
{
    QMenu* menu = openedMenu();
    for (QAction* action : menu->actions()) {
        if (action->text().remove(QLatin1Char('&')) == text) {
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            return true;
        }
    }
    return false;
}

void EditorDriver::type(const QString& text)
{
    for (const QChar character : text)
        QTest::keyClick(window, character.toLatin1());
}

void EditorDriver::openFile(const QString& path)
{
    QSignalSpy loaded(session.loader(), &editor::LoadController::loaded);
    session.files()->openFile(path);
    if (loaded.isEmpty() && !loaded.wait())
        throw std::runtime_error("the file does not open");
}

void EditorDriver::reload()
{
    QSignalSpy loaded(session.loader(), &editor::LoadController::loaded);
    session.files()->reload();
    EXPECT_TRUE(loaded.wait());
}

} // namespace test
