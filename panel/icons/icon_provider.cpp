#include "icon_provider.h"

#include <QColor>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <QUrl>

namespace kyr::panel {

namespace {

constexpr QSize defaultSize(16, 16);

QString filePath(const QString& icon)
{
    if (icon.startsWith(QLatin1String("qrc:")))
        return icon.mid(3);
    if (icon.startsWith(QLatin1String("file:")))
        return QUrl(icon).toLocalFile();
    if (icon.contains(QLatin1Char('/')))
        return icon;
    return QStringLiteral(":/kyr/scene_outline/icons/%1.svg").arg(icon);
}

QByteArray readIcon(const QString& icon)
{
    for (const QString& path : {filePath(icon), filePath(QStringLiteral("object"))}) {
        QFile file(path);
        if (file.open(QFile::ReadOnly))
            return file.readAll();
    }
    return {};
}

} // namespace

IconProvider::IconProvider() : QQuickImageProvider(Image) {}

QImage IconProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    const QColor color(QLatin1Char('#') + id.section(QLatin1Char('/'), 0, 0));
    QByteArray svg = readIcon(id.section(QLatin1Char('/'), 1));
    svg.replace("currentColor", color.name().toLatin1());
    const QSize imageSize = requestedSize.isEmpty() ? defaultSize : requestedSize;
    QImage image(imageSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(svg).render(&painter);
    if (size)
        *size = imageSize;
    return image;
}

} // namespace kyr::panel
