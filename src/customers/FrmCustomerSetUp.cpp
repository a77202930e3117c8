#include "appearance/Keys.h"
#include "customers/CustomerFields.h"
#include "customers/FrmCustomer.h"
#include "ui_FrmCustomer.h"

#include <QHeaderView>
#include <QMenu>

#include <array>

using namespace Qt::StringLiterals;

// The list's grid, commands and keys, as they are when it opens.
namespace customers {

namespace {

/// How wide the usual columns are at first, in characters.
constexpr std::array columnWidths{30, 14, 18, 16, 22, 28, 20, 28, 18};

/// The columns that are shown before the operator chooses others; they stand in front.
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
    grid.setContextMenuPolicy(Qt::CustomContextMenu);
    QHeaderView *header = grid.horizontalHeader();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    connect(header, &QHeaderView::sectionClicked, this, &FrmCustomer::sort);
    connect(&grid, &appearance::RecordGrid::customContextMenuRequested, this, &FrmCustomer::showMenu);
    connect(&grid, &appearance::RecordGrid::recordActivated, this, [this](int row) {
        if (editRow(row, m_ui->txtAddToExist->text())) {
            dropNumber(); // or the next customer who is opened would get it, too
        }
    });
    connect(&grid, &appearance::RecordGrid::deleteRequested, this, &FrmCustomer::deleteCurrent);
    connect(&grid, &appearance::RecordGrid::currentRowChanged, m_ui->Command4, &QWidget::setEnabled);
}

/// The operator's own widths, order and choice come first. Does nothing before the file could be opened:
/// there are no columns then.
void FrmCustomer::layOutColumns()
{
    if (std::exchange(m_columnsLaidOut, true)) {
        return;
    }
    appearance::RecordGrid &grid = *m_ui->DataGrid1;
    for (int column = 0; column < int(columnWidths.size()); ++column) {
        grid.setColumnWidth(column, columnWidths.at(size_t(column)) * fontMetrics().horizontalAdvance(u'0'));
    }
    for (int column = int(usualFields().size()); column < Ado1.columnCount(); ++column) {
        grid.setColumnHidden(column, true);
    }
    grid.remember(m_context.services.windows, u"FrmCustomer.DataGrid1"_s);
}

// Three columns have no key in the table of fields, and are titled as in the editor.
void FrmCustomer::translateHeadings()
{
    const auto title = [this](const QString &field, const QString &key) {
        Ado1.setHeading(field, m_context.texts.Lms(key));
    };
    for (const CustomerField &field : customerFields()) {
        title(QString::fromLatin1(field.column), QString::fromLatin1(field.labelKey));
    }
    title(u"T1"_s, u"SecondContact"_s);
    title(u"T2"_s, u"SecondContactMobile"_s);
    title(u"T3"_s, u"PopTheCaller"_s);
    title(u"SN"_s, u"SN"_s);
}

void FrmCustomer::setUpCommands()
{
    m_typing.watch(*m_ui->txtSearch, *m_ui->DataGrid1, [this] { search(); });
    connect(m_ui->cmdSearch, &QPushButton::clicked, this, &FrmCustomer::search);
    connect(m_ui->Command1, &QPushButton::clicked, this, [this] { m_commands.addCustomer(); });
    connect(m_ui->Command4, &QPushButton::clicked, this,
            [this] { editRow(m_ui->DataGrid1->currentIndex().row(), {}); });
    connect(m_ui->Command5, &QPushButton::clicked, this, &FrmCustomer::deleteCurrent);
    connect(m_ui->cmdExport, &QPushButton::clicked, this, [this] { m_commands.exportCustomers(); });
    connect(m_ui->Command3, &QPushButton::clicked, this,
            [this] { m_context.navigator.ShowHelp(u"Popup_CustomerDatabase"_s); });
    connect(m_ui->Command2, &QPushButton::clicked, this, &QWidget::close);
    appearance::onKeys(*this, QKeySequence::Refresh, [this] { refresh(); });
    appearance::onHelpKey(*this, m_context.navigator, u"Popup_CustomerDatabase"_s);
    connect(m_ui->txtAddToExist, &QLineEdit::textChanged, this, [this] { showMessage({}); });
    connect(&Ado1, &store::ResultModel::rowsFound, this, &FrmCustomer::standOnWanted);
    connect(&Ado1, &store::ResultModel::readingEnded, this, &FrmCustomer::showAllFound);
    connect(&Ado1, &store::ResultModel::readingHeldUp, this, [this] { showMessage(u"FileInUse"_s); });
    connect(&Ado1, &store::ResultModel::lockEnded, this, [this] { show(m_asked, m_wanted); });
}

void FrmCustomer::showMenu(const QPoint &position)
{
    QMenu menu(this);
    const bool onRow = m_ui->DataGrid1->currentIndex().isValid();
    const auto add = [&](const QString &caption, auto work) {
        QAction *action = menu.addAction(caption);
        action->setEnabled(onRow);
        connect(action, &QAction::triggered, this, work);
    };
    add(m_ui->Command4->text(), [this] { m_ui->Command4->click(); });
    add(m_context.texts.Lms(u"CopyRow"_s), [this] { m_ui->DataGrid1->copySelection(); });
    add(m_context.texts.Lms(u"CopyCell"_s), [this] { m_ui->DataGrid1->copyCell(); });
    menu.addSeparator();
    add(m_ui->Command5->text(), [this] { deleteCurrent(); });
    menu.exec(m_ui->DataGrid1->viewport()->mapToGlobal(position));
}

} // namespace customers
