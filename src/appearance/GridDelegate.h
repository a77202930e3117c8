#pragma once

#include <QStyledItemDelegate>

namespace appearance {

/// Draws the cells of every list, each as one line (see core::shownText); what is copied is the whole text.
/// Where the desk reads from right to left, each cell's text keeps the direction that its own first letter
/// gives it, so that the parts of numbers and times stay in their order.
class GridDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace appearance
