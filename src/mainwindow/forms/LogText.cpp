#include "mainwindow/forms/LogText.h"

#include "core/TextUtilities.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStringTokenizer>

using namespace Qt::StringLiterals;

namespace mainwindow {

namespace {

// A line may be a whole datagram of 65,507 bytes, which takes a text box too long to lay out.
constexpr qsizetype maxShownLine = 1000;

QString asShown(QStringView text)
{
    QString shown;
    for (QStringView line : text.tokenize(u'\n')) {
        line = line.endsWith(u'\r') ? line.chopped(1) : line;
        shown += core::shownText(line, maxShownLine) + u'\n';
    }
    shown.chop(1); // what follows the last line end is no line
    return shown;
}

} // namespace

void LogText::clear()
{
    m_text.resize(0); // not clear(), which would give its memory back: it is filled again soon
    m_shown = 0;
    m_restarted = true;
    m_changed();
}

void LogText::append(const QString &line)
{
    m_text += line;
    m_changed();
}

void LogText::keepLast(qsizetype characters)
{
    if (m_text.size() > characters) {
        m_text = m_text.sliced(m_text.indexOf(u'\n', m_text.size() - characters) + 1);
        m_shown = 0;
        m_restarted = true;
    }
}

void LogText::show(QPlainTextEdit &box)
{
    if (!box.isVisible() || (m_shown == m_text.size() && !m_restarted)) {
        return;
    }
    const QString added = asShown(QStringView(m_text).sliced(m_shown));
    if (m_restarted) {
        box.setPlainText(added);
    } else {
        QTextCursor end(box.document());
        end.movePosition(QTextCursor::End);
        end.insertText(added);
    }
    box.verticalScrollBar()->setValue(box.verticalScrollBar()->maximum());
    m_shown = m_text.size();
    m_restarted = false;
}

} // namespace mainwindow
