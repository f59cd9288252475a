#pragma once

#include <kyr_scene_outline/export.h>

#include <QObject>
#include <QStringList>

/// A filter choice that an editor adds to the Scene Browser panel. The panel shows the title and
/// the labels and writes the current index; what a label means is the subclass's business.
/// The browser does not own filters: remove one before you destroy it.
class KYR_SCENE_OUTLINE_EXPORT AbstractFilterData : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QStringList labels READ labels NOTIFY labelsChanged)
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentIndexChanged)

public:
    AbstractFilterData();
    ~AbstractFilterData() override;

    virtual QString title() = 0;
    virtual QStringList labels() = 0;
    virtual int currentIndex() = 0;
    virtual void setCurrentIndex(int index) = 0;

Q_SIGNALS:
    void labelsChanged();
    void currentIndexChanged();
};
