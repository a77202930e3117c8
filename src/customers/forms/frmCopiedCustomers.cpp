#include "customers/forms/frmCopiedCustomers.h"

#include "core/TextUtilities.h"
#include "customers/CustomerQueries.h"
#include "customers/forms/CustomerColumns.h"
#include "ui_frmCopiedCustomers.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace customers {

frmCopiedCustomers::frmCopiedCustomers(const appearance::FormContext &context, CustomerEffects &effects)
    : Form(context.services), m_context(context),
      m_editing({context.paths, context.values, context.log, context.texts, context.server, effects}),
      m_ui(std::make_unique<Ui::frmCopiedCustomers>()), m_rows(context.log, "CopiedCustomers"_L1)
{
    m_ui->setupUi(this);
    load();
    m_title = windowTitle();
    setUpGrid();
    setUpList();
    connect(m_ui->cmdReturn, &QPushButton::clicked, this, &QWidget::close);
    offerHelp(m_context.navigator, u"Popup_Copies"_s, {m_ui->cmdHelp});
}

frmCopiedCustomers::~frmCopiedCustomers() = default;

void frmCopiedCustomers::setUpGrid()
{
    appearance::RecordGrid &grid = *m_ui->DataGrid1;
    titleCustomerColumns(m_rows, m_context.texts);
    grid.setModel(&m_rows);
    grid.setHint(m_context.texts.Lms(u"NoCustomersShown"_s));
    grid.setColumnsChoosable();
    connect(&grid, &appearance::RecordGrid::recordActivated, this, &frmCopiedCustomers::bringBack);
}

void frmCopiedCustomers::setUpList()
{
    using appearance::SearchedList;
    m_list.emplace(SearchedList::Context{.rows = m_rows,
                                         .file = m_file,
                                         .texts = m_context.texts,
                                         .first = {.query = listQuery(), .unsorted = refreshQuery()},
                                         .searchQuery = searchQuery,
                                         .countSign = u" "_s,
                                         .foundCountSign = u":"_s},
                   SearchedList::Controls{.grid = *m_ui->DataGrid1,
                                          .words = *m_ui->txtSearch,
                                          .search = *m_ui->cmdSearch,
                                          .edit = *m_ui->cmdBringBack,
                                          .count = *m_ui->lblCount});
    connect(&*m_list, &SearchedList::answered, this, &frmCopiedCustomers::showAnswer);
    connect(&*m_list, &SearchedList::editAsked, this, &frmCopiedCustomers::bringBack);
}

void frmCopiedCustomers::showCopy(const QString &file, const QString &name)
{
    m_file = file;
    setWindowTitle(core::titleOf(name, m_title));
    m_ui->lblMessage->clear();
    m_list->showUnsearched({.query = listQuery(), .unsorted = refreshQuery()});
    m_ui->txtSearch->setFocus();
}

void frmCopiedCustomers::showAnswer(bool whole)
{
    if (whole && !std::exchange(m_columnsLaidOut, true)) {
        showUsualCustomerColumns(*m_ui->DataGrid1);
        m_ui->DataGrid1->remember(m_context.services.windows, u"frmCopiedCustomers.DataGrid1"_s);
    }
    if (!whole) {
        m_ui->lblMessage->setText(
            m_context.texts.Lms(store::troubleKey(m_rows.trouble(), u"CustomerListUnavailable"_s)));
    }
}

// One whose number the desk still has may be just the one who is meant: he would be there twice.
void frmCopiedCustomers::bringBack(int row)
{
    const qint32 sn = m_rows.field(row, u"SN"_s).toInt();
    const QString name = m_rows.field(row, u"CustomerName"_s).toString();
    if (sn == 0) {
        return;
    }
    const bool isThere = m_editing.ShowCustomerBySN(sn).customer.has_value();
    const QString question = core::questionAbout(name, m_context.texts.Lms(u"AskBringBackTwice"_s));
    if (isThere && !m_context.prompts.askOkCancel(question)) {
        return;
    }
    const SavedCustomer saved = m_editing.bringBack(m_file, sn);
    const QString text = saved.written ? m_context.texts.Lms(u"CustomerBroughtBack"_s) : saved.message;
    m_ui->lblMessage->setText(core::titleOf(core::shownText(name), text));
}

} // namespace customers
