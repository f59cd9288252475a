#include "object_kind.h"

namespace editor {

QLatin1String kindId(ObjectKind kind) noexcept
{
    switch (kind) {
    case ObjectKind::Scene:
        return QLatin1String("scene");
    case ObjectKind::Group:
        return QLatin1String("group");
    case ObjectKind::Mesh:
        return QLatin1String("mesh");
    case ObjectKind::Light:
        return QLatin1String("light");
    case ObjectKind::Camera:
        return QLatin1String("camera");
    }
    return QLatin1String();
}

} // namespace editor
