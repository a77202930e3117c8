#pragma once

#include "appearance/MemoBox.h"

#include <QTimer>

namespace notes {

/// The box of a report: lines in even columns, the newest in view, to be selected and copied but not typed
/// into. A long report is filled in over several turns of the event loop.
class ReportBox : public appearance::MemoBox
{
    Q_OBJECT

public:
    explicit ReportBox(QWidget *parent = nullptr);

    void setReport(const QString &report);
    /// The report as it was given, with its own line ends, also while it is being filled in.
    const QString &report() const { return m_report; }
    /// What stands in the middle while there is no report.
    void setHint(const QString &text);

Q_SIGNALS:
    /// The whole report stands in the box.
    void filled();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void fillOn();
    void evenColumns();

    QString m_report;
    QString m_hint;
    qsizetype m_filled = 0;
    QTimer m_timer;
};

} // namespace notes
