#pragma once

#include "appearance/GridDelegate.h"

#include <QPersistentModelIndex>

#include <functional>

namespace options {

/// Edits a cell of the language file, whose fields take 255 characters, and tells of a change that could not
/// be written: the cell shows what was typed when it is next opened.
class CellDelegate : public appearance::GridDelegate
{
public:
    struct Context
    {
        std::function<bool(int column)> mayEdit;
        std::function<void(const QModelIndex &cell)> refused;
    };
    CellDelegate(Context context, QObject *parent) : GridDelegate(parent), m_context(std::move(context)) {}

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

private:
    Context m_context;
    mutable QPersistentModelIndex m_refusedCell;
    mutable QString m_refusedText;
};

} // namespace options
