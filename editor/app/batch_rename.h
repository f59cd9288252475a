#pragma once

#include <editor/document/rename_rule.h>
#include <editor/document/scene_document.h>
#include <host/scene/asset_selection.h>

#include <QAbstractListModel>

namespace editor {

/// The selected objects with the names that a rule would give them.
class BatchRename final : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(QString find READ find WRITE setFind NOTIFY ruleChanged)
    Q_PROPERTY(QString replacement READ replacement WRITE setReplacement NOTIFY ruleChanged)
    Q_PROPERTY(QString pattern READ pattern WRITE setPattern NOTIFY ruleChanged)
    Q_PROPERTY(int first READ first WRITE setFirst NOTIFY ruleChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role
    {
        BeforeRole = Qt::DisplayRole,
        AfterRole = Qt::UserRole,
    };

    /// Document and selection must outlive the model.
    BatchRename(SceneDocument& document, IAssetSelection& selection, QObject* parent = nullptr);

    int count() const noexcept { return int(m_objects.size()); }
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    QString find() const { return m_rule.find; }
    void setFind(const QString& text);
    QString replacement() const { return m_rule.replacement; }
    void setReplacement(const QString& text);
    QString pattern() const { return m_rule.pattern; }
    void setPattern(const QString& pattern);
    int first() const noexcept { return m_rule.first; }
    void setFirst(int first);

    /// Takes the objects that are selected now, in tree order.
    Q_INVOKABLE void begin();
    /// Renames them as one step and forgets them. Objects whose new name is empty keep theirs.
    Q_INVOKABLE void apply();
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void ruleChanged();
    void countChanged();

private:
    void setObjects(SceneObjects objects);
    void changeRule();

    SceneDocument& m_document;
    IAssetSelection& m_selection;
    SceneObjects m_objects;
    RenameRule m_rule;
};

} // namespace editor
