#include "appearance/MemoBox.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextBoundaryFinder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace appearance {

namespace {

constexpr int softBreak = QTextFormat::UserProperty;

// Whether the separator before a block is none of the text.
bool goesOn(const QTextBlock &block)
{
    return block.isValid() && block.charFormat().boolProperty(softBreak);
}

// How much of a line stands in its first block: up to where a word may be wrapped, else all of a character
// with its marks, else at least no half of a pair. A line a little too long is halved, which leaves room for
// typing on.
qsizetype firstPiece(QStringView line, int longest)
{
    constexpr qsizetype wordSize = 200;
    constexpr qsizetype context = 64; // what stands behind a place decides on it, too
    if (line.size() <= longest) {
        return line.size();
    }
    const qsizetype aim = std::min<qsizetype>(longest, line.size() / 2);
    const QStringView seen = line.first(std::min(line.size(), aim + context));
    for (const auto &[kind, least] :
         {std::pair(QTextBoundaryFinder::Line, aim - wordSize), {QTextBoundaryFinder::Grapheme, 1}}) {
        QTextBoundaryFinder finder(kind, seen);
        finder.setPosition(aim);
        if (finder.isAtBoundary() || finder.toPreviousBoundary() >= least) {
            return finder.position();
        }
    }
    return line.at(aim).isLowSurrogate() && line.at(aim - 1).isHighSurrogate() ? aim - 1 : aim;
}

// A line separator would keep two lines in one block.
QString inBlocks(QString text)
{
    return text.replace(QChar(QChar::LineSeparator), u'\n');
}

void breakLine(const QTextBlock &block, int longest)
{
    QTextCharFormat soft;
    soft.setProperty(softBreak, true);
    const QString line = block.text();
    QTextCursor cursor(block);
    const int start = block.position();
    qsizetype taken = firstPiece(line, longest);
    for (int breaks = 0; taken < line.size(); ++breaks) {
        cursor.setPosition(start + breaks + int(taken));
        cursor.insertBlock({}, soft);
        taken += firstPiece(QStringView(line).sliced(taken), longest);
    }
}

} // namespace

MemoBox::MemoBox(QWidget *parent, int longest) : QPlainTextEdit(parent), m_longest(longest)
{
    connect(document(), &QTextDocument::contentsChange, this, [this](int from, int /*removed*/, int added) {
        m_changedFrom = from;
        m_changedTo = from + added;
    });
    connect(document(), &QTextDocument::contentsChanged, this, &MemoBox::breakChangedLines);
}

void MemoBox::setText(const QString &text)
{
    setUndoRedoEnabled(false);
    QTextCursor all(document());
    all.select(QTextCursor::Document);
    insert(all, inBlocks(text));
    setUndoRedoEnabled(true);
    setTextCursor(QTextCursor(document()));
    document()->setModified(false);
    m_text = text;
    m_shown = typedText();
}

QString MemoBox::text() const
{
    const QString typed = typedText();
    return typed == m_shown ? m_text : typed;
}

QString MemoBox::typedText() const
{
    return lines(0, document()->characterCount() - 1).replace("\n"_L1, "\r\n"_L1);
}

// What stands between two places, without soft breaks. Not toPlainText(), which turns no-break spaces into
// blanks. An input method may bring in another kind of line end, which no other program knows.
QString MemoBox::lines(int from, int to) const
{
    QString lines;
    for (QTextBlock block = document()->findBlock(from); block.isValid() && block.position() <= to;
         block = block.next()) {
        if (block.position() > from && !goesOn(block)) {
            lines += u'\n';
        }
        const int start = std::max(0, from - block.position());
        const int end = std::min(block.length() - 1, to - block.position());
        lines += QStringView(block.text()).sliced(start, end - start);
    }
    return inBlocks(lines);
}

// In one step, so that the toolkit sees no long line. Without the format of what stands around, or a line
// end might become a soft break.
void MemoBox::insert(QTextCursor cursor, const QString &text)
{
    const QScopedValueRollback breaking(m_isBreaking, true);
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    const int from = cursor.position();
    cursor.insertText(text, QTextCharFormat());
    breakLines(from, cursor.position());
    cursor.endEditBlock();
}

