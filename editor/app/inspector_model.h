#pragma once

#include <editor/app/merged_value.h>

#include <editor/document/scene_document.h>
#include <editor/document/scene_property.h>
#include <host/scene/asset_selection.h>
#include <host/undo/commit_changes_scope.h>

#include <QAbstractListModel>
#include <QColor>
#include <QSet>
#include <QTimer>

#include <functional>
#include <optional>
#include <unordered_map>

namespace editor {

/// The properties of the primary selected object. What is edited changes in every selected object
/// that has the property, as one undo step; where these differ, the line says so.
///
/// Comparing many objects is worked off in slices on the event loop, so that selecting 100,000
/// of them does not stall the view.
class InspectorModel final : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int objectCount READ objectCount NOTIFY objectsChanged)
    Q_PROPERTY(bool locked READ isLocked NOTIFY lockedChanged)

public:
    enum Role
    {
        LabelRole = Qt::DisplayRole,
        PathRole = Qt::UserRole, ///< QString, dotted
        KindRole,                ///< QString, the lower-case name of a `PropertyKind`
        ValueRole,               ///< see `MergedValue::display`
        MixedRole,               ///< bool, all parts of the value differ between objects
        ReadOnlyRole,
        UnitRole,
        MinimumRole,
        MaximumRole,
        StepRole,
        ChoicesRole,
        ExpandedRole, ///< bool, of a group
        ShownRole,    ///< bool, false below a folded group
    };

    /// Document and selection must outlive the model.
    InspectorModel(SceneDocument& document, IAssetSelection& selection, QObject* parent = nullptr);
    ~InspectorModel() override;

    int objectCount() const noexcept { return int(m_objects.size()); }
    /// Whether all objects are locked, so that nothing but their locks can be edited.
    bool isLocked() const noexcept { return m_locked; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // Edits. Numbers are kept within the property's range.
    Q_INVOKABLE void setBoolean(int row, bool value);
    /// A number as of `NumberEntry`, for a number or one component of a vector (-1 for a number);
    /// other components stay what they are in each object. False when the text is none.
    Q_INVOKABLE bool typeNumber(int row, int component, const QString& text);
    /// Adds to each object's own value.
    Q_INVOKABLE void stepNumber(int row, int component, double amount);
    /// Adds to what each object had when the change began.
    Q_INVOKABLE void dragNumber(int row, int component, double amount);
    Q_INVOKABLE void setColor(int row, const QColor& color);
    /// A text or the name of a choice.
    Q_INVOKABLE void setText(int row, const QString& text);

    /// Makes all edits until `endChange` one step, such as those of a drag.
    Q_INVOKABLE void beginChange(int row);
    Q_INVOKABLE void endChange();

    Q_INVOKABLE void toggleGroup(int row);

Q_SIGNALS:
    void objectsChanged();
    void lockedChanged();
    /// What of an edit could not be taken, in one sentence.
    void refused(const QString& reason);

private:
    /// A property, or the heading of a nested object.
    struct Line
    {
        std::string path;
        QString label;
        /// Path of the nested object that the property belongs to; empty at the top.
        std::string group;
        /// Null for a heading.
        const SceneProperty* property = nullptr;
        MergedValue value = {};

        PropertyKind kind() const { return property ? property->kind() : PropertyKind::Group; }
        bool isSameAs(const Line& other) const { return path == other.path; }
    };
    /// The new value from an object's present one; nothing when it cannot be taken.
    using Edit = std::function<std::optional<lumo::Variant>(SceneObject&, const lumo::Variant&)>;

    void followSelection();
    void readValues();
    void readPrimaryValues();
    void compareSlice();
    /// Of the primary object.
    std::vector<Line> primaryLines() const;
    /// Whether the value could be taken.
    bool edit(int row, const Edit& edit);
    std::string stepOf(const SceneProperty& property) const;
    void changeNumber(int row, int component,
                      const std::function<double(const SceneObject&, double)>& change);
    void emitChanged(int row, const QVector<int>& roles);
    QVariant describe(const SceneProperty& property, int role) const;
    /// Null for a heading.
    const SceneProperty* propertyAt(int row) const;

    SceneDocument& m_document;
    IAssetSelection& m_selection;
    /// The primary one first.
    SceneObjects m_objects;
    std::vector<Line> m_lines;
    QSet<QString> m_foldedGroups;
    bool m_locked = false;
    std::size_t m_compared = 0;
    QTimer m_compareTimer;
    std::optional<Zar::CommitChangesScope> m_change;
    /// What a dragged number was in each object; only while the change lasts.
    std::unordered_map<const SceneObject*, double> m_dragStarts;
    vex::Connection m_selectionChanged;
};

} // namespace editor
