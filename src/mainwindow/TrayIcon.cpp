#include "mainwindow/TrayIcon.h"

using namespace Qt::StringLiterals;

namespace mainwindow {

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

void TrayIcon::setTip(const QString &tip)
{
    constexpr qsizetype longestTip = 64;
    m_icon.setToolTip(tip.left(longestTip));
}

} // namespace mainwindow
