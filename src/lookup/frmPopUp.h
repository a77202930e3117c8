#pragma once

#include "appearance/FormSetup.h"
#include "core/Navigator.h"
#include "lookup/PopUpDecision.h"

#include <QWidget>

#include <memory>

namespace Ui {
class frmPopUp;
}

namespace lookup {

/// The small card that tells who is calling. It comes up without taking the keyboard from what the operator
/// types, and deletes itself when closed.
class frmPopUp : public QWidget
{
    Q_OBJECT

public:
    frmPopUp(core::Navigator &navigator, const appearance::FormServices &services);
    ~frmPopUp() override;

    /// Fills the card and shows it near the lower right of the screen that holds `mainWindow`; a card that
    /// stands is refilled where it is.
    void showCaller(const PopUpView &view, const QWidget &mainWindow);
    /// Greys the card and says when its call came: it is not the one that rings.
    void showAsEarlier();
    /// Where the caller is that customer, he has a new name.
    void followName(const QString &source, qint32 sn, const QString &name);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    /// Ground and text of the caller's lines, and what stands for the standing.
    struct CardColors
    {
        QColor ground;
        QColor text;
        QStringView icon;
        QColor iconColor;
        QPalette::ColorRole heading = QPalette::WindowText;
    };

    CardColors colorsOf(core::Standing standing) const;
    void alignTexts();
    void fill(const PopUpView &view);
    void color(const CardColors &colors);
    void place(const QWidget &mainWindow);
    void editCaller();

    core::Navigator &m_navigator;
    std::unique_ptr<Ui::frmPopUp> m_ui;
    appearance::FormSetup m_setup;
    PopUpView m_view;
    QPoint m_placed; ///< where we put the card
};

} // namespace lookup
