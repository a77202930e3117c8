#pragma once

#include "appearance/GridDelegate.h"

#include <functional>

namespace options {

/// Edits a cell of the language file, whose fields take 255 characters, and tells of a change that could not
/// be written.
class CellDelegate : public appearance::GridDelegate
{
public:
    CellDelegate(std::function<void()> refused, QObject *parent)
        : GridDelegate(parent), m_refused(std::move(refused))
    {}

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

private:
    std::function<void()> m_refused;
};

} // namespace options
