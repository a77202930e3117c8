#pragma once

#include <QPlainTextEdit>

namespace mainwindow {

/// The yellow bar: the last caller large in its first line, the previous call in its second. Read-only; its
/// text can be selected and copied. Its actions stand on top of its menu.
class LastCallerBox : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit LastCallerBox(QWidget *parent = nullptr);

    /// Shows the two lines of a call; the second one only where it tells of a previous call.
    void showCall(const QString &text, bool hasPrevious);
    bool hasOpenMenu() const { return m_menuOpen; }
    /// A stronger colour, for as long as a call is new.
    void setSignalling(bool on);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Comes once the work of what was chosen from it is done.
    void menuClosed();

protected:
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void applyColors();
    void fitHeight();
    bool isCut() const;

    bool m_menuOpen = false;
    bool m_coloring = false;
    bool m_signalling = false;
};

} // namespace mainwindow
