#include "appearance/GridDelegate.h"

namespace appearance {

namespace {

constexpr QChar firstStrongIsolate(0x2068);
constexpr QChar popDirectionalIsolate(0x2069);

} // namespace

void GridDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->direction == Qt::RightToLeft && !option->text.isEmpty()) {
        option->text = firstStrongIsolate + option->text + popDirectionalIsolate;
    }
}

} // namespace appearance
