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
    show(allByName());
    m_ui->txtSearch->setFocus();
}

FrmCustomer::~FrmCustomer()
{
    m_setup.unload();
}

FrmCustomer::Asked FrmCustomer::allByName()
{
    return {QString::fromUtf16(listQuery), QString::fromUtf16(refreshQuery), 0};
}

/// False, with the list as it was, where the query fails. Without an SN it stands on the first row.
bool FrmCustomer::show(const Asked &asked, std::optional<qint64> sn)
{
    m_asked = asked;
    m_wanted = sn;
    if (!Ado1.setRecordSource(m_context.paths.CustomerFile, asked.query)) {
        showMessage(store::troubleKey(Ado1.trouble(), u"CustomerListUnavailable"_s));
        showSortArrow();
        return false;
    }
    m_shown = asked;
    if (!asked.searched) {
        m_typing.rowsShown();
    }
    layOutColumns();
    showMessage({});
    showSortArrow();
    makeCurrent(0);
    standOnWanted();
    if (!Ado1.isReading()) {
        showAllFound();
    }
    return true;
}

void FrmCustomer::showQuery(const QString &query)
{
    m_ui->txtSearch->clear(); // its words would not be what is shown
    m_typing.settle();
    show({query, query});
}

bool FrmCustomer::searchFor(const QString &keyWord, const QString &number)
{
    dropNumber(); // unless the rows are those of the search, it is nobody's
    m_ui->txtSearch->setText(keyWord);
    if (!search()) {
        return false;
    }
    m_ui->txtAddToExist->setText(number);
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

bool FrmCustomer::search()
{
    m_typing.settle();
    const QString query = searchQuery(m_ui->txtSearch->text().trimmed());
    const bool shown = show({query, query, -1, true});
    if (shown) {
        m_typing.rowsShown();
    }
    return shown;
}

/// A search without hits leaves the count of the one before.
void FrmCustomer::showAllFound()
{
    showMessage(Ado1.isComplete() ? QString()
                                  : store::troubleKey(Ado1.trouble(), u"CustomerListUnavailable"_s));
    if (Ado1.rowCount() > 0 || !m_shown.searched) {
        showCount(m_shown.searched ? u':' : u' ');
    }
}

void FrmCustomer::sort(int column)
{
    const QString rows = m_shown.unsorted.isEmpty() ? allByName().unsorted : m_shown.unsorted;
    const QString query = sortQuery(column, rows.trimmed());
    if (query.isEmpty()) {
        showSortArrow(); // the heading has put it where it was clicked
    } else {
        show({query, rows, column, m_shown.searched});
    }
}

void FrmCustomer::refresh()
{
    show(m_shown.query.isEmpty() ? allByName() : m_shown, currentSn());
}

void FrmCustomer::refreshCustomerList()
{
    dropNumber(); // whoever was saved has the caller's number now, or it is not wanted
    const QString all = QString::fromUtf16(refreshQuery);
    show(m_shown.searched ? m_shown : Asked{all, all}, currentSn());
}

qint64 FrmCustomer::currentSn() const
{
    return Ado1.field(m_ui->DataGrid1->currentIndex().row(), u"SN"_s).toLongLong();
}

/// Rows that are found later do not take the operator from the one that he has gone to.
void FrmCustomer::standOnWanted()
{
    const int current = m_ui->DataGrid1->currentIndex().row();
    const int wanted = m_wanted ? Ado1.rowOf(*m_wanted) : -1;
    if ((current <= 0 || current == m_standsOn) && (wanted >= 0 ? wanted != current : current < 0)) {
        makeCurrent(std::max(wanted, 0));
    }
    m_standsOn = wanted;
    if (wanted >= 0 && !Ado1.isReading()) { // until then those in front of it may turn out to be others
        m_wanted.reset();
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
    m_ui->DataGrid1->horizontalHeader()->setSortIndicator(m_shown.sortedColumn, Qt::AscendingOrder);
}

bool FrmCustomer::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate && !Ado1.isReading()) {
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
