#pragma once

#include <editor/document/scene_document.h>

#include <QPointer>

namespace editor {

/// A change of the document that moves the states of its objects along.
class SceneDocument::Change : public Zar::IChange
{
public:
    explicit Change(SceneDocument& document);

    void undo() final;
    void redo() final;
    /// Gives the objects their new states only, for a change that is in place.
    void stamp();

protected:
    virtual void apply() = 0;
    virtual void revert() = 0;
    /// `object` differs from its file after the change. Call it on construction.
    void changes(SceneObjectPtr object);
    SceneDocument& document() const noexcept { return m_document; }

private:
    struct State
    {
        SceneObjectPtr object;
        quint32 before;
    };

    SceneDocument& m_document;
    std::vector<State> m_states;
    quint32 m_before;
    quint32 m_after;
};

/// A property that took another value; the value is in place when the change is made.
class SceneDocument::PropertyChange final : public Change
{
public:
    PropertyChange(SceneDocument& document, const kyr::BoundProperty& property,
                   lumo::Variant before, lumo::Variant after);

private:
    void apply() override;
    void revert() override;

    kyr::BoundProperty m_property;
    lumo::Variant m_before;
    lumo::Variant m_after;
};

/// Adjacent children that come or go.
class SceneDocument::RowsChange final : public Change
{
public:
    /// Inserts `objects`.
    RowsChange(SceneDocument& document, SceneObjectPtr parent, int row, SceneObjects objects);
    /// Removes `count` children.
    RowsChange(SceneDocument& document, SceneObjectPtr parent, int row, int count);
    ~RowsChange() override;

private:
    void apply() override { m_isInsertion ? put() : take(); }
    void revert() override { m_isInsertion ? take() : put(); }
    void put();
    void take();

    // The change may outlive it.
    QPointer<SceneDocument> m_owner;
    SceneObjectPtr m_parent;
    // Those that are out of the scene at present.
    SceneObjects m_objects;
    int m_row;
    int m_count;
    bool m_isInsertion;
};

/// Adjacent children that go before the child at `row` of the same or another parent.
class SceneDocument::MoveChange final : public Change
{
public:
    MoveChange(SceneDocument& document, SceneObjectPtr from, int first, int count,
               SceneObjectPtr to, int row);

private:
    void apply() override;
    void revert() override;

    SceneObjectPtr m_from;
    SceneObjectPtr m_to;
    int m_first;
    int m_count;
    int m_row;
};

/// Children that take another order.
class SceneDocument::OrderChange final : public Change
{
public:
    OrderChange(SceneDocument& document, SceneObjectPtr parent, std::vector<int> oldRows);

private:
    void apply() override;
    void revert() override;

    SceneObjectPtr m_parent;
    std::vector<int> m_oldRows;
};

/// Selection sets that are other ones.
class SceneDocument::SetsChange final : public Change
{
public:
    SetsChange(SceneDocument& document, SelectionSets sets);

private:
    void apply() override;
    void revert() override { apply(); }

    // Those that the scene does not have at present.
    SelectionSets m_sets;
};

} // namespace editor
