#include "color_conversion.h"

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

float encoded(float linear)
{
    const float value = std::clamp(linear, 0.0f, 1.0f);
    return value <= 0.0031308f ? 12.92f * value : 1.055f * std::pow(value, 1 / 2.4f) - 0.055f;
}

float decoded(double screen)
{
    const auto value = float(screen);
    return value <= 0.04045f ? value / 12.92f : std::pow((value + 0.055f) / 1.055f, 2.4f);
}

} // namespace

QColor toScreenColor(const lumo::Color& linear)
{
    return QColor::fromRgbF(double(encoded(linear.r)), double(encoded(linear.g)),
                            double(encoded(linear.b)), double(std::clamp(linear.a, 0.0f, 1.0f)));
}

lumo::Color fromScreenColor(const QColor& color)
{
    return {decoded(color.redF()), decoded(color.greenF()), decoded(color.blueF()),
            float(color.alphaF())};
}

} // namespace editor
