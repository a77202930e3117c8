#pragma once

#include "Desk.h"

#include <QAbstractTableModel>
#include <QTableView>
#include <QWidget>

#include <memory>

namespace Ui {
class FrmCustomer;
}

namespace bench {

/// Customers in memory: the first thousand of a desk again and again, so many in all.
class MemoryModel : public QAbstractTableModel
{
public:
    explicit MemoryModel(const Desk &desk);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    int m_count;
    QList<QStringList> m_rows;
};

/// The window of the customer list over a model in memory: what the same window costs at the least.
class MemoryList : public QWidget
{
public:
    /// The model must outlive the window.
    explicit MemoryList(MemoryModel &model);
    ~MemoryList() override;

    QTableView &grid() const;
    /// Takes the size of the list itself, and the widths of its columns.
    void takeShape(const QWidget &list, const QTableView &grid);

private:
    std::unique_ptr<Ui::FrmCustomer> m_ui;
};

} // namespace bench
