#include "MemoryList.h"

#include "ui_FrmCustomer.h"

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int usualColumns = 9; // the others are hidden, as in the list itself

} // namespace

MemoryModel::MemoryModel(const Desk &desk) : m_count(desk.customers())
{
    forEachRow(openPlain(desk.paths().CustomerFile).get(),
               u"select CustomerName,CustomerID,city,customertype,ContactPersonName,WorkPhones,"
               "ContactPersonMobile,Address,broker,* from customer limit 1000"_s,
               [this](sqlite3_stmt *row) {
                   QStringList texts;
                   for (int column = 0; column < sqlite3_column_count(row); ++column) {
                       texts.append(textOf(row, column));
                   }
                   m_rows.append(texts);
               });
}

int MemoryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_count;
}

int MemoryModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.value(0).size());
}

QVariant MemoryModel::data(const QModelIndex &index, int role) const
{
    return role == Qt::DisplayRole ? m_rows.at(index.row() % m_rows.size()).at(index.column()) : QVariant();
}

MemoryList::MemoryList(MemoryModel &model) : m_ui(std::make_unique<Ui::FrmCustomer>())
{
    m_ui->setupUi(this);
    setObjectName(u"inMemory"_s); // not to be taken for the list itself
    m_ui->DataGrid1->setModel(&model);
    for (int column = usualColumns; column < model.columnCount(); ++column) {
        m_ui->DataGrid1->setColumnHidden(column, true);
    }
    m_ui->DataGrid1->setCurrentIndex(model.index(0, 0));
}

MemoryList::~MemoryList() = default;

QTableView &MemoryList::grid() const
{
    return *m_ui->DataGrid1;
}

void MemoryList::takeShape(const QWidget &list, const QTableView &grid)
{
    resize(list.size());
    for (int column = 0; column < usualColumns; ++column) {
        m_ui->DataGrid1->setColumnWidth(column, grid.columnWidth(column));
    }
}

} // namespace bench
