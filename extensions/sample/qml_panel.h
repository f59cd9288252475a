#pragma once

#include <kyr_scene_outline/scene_browser_panel_base.h>

namespace sample {

/// A panel that shows a QML file of this plug-in.
class QmlPanel : public SceneBrowserPanelBase
{
    Q_OBJECT

public:
    /// The component sees `context` under that name; it must outlive the panel.
    QmlPanel(QQmlEngine& engine, const QString& file, QObject& context);

    QQmlComponent* getComponent() override { return &m_component; }
    QObject* getContext() override { return &m_context; }

private:
    QQmlComponent m_component;
    QObject& m_context;
};

} // namespace sample
