#pragma once

#include "appearance/Form.h"
#include "core/Navigator.h"
#include "lookup/CardDecision.h"
#include "lookup/CardPlace.h"

#include <functional>
#include <memory>

namespace Ui {
class frmPopUp;
}

namespace lookup {

/// The card that tells who is calling: a band in the colours of his standing, and details below it. It comes
/// up without taking the keyboard from what the operator types, and deletes itself when closed.
class frmPopUp : public appearance::Form
{
    Q_OBJECT

public:
    frmPopUp(core::Navigator &navigator, const appearance::FormServices &services);
    ~frmPopUp() override;

    /// Fills the card and shows it where it is in nobody's way: beside the window that the operator works in,
    /// or in the corner of the screen that holds `mainWindow`. It gives way to a window that he turns to
    /// later; one that he has moved stays there.
    void showCaller(const CardView &view, const QWidget &mainWindow);
    /// Greys the card and says when its call came: it is not the one that rings.
    void showAsEarlier();
    /// How long ago the call came.
    void showAge(const QString &text);
    /// What is known of his call notes.
    void showNotes(const QString &text);
    /// If the card is this caller's, it shows his new name.
    void followName(core::RowKey caller, const QString &name);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// Ground and text of the caller's lines, and what stands for the standing.
    struct CardColors
    {
        QColor ground;
        QColor text;
        QStringView icon;
    };

    CardColors colorsOf(core::Standing standing) const;
    void fill(const CardView &view);
    void showAbout(const QString &line);
    void color(const CardColors &colors);
    QPoint raisedOntoScreen() const;
    CardRoom room(const QWidget &mainWindow) const;
    void giveWay();
    void openAndClose(const std::function<bool()> &open);

    core::Navigator &m_navigator;
    std::unique_ptr<Ui::frmPopUp> m_ui;
    CardView m_view;
    int m_shown = 0; ///< callers so far
    QPoint m_placed; ///< where we put the card
};

} // namespace lookup
