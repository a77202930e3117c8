#pragma once

#include <QTableView>

#include <functional>

namespace mainwindow {

class CallGridModel;

/// The table that shows the calls: a hint where there are none, marks for VIPs and black-listed callers,
/// copying of rows, a double-click (or Enter) that opens the caller, and widths that are saved as the
/// operator draws them.
class CallGridView : public QTableView
{
    Q_OBJECT

public:
    explicit CallGridView(QWidget *parent = nullptr);

    /// The model must outlive the view.
    void setCalls(CallGridModel *calls);
    void setHint(const QString &text);
    /// Takes order, widths and visibility over from the model's columns.
    void applyColumns();

Q_SIGNALS:
    void callActivated(int row);

public Q_SLOTS:
    /// The selected calls as tab-separated text, one line each, visible columns only.
    void copySelection();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void noteResized(int column);
    int lastVisibleColumn() const;
    int columnTwips(int column) const;
    double pixelsPerTwip() const;

    CallGridModel *m_calls = nullptr;
    QString m_hint;
    bool m_mouseDown = false;
    int m_dragged = -1; ///< the column whose edge the operator drags
};

} // namespace mainwindow
