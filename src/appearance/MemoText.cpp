#include "appearance/MemoText.h"

#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace appearance {

namespace {

// Not toPlainText(), which turns no-break spaces into blanks.
QString typedText(const QPlainTextEdit &box)
{
    return box.document()->toRawText().replace(QChar::ParagraphSeparator, u"\r\n"_s);
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
