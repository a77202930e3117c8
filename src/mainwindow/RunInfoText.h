#pragma once

#include "core/RunLog.h"

#include <QString>

class QPlainTextEdit;

namespace mainwindow {

/// The run information box: keeps its text at once, and shows it when asked, since lines may come by the thousand.
class RunInfoText : public core::RunInfoBox
{
public:
    void clear() override;
    qsizetype length() const override { return m_text.size(); }
    void append(const QString &line) override;

    const QString &text() const { return m_text; }
    /// Brings the box up to date; a box that nobody sees is left alone.
    void show(QPlainTextEdit &box);

private:
    QString m_text;
    qsizetype m_shown = 0;    ///< characters of the text that the box holds
    bool m_restarted = false; ///< the box holds text that is gone
};

} // namespace mainwindow
