#pragma once

#include <editor/document/scene_document.h>
#include <host/scene/asset_selection.h>

namespace editor {

/// What a status line says about the selection.
class SelectionStatus final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(QString primaryName READ primaryName NOTIFY changed)
    Q_PROPERTY(QString primaryType READ primaryType NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)

public:
    /// Document and selection must outlive it.
    SelectionStatus(SceneDocument& document, IAssetSelection& selection, QObject* parent = nullptr);

    int count() const noexcept { return m_count; }
    /// The object selected last; null when nothing is selected.
    SceneObject* primary() const;
    /// Whether the selection holds objects that can be moved, copied and deleted.
    bool hasOtherThanRoot() const;
    /// Of the object selected last; empty when nothing is selected.
    QString primaryName() const { return m_primaryName; }
    /// See `kindId`.
    QString primaryType() const { return m_primaryType; }
    /// "3 objects selected".
    QString summary() const;

Q_SIGNALS:
    void changed();

private:
    void update();

    SceneDocument& m_document;
    IAssetSelection& m_selection;
    int m_count = 0;
    QString m_primaryName;
    QString m_primaryType;
    vex::Connection m_selectionChanged;
};

} // namespace editor
