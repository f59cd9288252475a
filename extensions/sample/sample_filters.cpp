#include "sample_filters.h"

#include <host/reflection/reflected_object.h>
#include <kyr_scene_outline/item_roles.h>

#include <QCoreApplication>

namespace sample {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("sample::RowFilter", text);
}

RowFilter::Choice ofType(const char* label, const char* type)
{
    return {tr(label), [type = QString::fromLatin1(type)](const QModelIndex& row) {
                return row.data(kyr::TypeRole).toString() == type;
            }};
}

/// Whether the row's object, or one above it, has `property` at `value`.
bool isAnywhereAbove(const QModelIndex& row, const char* property, bool value)
{
    for (QModelIndex at = row; at.isValid(); at = at.parent()) {
        const auto object = at.data(kyr::ObjectRole).value<kyr::ReflectedObject>();
        const lumo::Variant current = object.property(property).get();
        const bool* flag = current.tryGet<bool>();
        if (flag && *flag == value)
            return true;
    }
    return false;
}

bool isHidden(const QModelIndex& row)
{
    return isAnywhereAbove(row, "visible", false);
}

bool isVisible(const QModelIndex& row)
{
    return !isHidden(row);
}

bool isLocked(const QModelIndex& row)
{
    return isAnywhereAbove(row, "locked", true);
}

} // namespace

std::vector<RowFilter::Choice> typeChoices()
{
    return {{tr("All"), {}},
            ofType("Meshes", "mesh"),
            ofType("Lights", "light"),
            ofType("Cameras", "camera"),
            ofType("Groups", "group")};
}

std::vector<RowFilter::Choice> visibilityChoices()
{
    return {{tr("All"), {}},
            {tr("Visible"), isVisible},
            {tr("Hidden"), isHidden},
            {tr("Locked"), isLocked}};
}

} // namespace sample