// Whatever way a change has come. Undoing brings back what was in order, and can be redone only if nothing
// else is changed.
void MemoBox::breakChangedLines()
{
    if (m_isBreaking || document()->isRedoAvailable()) {
        return;
    }
    const QScopedValueRollback breaking(m_isBreaking, true);
    QTextCursor cursor(document());
    cursor.joinPreviousEditBlock();
    breakLines(m_changedFrom, std::min(m_changedTo, document()->characterCount() - 1));
    cursor.endEditBlock();
}

// A soft break right beside a change goes, for it may now part a word or a character, and so does one
// between two short blocks, which would look like lines; then what is too long is broken anew.
void MemoBox::breakLines(int from, int to)
{
    const auto isShort = [this](const QTextBlock &block) {
        return block.length() + block.previous().length() < m_longest / 2;
    };
    const QTextBlock last = document()->findBlock(to);
    if (goesOn(last.next()) && (to == last.next().position() - 1 || isShort(last.next()))) {
        QTextCursor(last.next()).deletePreviousChar();
    }
    const QTextBlock first = document()->findBlock(from);
    if (goesOn(first) && (from == first.position() || isShort(first))) {
        QTextCursor(first).deletePreviousChar();
        --from;
        --to;
    }
    QTextBlock block = document()->findBlock(to);
    while (block.isValid() && block.position() + block.length() > from) {
        const QTextBlock previous = block.previous();
        if (block.length() - 1 > m_longest) {
            breakLine(block, m_longest);
        }
        block = previous;
    }
}

// A soft break is no character: what deletes one deletes the character beyond, and a selection of nothing
// else is none.
void MemoBox::stepOverBreak(bool back)
{
    QTextCursor cursor = textCursor();
    if (cursor.hasSelection() && !lines(cursor.selectionStart(), cursor.selectionEnd()).isEmpty()) {
        return;
    }
    cursor.clearSelection();
    if (back && cursor.atBlockStart() && goesOn(cursor.block())) {
        cursor.movePosition(QTextCursor::PreviousCharacter);
    } else if (!back && cursor.atBlockEnd() && goesOn(cursor.block().next())) {
        cursor.movePosition(QTextCursor::NextCharacter);
    }
    setTextCursor(cursor);
}

bool MemoBox::hasOnlyCrossedBreak(int from) const
{
    const int to = textCursor().position();
    const QTextBlock block = document()->findBlock(std::max(from, to));
    return std::abs(from - to) == 1 && block.position() == std::max(from, to) && goesOn(block);
}

// The toolkit takes the breaking of a line that has become too long by a key for a step of its own.
void MemoBox::undoOrRedo(bool back)
{
    const QString before = typedText();
    do {
        back ? undo() : redo();
    } while ((back ? document()->isUndoAvailable() : document()->isRedoAvailable()) &&
             (typedText() == before || textCursor().block().length() - 1 > m_longest));
}

void MemoBox::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Undo) || event->matches(QKeySequence::Redo)) {
        undoOrRedo(event->matches(QKeySequence::Undo));
        return;
    }
    const bool isLineEnd = event->matches(QKeySequence::InsertParagraphSeparator) ||
                           event->matches(QKeySequence::InsertLineSeparator);
    if (isLineEnd && !isReadOnly()) {
        insert(textCursor(), u"\n"_s);
        ensureCursorVisible();
        return;
    }
    if (event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete) {
        stepOverBreak(event->key() == Qt::Key_Backspace);
    }
    const int from = textCursor().position();
    const int revision = document()->revision();
    QPlainTextEdit::keyPressEvent(event);
    if (document()->revision() == revision && hasOnlyCrossedBreak(from)) {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void MemoBox::insertFromMimeData(const QMimeData *source)
{
    if (!isReadOnly() && !source->text().isEmpty()) {
        insert(textCursor(), inBlocks(source->text()));
        ensureCursorVisible();
    }
}

QMimeData *MemoBox::createMimeDataFromSelection() const
{
    const QTextCursor cursor = textCursor();
    auto *copied = new QMimeData;
    copied->setText(lines(cursor.selectionStart(), cursor.selectionEnd()));
    return copied;
}

} // namespace appearance
