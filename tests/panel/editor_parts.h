#pragma once

#include <host/ui/popup_menu.h>
#include <kyr_scene_outline/abstract_filter_data.h>
#include <kyr_scene_outline/abstract_selectable_data.h>
#include <kyr_scene_outline/scene_browser_panel_base.h>

#include <utility>

/// What an editor hangs above or below the tree.
class Header : public SceneBrowserPanelBase
{
public:
    QQmlComponent* getComponent() override { return component; }
    QObject* getContext() override { return context; }

    QQmlComponent* component = nullptr;
    QObject* context = nullptr;
};

class Filter : public AbstractFilterData
{
public:
    Filter(QString title, QStringList labels)
        : m_title(std::move(title)), m_labels(std::move(labels))
    {}
    QString title() override { return m_title; }
    QStringList labels() override { return m_labels; }
    int currentIndex() override { return m_index; }
    void setCurrentIndex(int index) override
    {
        m_index = index;
        Q_EMIT currentIndexChanged();
    }
    void setLabels(const QStringList& labels)
    {
        m_labels = labels;
        Q_EMIT labelsChanged();
    }

private:
    QString m_title;
    QStringList m_labels;
    int m_index = 0;
};

class Modes : public AbstractSelectableData
{
    Q_OBJECT
    Q_PROPERTY(QString arrangement READ arrangement NOTIFY currentIndexChanged)

public:
    QStringList labels() const override { return {"Hierarchy", "Flat", "Type"}; }
    QString arrangement() const { return currentLabel().toLower(); }
    int currentIndex() const override { return m_index; }
    void setCurrentIndex(int index) override
    {
        m_index = index;
        Q_EMIT currentIndexChanged();
    }

private:
    int m_index = 0;
};

/// Counts how often a menu is asked for, and has none.
class MenuRequests : public lumo::IPopupMenuProvider
{
public:
    lumo::IPopupMenu* popupMenu() override
    {
        ++count;
        return nullptr;
    }
    int count = 0;
};
