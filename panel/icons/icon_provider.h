#pragma once

#include <panel/kyr_scene_outline_panel_export.h>

#include <QQuickImageProvider>

namespace kyr::panel {

/// Line icons in the colour that is asked for: "image://kyr-outline/rrggbb/name".
///
/// `name` is an icon of the panel, or a path or URL of an SVG file of the embedding editor; where
/// that file says `currentColor` the colour goes in. An unknown name gives a neutral dot.
class KYR_SCENE_OUTLINE_PANEL_EXPORT IconProvider : public QQuickImageProvider
{
public:
    static constexpr const char* name = "kyr-outline";

    IconProvider();

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace kyr::panel
