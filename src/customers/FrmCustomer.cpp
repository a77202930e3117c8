#include "customers/FrmCustomer.h"

#include "appearance/ThemedIcons.h"
#include "customers/CustomerFields.h"
#include "customers/CustomerQueries.h"
#include "ui_FrmCustomer.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QShortcut>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace customers {

namespace {

constexpr std::chrono::milliseconds typingPause{300};

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

FrmCustomer::FrmCustomer(const appearance::FormContext &context, CustomerListCommands &commands)
    : m_context(context), m_commands(commands), m_ui(std::make_unique<Ui::FrmCustomer>()),
      m_setup(context.services), Ado1(context.log, "Ado1"_L1)
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(appearance::programIcon());
    m_setup.load(*this);
    Ado1.setReadsInSlices(true);
    Ado1.setLeadingFields(usualFields());
    setUpCommands();
    setUpKeys();
    showRows(QString::fromUtf16(listQuery), 0);
    setUpGrid();
    m_ui->txtSearch->setFocus();
}

FrmCustomer::~FrmCustomer()
{
    m_setup.unload();
}

void FrmCustomer::setUpGrid()
{
    appearance::RecordGrid &grid = *m_ui->DataGrid1;
    translateHeadings();
    grid.setModel(&Ado1);
    for (int column = 0; column < int(columnWidths.size()); ++column) {
        grid.setColumnWidth(column, columnWidths.at(size_t(column)) * fontMetrics().horizontalAdvance(u'0'));
    }
    grid.setHint(m_context.texts.Lms(u"NoCustomersShown"_s));
    grid.setColumnsChoosable();
    for (int column = int(usualFields().size()); column < Ado1.columnCount(); ++column) {
        grid.setColumnHidden(column, true);
    }
    grid.setContextMenuPolicy(Qt::CustomContextMenu);
    QHeaderView *header = grid.horizontalHeader();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    grid.remember(m_context.services.windows, u"FrmCustomer.DataGrid1"_s);
    showSortArrow();
    makeCurrent(0);
    connect(header, &QHeaderView::sectionClicked, this, &FrmCustomer::sort);
    connect(&grid, &appearance::RecordGrid::customContextMenuRequested, this, &FrmCustomer::showMenu);
    connect(&grid, &appearance::RecordGrid::recordActivated, this,
            [this](int row) { editRow(row, m_ui->txtAddToExist->text()); });
    connect(&grid, &appearance::RecordGrid::deleteRequested, this, &FrmCustomer::deleteCurrent);
}

// Three columns have no key in the table of fields, and are titled as in the editor.
void FrmCustomer::translateHeadings()
{
    const auto title = [this](const QString &field, const QString &key) {
        const QString text = m_context.texts.Lms(key);
        Ado1.setHeading(field, text.isEmpty() ? field : text);
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
    m_typingPause.setSingleShot(true);
    connect(&m_typingPause, &QTimer::timeout, this, [this] {
        if (m_ui->txtSearch->text().trimmed() != m_searched) {
            search();
        }
    });
    connect(m_ui->txtSearch, &QLineEdit::textEdited, this, [this] { m_typingPause.start(typingPause); });
    connect(m_ui->txtSearch, &QLineEdit::returnPressed, this, &FrmCustomer::search);
    connect(m_ui->cmdSearch, &QPushButton::clicked, this, &FrmCustomer::search);
    connect(m_ui->Command1, &QPushButton::clicked, this, [this] { m_commands.addCustomer(); });
    connect(m_ui->Command4, &QPushButton::clicked, this,
            [this] { editRow(m_ui->DataGrid1->currentIndex().row(), {}); });
    connect(m_ui->Command5, &QPushButton::clicked, this, &FrmCustomer::deleteCurrent);
    connect(m_ui->cmdExport, &QPushButton::clicked, this, [this] { m_commands.exportCustomers(); });
    connect(m_ui->Command3, &QPushButton::clicked, this,
            [this] { m_context.navigator.ShowHelp(u"Popup_CustomerDatabase"_s); });
    connect(m_ui->Command2, &QPushButton::clicked, this, &QWidget::close);
    connect(&Ado1, &store::RecordsetModel::readingEnded, this, &FrmCustomer::showSearchCount);
}

void FrmCustomer::setUpKeys()
{
    const auto key = [this](const QKeySequence &keys, auto work) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, work);
    };
    key(QKeySequence::Find, [this] {
        m_ui->txtSearch->setFocus(Qt::ShortcutFocusReason);
        m_ui->txtSearch->selectAll();
    });
    key(Qt::Key_F5, [this] { refresh(); });
    key(Qt::Key_F1, [this] { m_ui->Command3->click(); });
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

