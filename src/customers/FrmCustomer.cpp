#include "customers/FrmCustomer.h"

#include "appearance/BringToFront.h"
#include "appearance/ThemedIcons.h"
#include "core/TextUtilities.h"
#include "customers/CustomerQueries.h"
#include "ui_FrmCustomer.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace customers {

FrmCustomer::FrmCustomer(const appearance::FormContext &context, CustomerListCommands &commands)
    : m_context(context), m_commands(commands), m_ui(std::make_unique<Ui::FrmCustomer>()),
      m_setup(context.services), Ado1(context.log, "Ado1"_L1)
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(appearance::programIcon());
    m_setup.load(*this);
    setUpCommands();
    translateHeadings();
    setUpGrid();
    showRows(QString::fromUtf16(listQuery), 0);
    m_ui->txtSearch->setFocus();
}

FrmCustomer::~FrmCustomer()
{
    m_setup.unload();
}

/// False, with the list as it was, where the query fails.
bool FrmCustomer::showRows(const QString &query, int sortedColumn)
{
    if (!Ado1.setRecordSource(m_context.paths.CustomerFile, query)) {
        showMessage(store::isReadable(m_context.paths.CustomerFile) ? u"SearchNotUnderstood"_s
                                                                    : u"CustomerListUnavailable"_s);
        showSortArrow();
        return false;
    }
    m_sortedColumn = sortedColumn;
    m_typing.rowsShown();
    layOutColumns();
    showMessage({});
    showSortArrow();
    makeCurrent(0);
    return true;
}

void FrmCustomer::showQuery(const QString &query)
{
    m_ui->txtSearch->clear(); // its words would not be what is shown
    m_typing.settle();
    if (showRows(query, -1)) {
        showCount(u' ');
    }
}

bool FrmCustomer::searchFor(const QString &keyWord, const QString &number)
{
    m_ui->txtSearch->setText(keyWord);
    m_ui->txtAddToExist->setText(number);
    search();
    if (Ado1.rowCount() == 0 && Ado1.isReading()) {
        const auto comeForward = [this] {
            if (hasNumber()) {
                appearance::bringToFront(*this);
            }
        };
        connect(&Ado1, &QAbstractItemModel::rowsInserted, this, comeForward,
                static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    }
    return Ado1.rowCount() > 0;
}

bool FrmCustomer::hasNumber() const
{
    return !m_ui->txtAddToExist->text().isEmpty();
}

void FrmCustomer::dropNumber()
{
    m_ui->txtAddToExist->clear();
}

void FrmCustomer::search()
{
    m_typing.settle();
    if (showRows(searchQuery(m_ui->txtSearch->text().trimmed()), -1) && !Ado1.isReading()) {
        showSearchCount();
    }
}

/// A search without hits leaves the count of the one before.
void FrmCustomer::showSearchCount()
{
    if (!Ado1.isComplete()) {
        showMessage(u"CustomerListUnavailable"_s);
    }
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
    const QString shown = Ado1.recordSource();
    if (showRows(shown.isEmpty() ? QString::fromUtf16(listQuery) : shown, m_sortedColumn)) {
        makeCurrent(std::max(Ado1.rowOf(sn), 0));
        showCount(u' ');
    }
}

void FrmCustomer::refreshCustomerList()
{
    const qint64 sn = Ado1.field(m_ui->DataGrid1->currentIndex().row(), u"SN"_s).toLongLong();
    dropNumber(); // whoever was saved has the caller's number now, or it is not wanted
    if (showRows(QString::fromUtf16(refreshQuery), -1)) {
        makeCurrent(std::max(Ado1.rowOf(sn), 0));
    }
}

/// Before the first row, the list stands on none. The first column in sight keeps it from moving sideways.
void FrmCustomer::makeCurrent(int row)
{
    appearance::RecordGrid &grid = *m_ui->DataGrid1;
    const int start = isRightToLeft() ? grid.viewport()->width() - 1 : 0;
    const int column = grid.horizontalHeader()->logicalIndexAt(start);
    if (row < Ado1.rowCount()) {
        grid.setCurrentIndex(Ado1.index(row, std::max(column, 0)));
    }
}

bool FrmCustomer::editRow(int row, const QString &number)
{
    const qint32 sn = Ado1.field(row, u"SN"_s).toInt();
    if (sn == 0 && row >= 0) {
        showMessage(u"CustomerNotFound"_s); // another desk has deleted it
    }
    return sn != 0 && m_commands.editCustomer(sn, number);
}

void FrmCustomer::deleteCurrent()
{
    const int row = m_ui->DataGrid1->currentIndex().row();
    const bool confirmed = m_typing.ask([this] {
        return m_context.prompts.askOkCancel(u"真的要删当前客户信息吗？"_s, u"HALDEN SOFTWARE"_s);
    });
    if (!confirmed || row < 0) {
        return;
    }
    const qint32 sn = Ado1.field(row, u"SN"_s).toInt();
    if (!Ado1.removeRows(row, 1)) {
        return showMessage(u"CustomerNotDeleted"_s);
    }
    showMessage({});
    makeCurrent(row - 1);
    showCount(u' ');
    m_commands.customerDeleted(sn);
    m_context.server.SendServer(u"REFRESHCUSTOMERLIST"_s);
}

void FrmCustomer::showCount(QChar separator)
{
    m_ui->lblCount->setText(m_context.texts.Lms(u"Totalcount"_s) + separator +
                            QString::number(Ado1.rowCount()));
}

/// Without one, that a caller's number waits for its customer.
void FrmCustomer::showMessage(const QString &key)
{
    const QString number = core::shownText(m_ui->txtAddToExist->text());
    const QString waiting =
        number.isEmpty()
            ? QString()
            : m_context.texts.Lms(u"CallerNumberWaits"_s).replace(u"%1"_s, core::isolated(number));
    m_ui->lblMessage->setText(key.isEmpty() ? waiting : m_context.texts.Lms(key));
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

void FrmCustomer::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
    } else if (!m_typing.leave()) {
        close();
    }
}

void FrmCustomer::closeEvent(QCloseEvent *event)
{
    m_setup.rememberGeometry(*this);
    QWidget::closeEvent(event);
}

} // namespace customers
