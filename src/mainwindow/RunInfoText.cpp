#include "mainwindow/RunInfoText.h"

#include "core/TextUtilities.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStringTokenizer>

using namespace Qt::StringLiterals;

namespace mainwindow {

namespace {

// A line may be a whole datagram of 65,507 bytes, which no box lays out in time.
constexpr qsizetype maxShownLine = 1000;

QString asShown(QStringView text)
{
    QString shown;
    for (const QStringView line : text.tokenize(u"\r\n"_s, Qt::SkipEmptyParts)) {
        shown += core::shownText(line, maxShownLine) + u'\n';
    }
    return shown;
}

} // namespace

void RunInfoText::clear()
{
    m_text.clear();
    m_shown = 0;
    m_restarted = true;
}

void RunInfoText::append(const QString &line)
{
    m_text += line;
}

void RunInfoText::show(QPlainTextEdit &box)
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
