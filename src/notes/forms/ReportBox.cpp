#include "notes/forms/ReportBox.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace notes {

namespace {

constexpr qsizetype pieceSize = 100'000; // characters, laid out and drawn within some 15 milliseconds
constexpr int longestLine = 500;         // a line is drawn to its end, in view or not

// The desktop's own fixed-width family, or a usual one where the desktop names only an alias.
QString fixedFamily()
{
    const QStringList families{QFontDatabase::systemFont(QFontDatabase::FixedFont).family(), u"Consolas"_s,
                               u"Liberation Mono"_s, u"DejaVu Sans Mono"_s, u"Courier New"_s};
    const auto found = std::ranges::find_if(families, [](const QString &each) {
        return QFontDatabase::hasFamily(each) && QFontDatabase::isFixedPitch(each);
    });
    return found != families.end() ? *found : QString();
}

// The end of the piece that begins at a position: the end of a line, unless the line is longer than the
// piece.
qsizetype pieceEnd(const QString &text, qsizetype from)
{
    const qsizetype end = std::min(from + pieceSize, text.size());
    const qsizetype lineEnd = end < text.size() ? text.lastIndexOf(u'\n', end - 1) : -1;
    return lineEnd >= from ? lineEnd + 1 : end;
}

// The text with most of its line ends as line separators, because Qt takes several times as long for a
// paragraph as for a line. A single "\r" would count as a line end of its own.
QString inParagraphs(QStringView text)
{
    constexpr int linesOfParagraph = 12;
    QString joined;
    joined.reserve(text.size());
    qsizetype paragraph = 0;
    int lines = 0;
    for (const QStringView line : text.tokenize(u'\n')) {
        const bool isLast = line.end() == text.end();
        const bool isFull =
            lines == linesOfParagraph || joined.size() + line.size() - paragraph > longestLine;
        if (line.begin() != text.begin()) {
            joined += isFull || isLast ? QChar(u'\n') : QChar(QChar::LineSeparator);
        }
        if (isFull) {
            paragraph = joined.size();
            lines = 0;
        }
        joined += line;
        ++lines;
    }
    return joined.remove(u'\r');
}

} // namespace

ReportBox::ReportBox(QWidget *parent) : MemoBox(parent, longestLine)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setLineWrapMode(NoWrap);
    setLayoutDirection(Qt::LeftToRight); // the columns are filled up with blanks on their right
    connect(this, &ReportBox::textChanged, this, [this] { moveCursor(QTextCursor::End); });
    connect(&m_timer, &QTimer::timeout, this, &ReportBox::fillOn);
    evenColumns();
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
    insert(cursor, piece);
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

// Keys that would type are swallowed. Those that move, select and copy still work, and so do the form's own.
void ReportBox::keyPressEvent(QKeyEvent *event)
{
    const bool types = !event->text().isEmpty() && event->text().at(0).isPrint() &&
                       !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    const bool removes = event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete;
    if (types || removes) {
        event->accept();
    } else {
        MemoBox::keyPressEvent(event);
    }
}

void ReportBox::paintEvent(QPaintEvent *event)
{
    MemoBox::paintEvent(event);
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
    MemoBox::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        evenColumns();
    }
}

// A fixed-width font first, and the language's own for the characters that it lacks.
void ReportBox::evenColumns()
{
    const QString fixed = fixedFamily();
    QFont even = font();
    if (!fixed.isEmpty() && even.families().value(0) != fixed) {
        even.setFamilies(QStringList{fixed} + even.families());
        setFont(even);
    }
}

} // namespace notes
