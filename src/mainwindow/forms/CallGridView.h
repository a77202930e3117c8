#pragma once

#include "appearance/RecordGrid.h"

namespace mainwindow {

class CallGridModel;

/// The table that shows the calls, with marks for VIPs and black-listed callers and widths that are saved as
/// the operator draws them.
class CallGridView : public appearance::RecordGrid
{
    Q_OBJECT

public:
    explicit CallGridView(QWidget *parent = nullptr);

    /// The model must outlive the view.
    void setCalls(CallGridModel *calls);
    /// Takes order, widths and visibility over from the model's columns.
    void applyColumns();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void noteResized(int column);
    int lastVisibleColumn() const;
    int columnTwips(int column) const;
    int markRoom(int column) const;
    double pixelsPerTwip() const;

    CallGridModel *m_calls = nullptr;
    bool m_mouseDown = false;
    int m_dragged = -1; ///< the column whose edge the operator drags
};

} // namespace mainwindow