/// False, with the list as it was, where the query fails.
bool FrmCustomer::showRows(const QString &query, int sortedColumn)
{
    if (!Ado1.setRecordSource(m_context.paths.CustomerFile, query)) {
        showMessage(query.contains(u'\'') ? u"SearchNotUnderstood"_s : u"CustomerListUnavailable"_s);
        showSortArrow();
        return false;
    }
    m_sortedColumn = sortedColumn;
    showMessage({});
    showSortArrow();
    makeCurrent(0);
    return true;
}

void FrmCustomer::showQuery(const QString &query)
{
    if (showRows(query, -1)) {
        showCount(u' ');
    }
}

void FrmCustomer::searchFor(const QString &keyWord, const QString &number)
{
    m_ui->txtSearch->setText(keyWord);
    m_ui->txtAddToExist->setText(number);
    search();
}

void FrmCustomer::search()
{
    m_typingPause.stop();
    m_searched = m_ui->txtSearch->text().trimmed();
    if (showRows(searchQuery(m_searched), -1) && !Ado1.isReading()) {
        showSearchCount();
    }
}

/// A search without hits leaves the count of the one before.
void FrmCustomer::showSearchCount()
{
    if (Ado1.rowCount() > 0) {
        showCount(u':');
        makeCurrent(std::max(m_ui->DataGrid1->currentIndex().row(), 0));
    }
}

void FrmCustomer::sort(int column)
{
    const QString query = sortQuery(column);
    if (query.isEmpty()) {
        showSortArrow(); // the heading has put it where it was clicked
    } else {
        showRows(query, column);
    }
}

void FrmCustomer::refresh()
{
    const qint64 sn = Ado1.field(m_ui->DataGrid1->currentIndex().row(), u"SN"_s).toLongLong();
    if (showRows(QString(Ado1.recordSource().isEmpty() ? QString::fromUtf16(listQuery) : Ado1.recordSource()),
                 m_sortedColumn)) {
        makeCurrent(std::max(Ado1.rowOf(sn), 0));
        showCount(u' ');
    }
}

void FrmCustomer::refreshCustomerList()
{
    const qint64 sn = Ado1.field(m_ui->DataGrid1->currentIndex().row(), u"SN"_s).toLongLong();
    if (showRows(QString::fromUtf16(refreshQuery), -1)) {
        makeCurrent(std::max(Ado1.rowOf(sn), 0));
    }
}

void FrmCustomer::makeCurrent(int row)
{
    appearance::RecordGrid &grid = *m_ui->DataGrid1;
    const int column = grid.horizontalHeader()->logicalIndexAt(0);
    if (row < Ado1.rowCount() && grid.model() != nullptr) {
        grid.setCurrentIndex(Ado1.index(row, std::max(column, 0)));
    }
}

void FrmCustomer::editRow(int row, const QString &number)
{
    const qint32 sn = Ado1.field(row, u"SN"_s).toInt();
    if (sn != 0) {
        m_commands.editCustomer(sn, number);
    } else if (row >= 0) {
        showMessage(u"CustomerNotFound"_s); // another desk has deleted it
    }
}

void FrmCustomer::deleteCurrent()
{
    if (!m_context.prompts.askOkCancel(u"真的要删当前客户信息吗？"_s, u"HALDEN SOFTWARE"_s)) {
        return;
    }
    const int row = m_ui->DataGrid1->currentIndex().row();
    if (row < 0 || row >= Ado1.rowCount()) {
        return;
    }
    if (!Ado1.removeRows(row, 1)) {
        return showMessage(u"CustomerNotDeleted"_s);
    }
    showMessage({});
    makeCurrent(std::max(row - 1, 0));
    m_context.server.SendServer(u"REFRESHCUSTOMERLIST"_s);
}

void FrmCustomer::showCount(QChar separator)
{
    m_ui->lblCount->setText(m_context.texts.Lms(u"Totalcount"_s) + separator +
                            QString::number(Ado1.rowCount()));
}

void FrmCustomer::showMessage(const QString &key)
{
    m_ui->lblMessage->setText(key.isEmpty() ? QString() : m_context.texts.Lms(key));
}

void FrmCustomer::showSortArrow()
{
    m_ui->DataGrid1->horizontalHeader()->setSortIndicator(m_sortedColumn, Qt::AscendingOrder);
}

bool FrmCustomer::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate) {
        showCount(u' ');
    }
    return QWidget::event(event);
}

// Esc leaves a search first, and then the list.
void FrmCustomer::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
    } else if (focusWidget() == m_ui->txtSearch && !m_ui->txtSearch->text().isEmpty()) {
        m_ui->txtSearch->clear();
        search();
    } else {
        close();
    }
}

void FrmCustomer::closeEvent(QCloseEvent *event)
{
    m_setup.rememberGeometry(*this);
    m_setup.unload();
    QWidget::closeEvent(event);
}

} // namespace customers
