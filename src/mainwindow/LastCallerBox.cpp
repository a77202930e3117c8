#include "mainwindow/LastCallerBox.h"

#include "appearance/Theme.h"

#include <QEvent>
#include <QScopedValueRollback>
#include <QSyntaxHighlighter>

namespace mainwindow {

namespace {

constexpr double numberScale = 1.6;
constexpr int padding = 8;

/// Makes the first line large and the second one quiet.
class CallerLines : public QSyntaxHighlighter
{
public:
    explicit CallerLines(const QPlainTextEdit &box) : QSyntaxHighlighter(box.document()), m_box(box) {}

protected:
    void highlightBlock(const QString &text) override
    {
        const appearance::CallColors colors = appearance::callColors(m_box.palette());
        QTextCharFormat format;
        const bool first = currentBlock().blockNumber() == 0;
        format.setForeground(first ? colors.lastCallerText : colors.lastCallerDetails);
        if (first) {
            format.setFontWeight(QFont::DemiBold);
            format.setFontPointSize(m_box.font().pointSizeF() * numberScale);
        }
        setFormat(0, int(text.size()), format);
    }

private:
    const QPlainTextEdit &m_box;
};

} // namespace

LastCallerBox::LastCallerBox(QWidget *parent) : QPlainTextEdit(parent)
{
    new CallerLines(*this);
    document()->setDocumentMargin(padding);
    setLineWrapMode(NoWrap);
    applyColors();
    fitHeight();
}

QSize LastCallerBox::sizeHint() const
{
    return {320, minimumSizeHint().height()};
}

QSize LastCallerBox::minimumSizeHint() const
{
    QFont large = font();
    large.setPointSizeF(font().pointSizeF() * numberScale);
    const int lines = QFontMetrics(large).lineSpacing() + fontMetrics().lineSpacing();
    return {200, lines + 2 * padding + 2 * frameWidth() + 2};
}

void LastCallerBox::changeEvent(QEvent *event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fitHeight();
    } else if (event->type() == QEvent::PaletteChange && !m_coloring) {
        applyColors();
    }
}

void LastCallerBox::fitHeight()
{
    setFixedHeight(minimumSizeHint().height());
}

void LastCallerBox::applyColors()
{
    const QScopedValueRollback coloring(m_coloring, true);
    const appearance::CallColors colors = appearance::callColors(palette());
    QPalette yellow = palette();
    yellow.setColor(QPalette::Base, colors.lastCallerBar);
    yellow.setColor(QPalette::Text, colors.lastCallerText);
    yellow.setColor(QPalette::PlaceholderText, colors.lastCallerDetails);
    setPalette(yellow);
}

} // namespace mainwindow
