#include "appearance/ThemedIcons.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

// The resources of a static library are only there once somebody asks for them.
static void useIconResources()
{
    Q_INIT_RESOURCE(appearance);
}

namespace appearance {

namespace {

constexpr int sizes[] = {16, 24, 32, 48, 64, 96};

QByteArray source(QStringView name)
{
    useIconResources();
    QFile file(u":/icons/%1.svg"_s.arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QPixmap drawn(const QByteArray &svg, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(svg).render(&painter);
    return pixmap;
}

void addDrawings(QIcon &icon, const QByteArray &svg, QIcon::Mode mode)
{
    for (const int size : sizes) {
        icon.addPixmap(drawn(svg, size), mode);
    }
}

QByteArray inColor(QByteArray svg, const QColor &color)
{
    const QByteArray opacity = QByteArray::number(color.alphaF(), 'f', 2);
    return svg.replace("stroke=\"#000000\"",
                       "stroke=\"" + color.name().toLatin1() + "\" stroke-opacity=\"" + opacity + "\"");
}

} // namespace

QIcon themedIcon(QStringView name, const QColor &color)
{
    const QByteArray svg = source(name);
    QColor pale = color;
    pale.setAlphaF(0.35F);
    QIcon icon;
    addDrawings(icon, inColor(svg, color), QIcon::Normal);
    addDrawings(icon, inColor(svg, pale), QIcon::Disabled);
    return icon;
}

// Tables ask for this one with every repaint of a cell.
QPixmap themedPixmap(QStringView name, const QColor &color, int size, qreal pixelRatio)
{
    const int pixels = qRound(size * pixelRatio);
    const QString key = u"calldesk/%1/%2/%3"_s.arg(name).arg(color.rgba()).arg(pixels);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = drawn(inColor(source(name), color), pixels);
        QPixmapCache::insert(key, pixmap);
    }
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

QIcon programIcon()
{
    QIcon icon;
    addDrawings(icon, source(u"calldesk"), QIcon::Normal);
    return icon;
}

} // namespace appearance
