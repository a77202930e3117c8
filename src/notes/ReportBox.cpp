#include "notes/ReportBox.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace notes {

namespace {

constexpr qsizetype pieceSize = 200'000; // characters, laid out and drawn within some 15 milliseconds

/// Where the piece from a position on ends: behind a line, if the line is not longer than the piece.
qsizetype pieceEnd(const QString &text, qsizetype from)
{
    const qsizetype end = std::min(from + pieceSize, text.size());
    const qsizetype lineEnd = end < text.size() ? text.lastIndexOf(u'\n', end - 1) : -1;
    return lineEnd >= from ? lineEnd + 1 : end;
}

/// The text with most of its line ends as line separators: the document takes several times as long for a
/// paragraph as for a line. A single "\r" would be a line end of its own.
QString inParagraphs(QStringView text)
{
    constexpr int linesOfParagraph = 12;
    QString joined;
    joined.reserve(text.size());
    int lines = 0;
    for (const QChar character : text) {
        if (character == u'\n') {
            ++lines;
            joined += lines % linesOfParagraph == 0 ? character : QChar(QChar::LineSeparator);
        } else if (character != u'\r') {
            joined += character;
        }
    }
    return joined;
}

} // namespace

ReportBox::ReportBox(QWidget *parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setLineWrapMode(NoWrap);
    setLayoutDirection(Qt::LeftToRight); // the columns are filled up with blanks on their right
    connect(this, &QPlainTextEdit::textChanged, this, [this] { moveCursor(QTextCursor::End); });
    connect(&m_timer, &QTimer::timeout, this, &ReportBox::fillOn);
}

void ReportBox::setReport(const QString &report)
{
    m_report = report;
    m_filled = 0;
    clear();
    m_timer.start(0);
    fillOn();
}

void ReportBox::fillOn()
{
    const qsizetype end = pieceEnd(m_report, m_filled);
    const QString piece = inParagraphs(QStringView(m_report).sliced(m_filled, end - m_filled));
    m_filled = end;
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(piece);
    if (m_filled == m_report.size()) {
        m_timer.stop();
        Q_EMIT filled();
    }
}

void ReportBox::setHint(const QString &text)
{
    m_hint = text;
    viewport()->update();
}

/// What would type is swallowed; moving, selecting and copying go on, and so do the form's own keys.
void ReportBox::keyPressEvent(QKeyEvent *event)
{
    const bool types = !event->text().isEmpty() && event->text().at(0).isPrint() &&
                       !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    const bool removes = event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete;
    if (types || removes) {
        event->accept();
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void ReportBox::paintEvent(QPaintEvent *event)
{
    QPlainTextEdit::paintEvent(event);
    if (m_report.isEmpty() && !m_hint.isEmpty()) {
        constexpr int margin = 32;
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                         Qt::AlignCenter | Qt::TextWordWrap, m_hint);
    }
}

void ReportBox::changeEvent(QEvent *event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        evenColumns();
    }
}

/// The language's font, behind one whose characters are all of one width.
void ReportBox::evenColumns()
{
    const QString fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    QFont even = font();
    if (even.families().value(0) != fixed) {
        even.setFamilies(QStringList{fixed} + even.families());
        setFont(even);
    }
}

} // namespace notes
