#include <panel/columns/outline_columns.h>
#include <panel/gestures/row_editor.h>
#include <panel/gestures/tree_dragger.h>
#include <panel/gestures/tree_navigator.h>
#include <panel/icons/icon_provider.h>
#include <panel/outline/outline_model.h>
#include <panel/outline/row_handle.h>
#include <panel/texts/display_text.h>

#include <QQmlEngine>
#include <QQmlExtensionPlugin>

namespace kyr::panel {

class SceneOutlinePanelPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    void registerTypes(const char* uri) override
    {
        qmlRegisterType<OutlineModel>(uri, 1, 0, "OutlineModel");
        qmlRegisterType<TreeNavigator>(uri, 1, 0, "TreeNavigator");
        qmlRegisterType<OutlineColumns>(uri, 1, 0, "OutlineColumns");
        qmlRegisterType<RowEditor>(uri, 1, 0, "RowEditor");
        qmlRegisterType<RowHandle>(uri, 1, 0, "RowHandle");
        qmlRegisterType<TreeDragger>(uri, 1, 0, "TreeDragger");
        qmlRegisterSingletonType<DisplayText>(
            uri, 1, 0, "DisplayText",
            [](QQmlEngine*, QJSEngine*) -> QObject* { return new DisplayText; });
    }

    void initializeEngine(QQmlEngine* engine, const char*) override
    {
        engine->addImageProvider(QLatin1String(IconProvider::name), new IconProvider);
    }
};

} // namespace kyr::panel

#include "plugin.moc"
