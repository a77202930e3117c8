#include "mainwindow/forms/CallGridView.h"

#include "appearance/GridDelegate.h"
#include "appearance/theme/ThemedIcons.h"
#include "mainwindow/CallGridModel.h"

#include <QEvent>
#include <QHeaderView>

using namespace Qt::StringLiterals;

namespace mainwindow {

namespace {

// Draws a star or a barred circle behind the number of a marked caller; the numbers stand in one column.
class CallDelegate : public appearance::GridDelegate
{
public:
    using GridDelegate::GridDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        GridDelegate::initStyleOption(option, index);
        const auto *calls = static_cast<const CallGridModel *>(index.model());
        const auto standing = index.data(CallGridModel::StandingRole).value<core::Standing>();
        if (standing == core::Standing::Ordinary || index.column() != calls->GetGridColumn(u"CallerID"_s)) {
            return;
        }
        const bool selected = option->state.testFlag(QStyle::State_Selected);
        const QColor color = option->palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->decorationPosition = QStyleOptionViewItem::Right;
        const int size = option->fontMetrics.height();
        option->icon = QIcon(appearance::themedPixmap(standing == core::Standing::Vip ? u"star" : u"ban",
                                                      color, size, option->widget->devicePixelRatioF()));
        option->decorationSize = {size, size};
    }
};

} // namespace

CallGridView::CallGridView(QWidget *parent) : RecordGrid(parent)
{
    setItemDelegate(new CallDelegate(this));
    horizontalHeader()->viewport()->installEventFilter(this);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, &CallGridView::noteResized);
}

void CallGridView::setCalls(CallGridModel *calls)
{
    m_calls = calls;
    setModel(calls);
    connect(calls, &QAbstractItemModel::modelReset, this, &CallGridView::applyColumns);
    applyColumns();
}

void CallGridView::applyColumns()
{
    for (int column = 0; column < m_calls->columns().size(); ++column) {
        const GridColumn &shape = m_calls->columns().at(column);
        const int width = qRound(shape.width * pixelsPerTwip()) + markRoom(column);
        setColumnWidth(column, std::max(width, horizontalHeader()->sectionSizeHint(column)));
        setColumnHidden(column, !shape.visible);
    }
}

int CallGridView::columnTwips(int column) const
{
    return qRound((columnWidth(column) - markRoom(column)) / pixelsPerTwip());
}

// The stored width is that of the number; the mark of its caller stands behind it.
int CallGridView::markRoom(int column) const
{
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
    return column == m_calls->GetGridColumn(u"CallerID"_s) ? fontMetrics().height() + 2 * margin : 0;
}

// The stored widths suit the small type of a screen with 96 dots an inch; with larger type the columns grow.
double CallGridView::pixelsPerTwip() const
{
    constexpr double designHeight = 14;
    const double typeScale = std::max(fontMetrics().height() * 96 / (designHeight * logicalDpiY()), 1.0);
    return typeScale * logicalDpiX() / twipsPerInch;
}

// The header reports every change of a width, our own included. It is the operator's if a mouse button is
// down. The last column only fills the rest.
void CallGridView::noteResized(int column)
{
    if (m_mouseDown && m_dragged < 0 && column != lastVisibleColumn()) {
        m_dragged = column;
    }
}

int CallGridView::lastVisibleColumn() const
{
    int column = horizontalHeader()->count() - 1;
    while (column > 0 && isColumnHidden(column)) {
        --column;
    }
    return column;
}

bool CallGridView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) {
        m_mouseDown = true;
    } else if (event->type() == QEvent::MouseButtonRelease) {
        m_mouseDown = false;
        if (const int column = std::exchange(m_dragged, -1); column >= 0) {
            m_calls->setColumnWidth(column, columnTwips(column));
        }
    }
    return QTableView::eventFilter(watched, event);
}

} // namespace mainwindow
