#pragma once

#include "appearance/FormSetup.h"
#include "core/Navigator.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QWidget>

#include <functional>

namespace appearance {

/// The frame of every window but the main one and that of the start. It has the program's icon, closes at
/// Esc, deletes itself when closed and remembers its place. Enter presses the button that has the keyboard,
/// or else the one in sight that is designed as the default; a check box is only turned by the space bar.
class Form : public QWidget
{
    Q_OBJECT

public:
    ~Form() override;
    /// Shows it in front of all others and gives it the keyboard, also where it stands minimized.
    void bringToFront();
    /// Shows it behind the editor, which keeps the keyboard; without one, like bringToFront().
    void showBehind(QWidget *editor);
    /// It is about to be deleted.
    bool isClosed() const { return m_closed; }

protected:
    using Place = FormSetup::Place;

    explicit Form(const FormServices &services, Qt::WindowFlags flags = Qt::Window);

    /// Call once the form's controls exist.
    void load(Place place = Place::Remembered);
    /// Opens a page of help at F1 and by the buttons. The navigator must outlive the form.
    void offerHelp(core::Navigator &navigator, const std::function<QString()> &pageId,
                   const QList<QAbstractButton *> &buttons = {});
    void offerHelp(core::Navigator &navigator, const QString &pageId,
                   const QList<QAbstractButton *> &buttons = {});
    /// From now on the title begins with the name that stands in the box. Call once it is translated.
    void nameInTitle(const QLineEdit &name);

    /// Asks what there is to ask before the form closes; false: it stays.
    virtual bool mayClose() { return true; }
    /// It is being closed.
    virtual void closing() {}

    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QAbstractButton *buttonOfEnter() const;

    FormSetup m_setup;
    bool m_closed = false;
};

} // namespace appearance
