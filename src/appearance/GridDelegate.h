#pragma once

#include <QCache>
#include <QStyledItemDelegate>
#include <QTextLayout>

namespace appearance {

/// Draws the cells of every list, each as one line (see core::shownText); what is copied is the whole text.
/// Where the desk reads from right to left, each cell's text keeps the direction that its own first letter
/// gives it, so that the parts of numbers and times stay in their order.
class GridDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    static constexpr qsizetype keptLines = 1000; ///< more than the cells of a screen

    const QTextLayout &lineOf(const QStyleOptionViewItem &cell, int width) const;

    mutable QCache<QString, QTextLayout> m_lines{keptLines}; ///< by their text
};

} // namespace appearance
