#pragma once

#include "copies/CopyFolder.h"
#include "core/TextLookup.h"

#include <QAbstractTableModel>

namespace copies {

/// The list of copies, the last one in front: date, why it was made, size, rows, and whether it is whole.
class CopiesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// The texts must outlive the model.
    explicit CopiesModel(const core::TextLookup &texts) : m_texts(texts) {}

    void setCopies(const QList<Copy> &copies);
    /// Null for a row that is not there.
    const Copy *at(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QString text(const Copy &copy, int column) const;

    const core::TextLookup &m_texts;
    QList<Copy> m_copies;
};

} // namespace copies
