#include "mainwindow/forms/TrayIcon.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace mainwindow {

namespace {

// The icon with a red disc in its lower corner, whose white rim is seen on trays of any colour.
QIcon withMark(const QIcon &plain)
{
    QIcon icon;
    for (const QSize &size : plain.availableSizes()) {
        QPixmap pixmap = plain.pixmap(size, 1.0);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        const qreal disc = size.width() * 0.55;
        const qreal edge = size.width() / 16.0;
        painter.setPen(QPen(Qt::white, edge));
        painter.setBrush(QColor(0xffd02a1e));
        painter.drawEllipse(QRectF(size.width() - disc, size.height() - disc, disc, disc) -
                            QMarginsF(edge, edge, edge, edge));
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

TrayIcon::TrayIcon(const QList<QAction *> &menu)
{
    mnuTray.setObjectName(u"mnuTray"_s);
    for (QAction *action : menu) {
        if (action == nullptr) {
            mnuTray.addSeparator();
        } else {
            mnuTray.addAction(action);
        }
    }
    m_icon.setContextMenu(&mnuTray);
    connect(&m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) {
            Q_EMIT leftClicked();
        }
    });
}

void TrayIcon::install(const QIcon &icon)
{
    m_plain = icon;
    m_icon.setIcon(icon);
    m_icon.show();
}

void TrayIcon::remove()
{
    m_icon.hide();
}

bool TrayIcon::isReachable() const
{
    return QSystemTrayIcon::isSystemTrayAvailable() && m_icon.isVisible();
}

void TrayIcon::tell(const QString &title, const QString &text)
{
    m_icon.showMessage(title, text, m_plain);
}

void TrayIcon::setSignalling(bool on)
{
    if (m_signalling != on) {
        m_signalling = on;
        m_icon.setIcon(on ? withMark(m_plain) : m_plain);
    }
}

void TrayIcon::setTip(const QString &tip)
{
    constexpr qsizetype longestTip = 64;
    const QString shown = tip.left(longestTip);
    if (m_icon.toolTip() != shown) { // the desktop is told of each
        m_icon.setToolTip(shown);
    }
}

} // namespace mainwindow
