#include "lookup/forms/CallerText.h"

#include "appearance/theme/Theme.h"

#include <QPainter>
#include <QTextBlock>

#include <algorithm>

namespace lookup {

namespace {

constexpr int padding = 8;
constexpr int around = 4; // of the padding, what a plate is larger than its letters

bool isReadable(const QPalette &colors)
{
    return appearance::contrast(colors.color(QPalette::Base), colors.color(QPalette::Text)) >=
           appearance::readableContrast;
}

} // namespace

CallerText::CallerText(QWidget *parent) : QPlainTextEdit(parent)
{
    document()->setDocumentMargin(around);
    setViewportMargins(padding - around, 0, padding - around, 0);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setFrameShape(NoFrame);
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void CallerText::setColors(const QColor &ground, const QColor &text)
{
    QPalette colors = palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        colors.setColor(group, QPalette::Base, ground);
        colors.setColor(group, QPalette::Text, text);
    }
    setPalette(colors);
}

QColor CallerText::behindLetters() const
{
    return isReadable(palette()) ? palette().color(QPalette::Base) : QColor(Qt::white);
}

void CallerText::fitHeight(int width, int mostLines)
{
    const QFontMetrics metrics(font());
    const int inner = width - 2 * padding;
    const int wrapped = metrics.boundingRect(0, 0, inner, 0, Qt::TextWordWrap, toPlainText()).height();
    const int lines = std::clamp(wrapped / metrics.lineSpacing(), 1, mostLines);
    setFixedHeight(lines * metrics.lineSpacing() + padding + 2);
    setVerticalScrollBarPolicy(wrapped / metrics.lineSpacing() > mostLines ? Qt::ScrollBarAsNeeded
                                                                           : Qt::ScrollBarAlwaysOff);
}

void CallerText::paintEvent(QPaintEvent *event)
{
    if (!isReadable(palette())) {
        QPainter painter(viewport());
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(behindLetters());
        for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
            const QPointF corner = blockBoundingGeometry(block).translated(contentOffset()).topLeft();
            for (int line = 0; line < block.layout()->lineCount(); ++line) {
                const QRectF letters = block.layout()->lineAt(line).naturalTextRect();
                painter.drawRoundedRect(letters.translated(corner).adjusted(-around, 0, around, 0), around,
                                        around);
            }
        }
    }
    QPlainTextEdit::paintEvent(event);
}

} // namespace lookup
