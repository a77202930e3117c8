#pragma once

#include "appearance/GridDelegate.h"
#include "phonebook/DataPhonebook.h"

namespace phonebook {

/// Edits a mark in its cell by choosing one of the words.
class MarkDelegate : public appearance::GridDelegate
{
    Q_OBJECT

public:
    /// The data control must outlive the delegate.
    explicit MarkDelegate(const DataPhonebook &data, QObject *parent = nullptr)
        : GridDelegate(parent), m_data(data)
    {}

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

private:
    const DataPhonebook &m_data;
};

} // namespace phonebook
