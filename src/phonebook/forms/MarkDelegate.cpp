#include "phonebook/forms/MarkDelegate.h"

#include "phonebook/PhoneBookEntry.h"

#include <QComboBox>

namespace phonebook {

QWidget *MarkDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                    const QModelIndex &index) const
{
    if (!m_data.isMark(index.column())) {
        return GridDelegate::createEditor(parent, option, index);
    }
    auto *words = new QComboBox(parent);
    for (const Qt::CheckState state : {Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked}) {
        const QString letter = markLetter(state);
        words->addItem(m_data.markWord(letter), letter);
    }
    return words;
}

void MarkDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    if (auto *words = qobject_cast<QComboBox *>(editor)) {
        const QString letter = index.data(Qt::EditRole).toString();
        words->setCurrentIndex(words->findData(markLetter(markState(letter))));
    } else {
        GridDelegate::setEditorData(editor, index);
    }
}

// A cell that holds none of the letters keeps its contents until the operator chooses another word.
void MarkDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const auto *words = qobject_cast<QComboBox *>(editor);
    if (words == nullptr) {
        GridDelegate::setModelData(editor, model, index);
    } else if (words->currentText() != index.data().toString()) {
        model->setData(index, words->currentData());
    }
}

} // namespace phonebook
