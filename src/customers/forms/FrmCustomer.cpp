#include "customers/forms/FrmCustomer.h"

#include "core/TextUtilities.h"
#include "customers/CustomerQueries.h"
#include "ui_FrmCustomer.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;

namespace customers {

FrmCustomer::FrmCustomer(const appearance::FormContext &context, CustomerListCommands &commands)
    : Form(context.services), m_context(context), m_commands(commands),
      m_ui(std::make_unique<Ui::FrmCustomer>()), Ado1(context.log, "Ado1"_L1)
{
    m_ui->setupUi(this);
    load();
    setUpGrid();
    setUpList();
    setUpCommands();
    m_list->refresh();
    m_ui->txtSearch->setFocus();
}

FrmCustomer::~FrmCustomer() = default;

void FrmCustomer::showAnswer(bool whole)
{
    if (whole) {
        layOutColumns();
    }
    showMessage(whole ? QString() : store::troubleKey(Ado1.trouble(), u"CustomerListUnavailable"_s));
    showSortArrow();
}

void FrmCustomer::showQuery(const QString &query)
{
    m_list->showUnsearched({.query = query, .unsorted = query});
}

bool FrmCustomer::searchFor(const QString &keyWord, const QString &number)
{
    dropNumber(); // unless the rows are those of the search, it is nobody's
    m_ui->txtSearch->setText(keyWord);
    if (!m_list->search()) {
        return false;
    }
    m_ui->txtAddToExist->setText(number);
    if (Ado1.rowCount() == 0 && Ado1.isReading()) {
        const auto comeForward = [this] {
            if (hasNumber()) {
                bringToFront();
            }
        };
        constexpr int onceAndLater = Qt::QueuedConnection | Qt::SingleShotConnection;
        connect(&Ado1, &QAbstractItemModel::rowsInserted, this, comeForward,
                Qt::ConnectionType(onceAndLater));
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

void FrmCustomer::sort(int column)
{
    if (!m_list->sort(column)) {
        showSortArrow(); // the heading has put it where it was clicked
    }
}

void FrmCustomer::refreshCustomerList()
{
    dropNumber(); // whoever was saved has the caller's number now, or it is not wanted
    const QString all = refreshQuery();
    m_list->follow({.query = all, .unsorted = all}, m_list->currentSn());
}

bool FrmCustomer::editRow(int row, const QString &number)
{
    const qint32 sn = Ado1.field(row, u"SN"_s).toInt();
    if (sn == 0 && row >= 0) {
        showMessage(u"CustomerNotFound"_s); // another desk has deleted it
    }
    return sn != 0 && m_commands.editCustomer(sn, number);
}

void FrmCustomer::deleteSelected()
{
    m_list->removeSelected(u"真的要删当前客户信息吗？"_s, [this](const QString &question) {
        return m_context.prompts.askOkCancel(question, u"HALDEN SOFTWARE"_s);
    });
}

// Without a message, the line says that a caller's number waits for its customer.
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
    m_ui->DataGrid1->horizontalHeader()->setSortIndicator(m_list->shown().sortedColumn, Qt::AscendingOrder);
}

} // namespace customers
