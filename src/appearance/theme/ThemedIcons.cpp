#include "appearance/theme/ThemedIcons.h"

#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

// The resources of a static library are only there once somebody asks for them.
static void useIconResources()
{
    Q_INIT_RESOURCE(appearance);
}

namespace appearance {

namespace {

// The icon in the smallest of its sizes that is large enough, or in the largest.
QImage picture(QStringView name, int pixels)
{
    useIconResources();
    constexpr std::array sizes = {16, 20, 24, 32, 40, 48, 64, 96, 128, 256};
    const auto *const size = std::lower_bound(sizes.begin(), sizes.end() - 1, pixels);
    const QImage image(u":/icons/%1-%2.png"_s.arg(name).arg(*size));
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// An icon without a colour keeps its own.
QPixmap drawn(QStringView name, const QColor &color, int pixels)
{
    QImage image = picture(name, pixels);
    if (image.width() != pixels) {
        image = image.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    if (color.isValid()) {
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
    }
    return QPixmap::fromImage(image);
}

} // namespace

// Tables ask for this one with every repaint of a cell.
QPixmap themedPixmap(QStringView name, const QColor &color, int size, qreal pixelRatio)
{
    const int pixels = qRound(size * pixelRatio);
    const QString tint = color.isValid() ? QString::number(color.rgba()) : QString();
    const QString key = u"calldesk/%1/%2/%3"_s.arg(name, tint).arg(pixels);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = drawn(name, color, pixels);
        QPixmapCache::insert(key, pixmap);
    }
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

namespace {

// Draws an icon when it is shown and in that size only: a program start has no time for all sizes of every
// icon.
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
        if (mode == QIcon::Disabled && color.isValid()) {
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
    return QIcon(new DrawingEngine(u"calldesk", QColor()));
}

} // namespace appearance
