#include "options/CellDelegate.h"

#include <QLineEdit>

namespace options {

QWidget *CellDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const
{
    constexpr int fieldWidth = 255;
    auto *editor = new QLineEdit(parent);
    editor->setMaxLength(fieldWidth);
    editor->setFrame(false);
    return editor;
}

// A text that was only looked at is not written: longer ones and those of several lines stay as they are.
void CellDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const auto *line = qobject_cast<QLineEdit *>(editor);
    if (line != nullptr && line->isModified() && line->text() != index.data().toString() &&
        !model->setData(index, line->text())) {
        m_refused();
    }
}

} // namespace options
