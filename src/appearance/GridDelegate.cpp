#include "appearance/GridDelegate.h"

#include "core/TextUtilities.h"

namespace appearance {

void GridDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const QString text = core::shownText(option->text);
    const bool mirrored = option->direction == Qt::RightToLeft && !text.isEmpty();
    option->text = mirrored ? core::isolated(text) : text;
}

} // namespace appearance
