#include "customers/CustomerFields.h"
#include "customers/CustomerQueries.h"
#include "customers/forms/FrmCustomer.h"
#include "ui_FrmCustomer.h"

#include <QHeaderView>

#include <array>

using namespace Qt::StringLiterals;

// The list's grid, commands and keys, as they are when it opens.
namespace customers {

namespace {

// How wide the usual columns are at first, in characters.
constexpr std::array columnWidths{30, 14, 18, 16, 22, 28, 20, 28, 18};

// The columns that are shown before the operator chooses others; they stand in front.
QStringList usualFields()
{
    return {u"CustomerName"_s,        u"CustomerID"_s,        u"city"_s,
            u"customertype"_s,        u"ContactPersonName"_s, u"WorkPhones"_s,
            u"ContactPersonMobile"_s, u"Address"_s,           u"broker"_s};
}

} // namespace

void FrmCustomer::setUpGrid()
{
    appearance::RecordGrid &grid = *m_ui->DataGrid1;
    Ado1.setLeadingFields(usualFields());
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
                              .countSign = u" "_s,
                              .foundCountSign = u":"_s},
        SearchedList::Controls{.grid = *m_ui->DataGrid1,
                               .words = *m_ui->txtSearch,
                               .search = *m_ui->cmdSearch,
                               .edit = *m_ui->Command4,
                               .remove = *m_ui->Command5,
                               .count = *m_ui->lblCount});
    connect(&*m_list, &SearchedList::answered, this, &FrmCustomer::showAnswer);
    connect(&*m_list, &SearchedList::editAsked, this, [this](int row) { editRow(row, {}); });
    connect(&*m_list, &SearchedList::removeAsked, this, &FrmCustomer::deleteCurrent);
    connect(&*m_list, &SearchedList::removeKeyPressed, this, &FrmCustomer::deleteCurrent);
}

// The operator's own widths, order and choice win. Before the file could be opened there are no columns, and
// this does nothing.
void FrmCustomer::layOutColumns()
{
    if (std::exchange(m_columnsLaidOut, true)) {
        return;
    }
    appearance::RecordGrid &grid = *m_ui->DataGrid1;
    grid.setWidths(columnWidths);
    for (int column = int(usualFields().size()); column < Ado1.columnCount(); ++column) {
        grid.setColumnHidden(column, true);
    }
    grid.remember(m_context.services.windows, u"FrmCustomer.DataGrid1"_s);
}

// The table of fields has no keys for three columns; they are titled as in the editor.
void FrmCustomer::translateHeadings()
{
    const auto title = [this](const QString &field, const QString &key) {
        Ado1.setHeading(field, m_context.texts.Lms(key));
    };
    for (const CustomerField &field : customerFields()) {
        title(field.column, field.labelKey);
    }
    title(u"T1"_s, u"SecondContact"_s);
    title(u"T2"_s, u"SecondContactMobile"_s);
    title(u"T3"_s, u"PopTheCaller"_s);
    title(u"SN"_s, u"SN"_s);
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
