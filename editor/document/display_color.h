#pragma once

#include <host/variant/value_types.h>

#include <QColor>

namespace editor {

// Colours of properties are linear; screens and most file formats take them sRGB-encoded.

/// Clamped to what a screen can show.
QColor displayColor(const lumo::Color& linear);
lumo::Color linearColor(const QColor& display);

/// One channel, unclamped. Source: IEC 61966-2-1.
float displayFromLinear(float value);
float linearFromDisplay(float value);

} // namespace editor
