#include "customers/CustomerQueries.h"
#include "customers/forms/CustomerColumns.h"
#include "customers/forms/FrmCustomer.h"
#include "ui_FrmCustomer.h"

#include <QHeaderView>

#include <utility>

using namespace Qt::StringLiterals;

// The list's grid, commands and keys, as they are when it opens.
namespace customers {

void FrmCustomer::setUpGrid()
{
    appearance::RecordGrid &grid = *m_ui->DataGrid1;
    titleCustomerColumns(Ado1, m_context.texts);
    grid.setModel(&Ado1);
    grid.setHint(m_context.texts.Lms(u"NoCustomersShown"_s));
    grid.setColumnsChoosable();
    QHeaderView *header = grid.horizontalHeader();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    connect(header, &QHeaderView::sectionClicked, this, &FrmCustomer::sort);
    connect(&grid, &appearance::RecordGrid::recordActivated, this, [this](int row) {
        if (editRow(row, m_ui->txtAddToExist->text())) {
            dropNumber(); // or the next customer who is opened would get it, too
        }
    });
}

void FrmCustomer::setUpList()
{
    using appearance::SearchedList;
    m_list.emplace(
        SearchedList::Context{.rows = Ado1,
                              .file = m_context.paths.CustomerFile,
                              .texts = m_context.texts,
                              .first = {.query = listQuery(), .unsorted = refreshQuery(), .sortedColumn = 0},
                              .searchQuery = searchQuery,
                              .sortQuery = sortQuery,
                              .nameFields = {u"CustomerName"_s, u"WorkPhones"_s},
                              .countSign = u" "_s,
                              .foundCountSign = u":"_s},
        SearchedList::Controls{
            .grid = *m_ui->DataGrid1,
            .words = *m_ui->txtSearch,
            .search = *m_ui->cmdSearch,
            .edit = *m_ui->Command4,
            .count = *m_ui->lblCount,
            .removal = {{.button = *m_ui->Command5,
                         .deleted = {*m_ui->framDeleted, *m_ui->lblDeleted, *m_ui->cmdUndo}}}});
    connect(&*m_list, &SearchedList::answered, this, &FrmCustomer::showAnswer);
    connect(&*m_list, &SearchedList::editAsked, this, [this](int row) { editRow(row, {}); });
    connect(&*m_list, &SearchedList::removeAsked, this, &FrmCustomer::deleteSelected);
    connect(&*m_list, &SearchedList::removeKeyPressed, this, &FrmCustomer::deleteSelected);
    const auto follow = [this](const QString &troubleKey) {
        return [this, troubleKey](int rows, bool whole) {
            showMessage(whole ? QString() : troubleKey);
            if (rows > 0) {
                m_context.server.SendServer(u"REFRESHCUSTOMERLIST"_s);
            }
        };
    };
    connect(&*m_list, &SearchedList::removed, this, [this](qint32 sn) { m_commands.customerDeleted(sn); });
    connect(&*m_list, &SearchedList::removalEnded, this, follow(u"CustomerNotDeleted"_s));
    connect(&*m_list, &SearchedList::restored, this, [this](qint32 sn) { m_commands.customerRestored(sn); });
    connect(&*m_list, &SearchedList::restoringEnded, this, follow(u"RowsNotRestored"_s));
}

// The operator's own widths, order and choice win. Before the file could be opened there are no columns, and
// this does nothing.
void FrmCustomer::layOutColumns()
{
    if (std::exchange(m_columnsLaidOut, true)) {
        return;
    }
    appearance::RecordGrid &grid = *m_ui->DataGrid1;
    showUsualCustomerColumns(grid);
    grid.remember(m_context.services.windows, u"FrmCustomer.DataGrid1"_s);
}

void FrmCustomer::setUpCommands()
{
    connect(m_ui->Command1, &QPushButton::clicked, this, [this] { m_commands.addCustomer(); });
    connect(m_ui->cmdExport, &QPushButton::clicked, this, [this] { m_commands.exportCustomers(); });
    connect(m_ui->cmdImport, &QPushButton::clicked, this,
            [this] { m_context.navigator.show(core::Window::ImportCustomers); });
    connect(m_ui->Command2, &QPushButton::clicked, this, &QWidget::close);
    offerHelp(m_context.navigator, u"Popup_CustomerDatabase"_s, {m_ui->Command3});
    connect(m_ui->txtAddToExist, &QLineEdit::textChanged, this, [this] { showMessage({}); });
}

} // namespace customers
