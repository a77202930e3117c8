#pragma once

#include <QAction>
#include <QList>
#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

namespace mainwindow {

/// The icon beside the clock with its menu `mnuTray`: a left click restores the window, a right click opens
/// the menu.
class TrayIcon : public QObject
{
    Q_OBJECT

public:
    /// A null action stands for a separator; the actions stay their owner's.
    explicit TrayIcon(const QList<QAction *> &menu);

    /// Puts the icon into the tray, also of a tray that starts later.
    void install(const QIcon &icon);
    /// Takes it out for good.
    void remove();
    /// True while the icon stands where the operator can reach it.
    bool isReachable() const;
    /// At most 64 characters are kept.
    void setTip(const QString &tip);
    /// A balloon beside the icon.
    void tell(const QString &title, const QString &text);
    /// A mark on the icon, for as long as a call is new.
    void setSignalling(bool on);

Q_SIGNALS:
    void leftClicked();

private:
    QMenu mnuTray;
    QSystemTrayIcon m_icon;
    QIcon m_plain;
    bool m_signalling = false;
};

} // namespace mainwindow
