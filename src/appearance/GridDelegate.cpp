#include "appearance/GridDelegate.h"

#include "core/TextUtilities.h"

namespace appearance {

void GridDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->direction == Qt::RightToLeft && !option->text.isEmpty()) {
        option->text = core::isolated(option->text);
    }
}

} // namespace appearance
