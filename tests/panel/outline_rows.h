#pragma once

#include <support/tree_model.h>

#include <panel/outline/outline_model.h>

#include <host/ui/text_predicate.h>

#include <QItemSelectionModel>

using test::TreeModel;

/// An outline over a scene with a selection and a filter.
struct Outline
{
    using Model = kyr::panel::OutlineModel;

    explicit Outline(std::unique_ptr<TreeModel> newScene)
        : scene(std::move(newScene)), selection(new QItemSelectionModel(scene.get()))
    {
        model.setSourceModel(scene.get());
        model.setSelectionModel(selection);
        model.setPredicate(&predicate);
    }
    explicit Outline(TreeModel::Items rows) : Outline(std::make_unique<TreeModel>(std::move(rows)))
    {}
    explicit Outline(const char* text) : Outline(TreeModel::parsed(text)) {}

    QModelIndex find(const char* name) const { return scene->find(name); }
    void expand(const char* name, bool on = true) { model.setExpanded(find(name), on); }
    void filter(const char* text)
    {
        predicate.setText(QLatin1String(text));
        model.finish();
    }
    void arrange(const char* arrangement)
    {
        model.setArrangement(QLatin1String(arrangement));
        model.finish();
    }
    void sort(int role, bool descending = false)
    {
        model.setSortRole(role);
        model.setSortDescending(descending);
        model.finish();
    }
    /// Each row: a dot a level, "-" if it is open, its name, "*" if it is selected, "#" with the
    /// number of selected rows that it hides, "~" if it only leads to a match.
    static QStringList rows(const Model& model)
    {
        QStringList rows;
        for (int row = 0; row < model.count(); ++row) {
            const QModelIndex index = model.index(row);
            const int hidden = index.data(Model::HiddenSelectedRole).toInt();
            rows += QString(index.data(Model::DepthRole).toInt(), '.') +
                    (model.isRowExpanded(row) ? "-" : "") + index.data().toString() +
                    (model.isRowSelected(row) ? "*" : "") +
                    (hidden > 0 ? '#' + QString::number(hidden) : QString()) +
                    (index.data(Model::MatchesRole).toBool() ? "" : "~");
        }
        return rows;
    }
    static std::string text(const Model& model) { return rows(model).join(' ').toStdString(); }
    QStringList rows() const { return rows(model); }
    std::string text() const { return text(model); }

    std::unique_ptr<TreeModel> scene;
    QItemSelectionModel* selection; ///< The scene owns it.
    lumo::datamodels::proxy::TextPredicate predicate;
    Model model;
};
