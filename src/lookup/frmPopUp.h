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
    /// Where the caller is that customer, he has a new name.
    void followName(qint32 sn, const QString &name);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void alignTexts();
    void fill(const PopUpView &view);
    void color(core::Standing standing);
    void place(const QWidget &mainWindow);
    void editCaller();

    core::Navigator &m_navigator;
    std::unique_ptr<Ui::frmPopUp> m_ui;
    appearance::FormSetup m_setup;
    QPoint m_placed; ///< where we put the card
};

} // namespace lookup
