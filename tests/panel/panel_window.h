#pragma once

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

#include <gtest/gtest.h>

#include <mutex>

/// The panel in a window of its own, drawn without a GPU. A warning of the QML engine fails the
/// test.
class PanelWindow
{
public:
    static constexpr int headerHeight = 24;
    static constexpr int rowHeight = 22;
    static constexpr int width = 320;
    static constexpr int visibleRows = 10;

    PanelWindow()
    {
        static std::once_flag chosen;
        std::call_once(chosen,
                       [] { QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software); });
        m_view = std::make_unique<QQuickView>();
        QObject::connect(m_view->engine(), &QQmlEngine::warnings, m_view.get(),
                         [](const QList<QQmlError>& errors) {
                             for (const QQmlError& error : errors)
                                 ADD_FAILURE() << error.toString().toStdString();
                         });
        m_view->engine()->addImportPath(QStringLiteral(KYR_QML_DIR));
    }

    void open(QObject* browser)
    {
        QQmlComponent component(m_view->engine());
        component.setData("import Kyr.SceneOutline 1.0\n"
                          "SceneBrowserPanel {\n"
                          "    focus: true\n"
                          "    style: PanelStyle { rowHeight: 22; headerHeight: 24 }\n"
                          "}",
                          {});
        m_panel = qobject_cast<QQuickItem*>(component.create());
        ASSERT_TRUE(m_panel) << component.errorString().toStdString();
        m_view->setContent({}, nullptr, m_panel);
        m_view->setResizeMode(QQuickView::SizeRootObjectToView);
        m_view->resize(width, headerHeight + visibleRows * rowHeight);
        m_panel->setProperty("browser", QVariant::fromValue(browser));
        m_view->show();
        m_view->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_view.get()));
        m_list = item("outline_list");
        ASSERT_TRUE(m_list);
    }

    QQmlEngine* engine() const { return m_view->engine(); }
    QQuickItem* panel() const { return m_panel; }
    QQuickItem* item(const char* name) const { return itemBelow(m_panel, name); }
    /// Rows and columns are only seen as children by the scene that is drawn.
    static QQuickItem* itemBelow(QQuickItem* parent, const char* name)
    {
        if (!parent || parent->objectName() == QLatin1String(name))
            return parent;
        for (QQuickItem* child : parent->childItems()) {
            if (QQuickItem* found = itemBelow(child, name))
                return found;
        }
        return nullptr;
    }
    int count() const { return m_list->property("count").toInt(); }
    int scrolled() const
    {
        return int(m_list->property("contentY").toReal() - m_list->property("originY").toReal());
    }

    QPoint at(int x, int visibleRow) const
    {
        return {x, headerHeight + visibleRow * rowHeight + rowHeight / 2};
    }
    void click(QPoint point, Qt::KeyboardModifiers modifiers = {},
               Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(m_view.get(), button, modifiers, point);
        settle();
    }
    void doubleClick(QPoint point) { QTest::mouseDClick(m_view.get(), Qt::LeftButton, {}, point); }
    void movePointer(QPoint point) { QTest::mouseMove(m_view.get(), point); }
    void drag(QPoint from, QPoint to)
    {
        pull(from, to);
        release(to);
    }
    void pull(QPoint from, QPoint to)
    {
        QTest::mousePress(m_view.get(), Qt::LeftButton, {}, from);
        QTest::mouseMove(m_view.get(), (from + to) / 2);
        QTest::mouseMove(m_view.get(), to);
    }
    void release(QPoint at)
    {
        QTest::mouseRelease(m_view.get(), Qt::LeftButton, {}, at);
        settle();
    }
    void type(const char* text)
    {
        for (; *text != 0; ++text)
            QTest::keyClick(m_view.get(), *text);
    }
    /// The middle of an item, in the window.
    QPoint middle(const char* name) const
    {
        const QQuickItem* found = item(name);
        return found ? found->mapToScene({found->width() / 2, found->height() / 2}).toPoint()
                     : QPoint(-1, -1);
    }
    /// The names of the rows that show.
    std::string rows() const
    {
        QStringList rows;
        const auto* flat = m_list->property("model").value<QAbstractItemModel*>();
        for (int row = 0; row < flat->rowCount(); ++row)
            rows += flat->index(row, 0).data().toString();
        return rows.join(' ').toStdString();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(m_view.get(), key, modifiers);
    }
    QImage grab() { return m_view->grabWindow(); }
    /// Lets what was put off until the event loop happen.
    void settle() { QTest::qWait(1); }

private:
    std::unique_ptr<QQuickView> m_view;
    QQuickItem* m_panel = nullptr;
    QQuickItem* m_list = nullptr;
};
