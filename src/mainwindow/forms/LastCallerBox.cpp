#include "mainwindow/forms/LastCallerBox.h"

#include "appearance/theme/Theme.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace mainwindow {

namespace {

constexpr double numberScale = 1.6;
constexpr int padding = 8;

QFont largeFont(const QPlainTextEdit &box)
{
    QFont large = box.font();
    large.setWeight(QFont::DemiBold);
    large.setPointSizeF(large.pointSizeF() * numberScale);
    return large;
}

// Makes the first line large and the second one quiet.
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
            format.setFontPointSize(largeFont(m_box).pointSizeF());
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
    document()->setDocumentMargin(0); // which a text from right to left that stands for none ignores
    setViewportMargins(padding, padding, padding, padding);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
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
    const int lines = QFontMetrics(largeFont(*this)).lineSpacing() + fontMetrics().lineSpacing();
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

void LastCallerBox::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createStandardContextMenu(event->pos());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->insertActions(menu->insertSeparator(menu->actions().value(0)), actions());
    const auto closed = [this] {
        m_menuOpen = false;
        Q_EMIT menuClosed();
    };
    connect(menu, &QMenu::aboutToHide, this, closed, Qt::QueuedConnection); // behind the work of its choice
    m_menuOpen = true;
    menu->popup(event->globalPos());
}

// A narrow window cuts long lines; then the tip shows them whole, never as markup.
bool LastCallerBox::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && isCut()) {
        const QString text = u"<div style='white-space:pre'>"_s + toPlainText().toHtmlEscaped() + u"</div>"_s;
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), text, this);
        return true;
    }
    return QPlainTextEdit::event(event);
}

// Lines that are too long are drawn from their beginning to where they are cut, and say so there. The text
// itself stays whole.
void LastCallerBox::paintEvent(QPaintEvent *event)
{
    if (!isCut() || textCursor().hasSelection()) {
        return QPlainTextEdit::paintEvent(event);
    }
    const appearance::CallColors colors = appearance::callColors(palette());
    QPainter painter(viewport());
    QTextOption option(Qt::AlignVCenter | Qt::AlignAbsolute |
                       (isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft));
    option.setWrapMode(QTextOption::NoWrap);
    for (QTextBlock line = document()->firstBlock(); line.isValid() && line.isVisible(); line = line.next()) {
        const bool first = line.blockNumber() == 0;
        QRectF space = blockBoundingGeometry(line).translated(contentOffset());
        space.setLeft(0);
        space.setWidth(viewport()->width());
        painter.setFont(first ? largeFont(*this) : font());
        painter.setPen(first ? colors.lastCallerText : colors.lastCallerDetails);
        option.setTextDirection(line.textDirection());
        const QString shown =
            painter.fontMetrics().elidedText(line.text(), Qt::ElideRight, viewport()->width());
        painter.drawText(space, shown, option);
    }
}

bool LastCallerBox::isCut() const
{
    const auto wide = [this](const QTextBlock &block) {
        const QTextLayout &lines = *block.layout();
        return lines.lineCount() > 0 && lines.lineAt(0).naturalTextWidth() > viewport()->width();
    };
    return wide(document()->firstBlock()) || wide(document()->lastBlock());
}

void LastCallerBox::fitHeight()
{
    setFixedHeight(minimumSizeHint().height());
}

// A second line that says nothing stays in the text but is not drawn, and the first line then stands in the
// middle.
void LastCallerBox::showCall(const QString &text, bool hasPrevious)
{
    setPlainText(text);
    const QTextBlock previous = document()->lastBlock();
    if (!hasPrevious && previous != document()->firstBlock()) {
        QTextBlock(previous).setVisible(false);
        document()->markContentsDirty(previous.position(), previous.length());
    }
    const int middle = hasPrevious ? 0 : fontMetrics().lineSpacing() / 2;
    setViewportMargins(padding, padding + middle, padding, std::max(padding - middle, 0));
}

void LastCallerBox::setSignalling(bool on)
{
    if (m_signalling != on) {
        m_signalling = on;
        applyColors();
    }
}

void LastCallerBox::applyColors()
{
    const QScopedValueRollback coloring(m_coloring, true);
    const appearance::CallColors colors = appearance::callColors(palette());
    QPalette yellow = palette();
    yellow.setColor(QPalette::Base, m_signalling ? colors.newCallBar : colors.lastCallerBar);
    yellow.setColor(QPalette::Text, colors.lastCallerText);
    yellow.setColor(QPalette::PlaceholderText, colors.lastCallerDetails);
    setPalette(yellow);
}

} // namespace mainwindow
