#include "customers/forms/CustomerWindows.h"

#include "customers/forms/frmAddDataToExcel_Tarn20050921.h"

#include <QTimer>

using namespace Qt::StringLiterals;

namespace customers {

namespace {

constexpr std::chrono::milliseconds newWindowSettles{200};

} // namespace

CustomerWindows::CustomerWindows(const Context &context)
    : m_context(context), m_list([this] { return new FrmCustomer(m_context.forms, *this); }),
      m_editor([this] {
          return new FrmEditCustomer({m_context.forms, m_context.checks, m_context.effects});
      }),
      m_export([this] { return new frmAddDataToExcel_Tarn20050921(m_context.forms); }),
      m_copied([this] { return new frmCopiedCustomers(m_context.forms, m_context.effects); })
{}

CustomerWindows::~CustomerWindows() = default;

// The number waits in the list for its customer. A customer who is opened for another reason must not get it.
void CustomerWindows::dropWaitingNumber()
{
    if (FrmCustomer *list = m_list.ifOpen()) {
        list->dropNumber();
    }
}

void CustomerWindows::showList()
{
    dropWaitingNumber();
    m_list.get().bringToFront();
}

void CustomerWindows::showList(const QString &query, QWidget *editor)
{
    dropWaitingNumber();
    FrmCustomer &form = m_list.get();
    form.showBehind(editor);
    form.showQuery(query);
}

void CustomerWindows::addCustomer(const QString &number, const QString &keyWord, const QString &name)
{
    dropWaitingNumber();
    bool found = false;
    if (!keyWord.isEmpty()) {
        FrmCustomer &form = m_list.get();
        found = form.searchFor(keyWord, number);
        if (!found) {
            form.bringToFront();
        }
    }
    m_editor.get().addCustomer(number, name);
    if (FrmCustomer *list = m_list.ifOpen(); found && list != nullptr) {
        if (!list->hasNumber()) { // another customer was saved first, and the list shows all
            list->searchFor(keyWord, number);
        }
        showFound(*list);
    }
}

// The empty record would cover what was found: a window manager puts a new window in front a moment after it
// is shown, so the list comes to the front after that.
void CustomerWindows::showFound(FrmCustomer &form)
{
    const bool wasOpen = form.isVisible();
    form.bringToFront();
    if (wasOpen) {
        QTimer::singleShot(newWindowSettles, &form, [&form] {
            if (form.hasNumber()) {
                form.bringToFront();
            }
        });
    }
}

bool CustomerWindows::editCustomer(qint32 sn, const QString &number)
{
    FrmEditCustomer &form = m_editor.get();
    const bool shown = form.ShowCustomerBySN(sn);
    if (shown && !number.isEmpty()) {
        form.appendNumber(number);
    }
    closeUnshown(form);
    return shown;
}

void CustomerWindows::ShowCustomerByName(const QString &name)
{
    FrmEditCustomer &form = m_editor.get();
    form.ShowCustomerByName(name);
    closeUnshown(form);
}

// Without a customer, the editor was never shown, but it would still count as an open form.
void CustomerWindows::closeUnshown(FrmEditCustomer &form)
{
    if (!form.isVisible()) {
        delete &form;
    }
}

void CustomerWindows::refreshCustomerList()
{
    if (FrmCustomer *list = m_list.ifOpen()) {
        list->refreshCustomerList();
    }
}

void CustomerWindows::showCopied(const QString &file, const QString &name)
{
    frmCopiedCustomers &form = m_copied.get();
    form.showCopy(file, name);
    form.bringToFront();
}

void CustomerWindows::customerDeleted(qint32 sn)
{
    m_context.effects.customerDeleted(sn);
}

void CustomerWindows::customerRestored(qint32 sn)
{
    m_context.forms.log.trap("Command5_Click"_L1, [&] {
        store::Database database(m_context.forms.paths.CustomerFile, store::Database::Mode::ReadOnly);
        store::Recordset customer = database.OpenRecordset(u"customer"_s);
        customer.setIndex(u"SN"_s);
        if (customer.Seek(sn)) {
            m_context.effects.customerSaved(sn, {}, lookup::factsOf(customer));
        }
    });
}

void CustomerWindows::exportCustomers()
{
    m_export.get().bringToFront();
}

} // namespace customers
