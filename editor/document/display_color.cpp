#include "display_color.h"

#include <algorithm>
#include <cmath>

namespace editor {

float displayFromLinear(float value)
{
    return value <= 0.0031308f ? value * 12.92f : 1.055f * std::pow(value, 1 / 2.4f) - 0.055f;
}

float linearFromDisplay(float value)
{
    return value <= 0.04045f ? value / 12.92f : std::pow((value + 0.055f) / 1.055f, 2.4f);
}

QColor displayColor(const lumo::Color& linear)
{
    const auto channel = [](float value) {
        return std::clamp(double(displayFromLinear(value)), 0.0, 1.0);
    };
    return QColor::fromRgbF(channel(linear.r), channel(linear.g), channel(linear.b),
                            std::clamp(double(linear.a), 0.0, 1.0));
}

lumo::Color linearColor(const QColor& display)
{
    const auto channel = [](double value) { return linearFromDisplay(float(value)); };
    return {channel(display.redF()), channel(display.greenF()), channel(display.blueF()),
            float(display.alphaF())};
}

} // namespace editor
