#pragma once

#include <host/variant/value_types.h>

#include <QColor>

namespace editor {

// The scene keeps linear colours, the screen shows sRGB ones (IEC 61966-2-1).

/// Clamped to what a screen can show.
QColor toScreenColor(const lumo::Color& linear);
lumo::Color fromScreenColor(const QColor& color);

} // namespace editor
