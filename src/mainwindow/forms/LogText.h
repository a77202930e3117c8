#pragma once

#include "core/RunLog.h"

#include <QString>

#include <functional>

class QPlainTextEdit;

namespace mainwindow {

/// The text of a log's box: keeps it at once, and shows it when asked, since lines may come by the thousand.
class LogText : public core::RunInfoBox
{
public:
    /// `changed` is called with every change; it asks for show() before long.
    explicit LogText(std::function<void()> changed) : m_changed(std::move(changed)) {}

    void clear() override;
    qsizetype length() const override { return m_text.size(); }
    void append(const QString &line) override;

    /// Drops the oldest lines of a text that is longer than this many characters.
    void keepLast(qsizetype characters);
    /// Brings the box up to date; a box that nobody sees is left alone.
    void show(QPlainTextEdit &box);

private:
    std::function<void()> m_changed;
    QString m_text;
    qsizetype m_shown = 0;    ///< characters of the text that the box holds
    bool m_restarted = false; ///< the box holds text that is gone
};

} // namespace mainwindow
