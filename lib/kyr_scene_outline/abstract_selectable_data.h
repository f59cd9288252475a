#pragma once

#include <kyr_scene_outline/export.h>

#include <QObject>
#include <QStringList>

/// One fixed list of labels with a current one, such as the panel's modes.
/// The browser does not own it: set null before you destroy it.
class KYR_SCENE_OUTLINE_EXPORT AbstractSelectableData : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QStringList labels READ labels CONSTANT)
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentIndexChanged)

public:
    AbstractSelectableData();
    ~AbstractSelectableData() override;

    virtual QStringList labels() const = 0;
    virtual int currentIndex() const = 0;
    virtual void setCurrentIndex(int index) = 0;

    /// Empty when the current index lies outside the labels.
    QString currentLabel() const;

Q_SIGNALS:
    void currentIndexChanged();
};
