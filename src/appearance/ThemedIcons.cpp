#include "appearance/ThemedIcons.h"

#include <QFile>
#include <QIconEngine>
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

QByteArray inColor(QByteArray svg, const QColor &color)
{
    const QByteArray opacity = QByteArray::number(color.alphaF(), 'f', 2);
    return svg.replace("stroke=\"#000000\"",
                       "stroke=\"" + color.name().toLatin1() + "\" stroke-opacity=\"" + opacity + "\"");
}

} // namespace

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

namespace {

/// Draws an icon when it is shown and in that size only: a program start has no time for all sizes of every
/// icon.
class DrawingEngine : public QIconEngine
{
public:
    DrawingEngine(QStringView name, const QColor &color) : m_name(name.toString()), m_color(color) {}

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        return drawing(size, mode, 1);
    }
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        painter->drawPixmap(rect.topLeft(),
                            drawing(rect.size(), mode, painter->device()->devicePixelRatioF()));
    }
    QIconEngine *clone() const override { return new DrawingEngine(*this); }
    // Trays offer these to the desktop and no others.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override
    {
        return {{16, 16}, {24, 24}, {32, 32}, {48, 48}, {64, 64}, {96, 96}};
    }

private:
    QPixmap drawing(const QSize &size, QIcon::Mode mode, qreal pixelRatio) const
    {
        QColor color = m_color;
        if (mode == QIcon::Disabled) {
            color.setAlphaF(0.35F);
        }
        return themedPixmap(m_name, color, std::min(size.width(), size.height()), pixelRatio);
    }

    QString m_name;
    QColor m_color;
};

} // namespace

QIcon themedIcon(QStringView name, const QColor &color)
{
    return QIcon(new DrawingEngine(name, color));
}

QIcon programIcon()
{
    return QIcon(new DrawingEngine(u"calldesk", Qt::black)); // it has no line in the colour of texts
}

} // namespace appearance
