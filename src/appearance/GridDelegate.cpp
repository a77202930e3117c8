#include "appearance/GridDelegate.h"

#include "core/TextUtilities.h"

#include <QPainter>
#include <QStyle>

namespace appearance {

namespace {

bool isTextAlone(const QStyleOptionViewItem &cell)
{
    using Option = QStyleOptionViewItem;
    return !cell.features.testAnyFlags(Option::HasDecoration | Option::HasCheckIndicator) &&
           !cell.state.testAnyFlags(QStyle::State_HasFocus | QStyle::State_Editing);
}

bool fits(const QTextLayout &line, const QRect &space)
{
    return line.lineAt(0).naturalTextWidth() <= space.width() &&
           line.boundingRect().height() <= space.height();
}

QColor textColor(const QStyleOptionViewItem &cell)
{
    const bool enabled = cell.state.testFlag(QStyle::State_Enabled);
    const bool active = cell.state.testFlag(QStyle::State_Active);
    const auto group = !enabled ? QPalette::Disabled : active ? QPalette::Normal : QPalette::Inactive;
    const bool selected = cell.state.testFlag(QStyle::State_Selected);
    return cell.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
}

} // namespace

// The style shapes a text four times each time that it draws it, which is most of what a list costs. A text
// that fits into its cell is drawn as the style would draw it, but shaped once.
void GridDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QStyle &style = *cell.widget->style();
    const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, cell.widget) + 1;
    const QRect space = cell.rect.adjusted(margin, 0, -margin, 0);
    const QTextLayout *line = isTextAlone(cell) ? &lineOf(cell, space.width()) : nullptr;
    if (line == nullptr || !fits(*line, space)) {
        return style.drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    }
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);
    const QRect drawn = QStyle::alignedRect(Qt::LayoutDirectionAuto, cell.displayAlignment,
                                            line->boundingRect().size().toSize(), space);
    const QPen pen = painter->pen();
    painter->setPen(textColor(cell));
    line->draw(painter, QPointF(space.x(), drawn.top()));
    painter->setPen(pen);
}

// In one line, however wide that is.
const QTextLayout &GridDelegate::lineOf(const QStyleOptionViewItem &cell, int width) const
{
    const Qt::Alignment alignment = QStyle::visualAlignment(cell.direction, cell.displayAlignment);
    const QTextLayout *kept = m_lines.object(cell.text);
    if (kept != nullptr && kept->font() == cell.font && kept->textOption().alignment() == alignment &&
        kept->textOption().textDirection() == cell.direction && kept->lineAt(0).width() == width) {
        return *kept;
    }
    QTextOption option(alignment);
    option.setTextDirection(cell.direction);
    option.setWrapMode(QTextOption::ManualWrap);
    auto *made = new QTextLayout(cell.text, cell.font);
    made->setCacheEnabled(true);
    made->setTextOption(option);
    made->beginLayout();
    made->createLine().setLineWidth(width);
    made->endLayout();
    m_lines.insert(cell.text, made);
    return *made;
}

void GridDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const QString text = core::shownText(option->text);
    const bool mirrored = option->direction == Qt::RightToLeft && !text.isEmpty();
    option->text = mirrored ? core::isolated(text) : text;
}

} // namespace appearance
