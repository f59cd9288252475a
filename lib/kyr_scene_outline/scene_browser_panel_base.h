#pragma once

#include <kyr_scene_outline/export.h>

#include <QObject>
#include <QQmlComponent>

/// Extra content above or below the tree: a QML component and an object that goes with it.
/// Both are read once per panel object. The browser does not own panels: set null before you
/// destroy one.
class KYR_SCENE_OUTLINE_EXPORT SceneBrowserPanelBase : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QQmlComponent* component READ getComponent CONSTANT)
    Q_PROPERTY(QObject* context READ getContext CONSTANT)

public:
    SceneBrowserPanelBase();
    ~SceneBrowserPanelBase() override;

    /// Null in the base class.
    virtual QQmlComponent* getComponent();
    /// Null in the base class.
    virtual QObject* getContext();
};
