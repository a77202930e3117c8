#include "appearance/MemoText.h"

#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace appearance {

namespace {

// Not toPlainText(), which turns no-break spaces into blanks. Enter with Shift makes another kind of line end
// in the box, which no other program knows.
QString typedText(const QPlainTextEdit &box)
{
    QString text = box.document()->toRawText();
    return text.replace(QChar::LineSeparator, QChar::ParagraphSeparator)
        .replace(QChar::ParagraphSeparator, u"\r\n"_s);
}

} // namespace

void MemoText::show(QPlainTextEdit &box, const QString &text)
{
    box.setPlainText(text);
    m_text = text;
    m_inBox = typedText(box);
}

QString MemoText::text(const QPlainTextEdit &box) const
{
    const QString typed = typedText(box);
    return typed == m_inBox ? m_text : typed;
}

} // namespace appearance
