#include <kyr_scene_outline/item_roles.h>

namespace kyr {

static_assert(TypeRole == 356 && ObjectRole == 358 && ModifiedRole == 363,
              "the role numbers are shared with scene models");

const QHash<int, QByteArray> itemRoleNames = {
    {TypeRole, "type"},       {CountRole, "count"},
    {ObjectRole, "object"},   {ExpandedRole, "expanded"},
    {EnabledRole, "enabled"}, {RowButtonsModelRole, "rowButtonsModel"},
    {HoverRole, "hoverRole"}, {ModifiedRole, "modified"},
};

} // namespace kyr
