#include "options/forms/CellDelegate.h"

#include <QLineEdit>

namespace options {

QWidget *CellDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                    const QModelIndex &index) const
{
    if (!m_context.mayEdit(index.column())) {
        return nullptr;
    }
    constexpr int fieldWidth = 255;
    auto *editor = new QLineEdit(parent);
    editor->setMaxLength(fieldWidth);
    editor->setFrame(false);
    return editor;
}

void CellDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    GridDelegate::setEditorData(editor, index);
    if (auto *line = qobject_cast<QLineEdit *>(editor); line != nullptr && index == m_refusedCell) {
        line->setText(m_refusedText);
        line->setModified(true);
        m_refusedCell = QPersistentModelIndex();
    }
}

// A text that was only looked at is not written back: the editor would have cut a long one or joined its
// lines.
void CellDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const auto *line = qobject_cast<QLineEdit *>(editor);
    if (line != nullptr && line->isModified() && line->text() != index.data().toString() &&
        !model->setData(index, line->text())) {
        m_refusedCell = index;
        m_refusedText = line->text();
        m_context.refused(index);
    }
}

} // namespace options
