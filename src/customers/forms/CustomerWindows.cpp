#include "customers/forms/CustomerWindows.h"

#include "appearance/BringToFront.h"
#include "customers/forms/frmAddDataToExcel_Tarn20050921.h"

#include <QTimer>

namespace customers {

namespace {

constexpr std::chrono::milliseconds newWindowSettles{200};

// The form, made when it is not open.
template <typename Form, typename... Arguments>
Form &opened(QPointer<Form> &form, Arguments &&...arguments)
{
    if (Form *kept = form; kept != nullptr && !kept->isVisible()) {
        kept->deleteLater(); // it was closed
        form.clear();
    }
    if (!form) {
        form = new Form(std::forward<Arguments>(arguments)...);
    }
    return *form;
}

} // namespace

CustomerWindows::~CustomerWindows()
{
    delete m_export.data();
    delete m_editor.data();
    delete m_list.data();
}

FrmCustomer &CustomerWindows::list()
{
    return opened<FrmCustomer>(m_list, m_context.form, static_cast<CustomerListCommands &>(*this));
}

FrmEditCustomer &CustomerWindows::editor()
{
    return opened<FrmEditCustomer>(
        m_editor, FrmEditCustomer::Context{m_context.form, m_context.checks, m_context.effects});
}

// The number waits in the list for its customer. A customer who is opened for another reason must not get it.
void CustomerWindows::dropWaitingNumber()
{
    if (m_list) {
        m_list->dropNumber();
    }
}

void CustomerWindows::showList()
{
    dropWaitingNumber();
    appearance::bringToFront(list());
}

void CustomerWindows::showList(const QString &query, QWidget *editor)
{
    dropWaitingNumber();
    FrmCustomer &form = list();
    appearance::showBehind(form, editor);
    form.showQuery(query);
}

void CustomerWindows::addCustomer(const QString &number, const QString &keyWord, const QString &name)
{
    dropWaitingNumber();
    bool found = false;
    if (!keyWord.isEmpty()) {
        FrmCustomer &form = list();
        found = form.searchFor(keyWord, number);
        if (!found) {
            appearance::bringToFront(form);
        }
    }
    editor().addCustomer(number, name);
    if (found && m_list) {
        if (!m_list->hasNumber()) { // another customer was saved first, and the list shows all
            m_list->searchFor(keyWord, number);
        }
        showFound(*m_list);
    }
}

// The empty record would cover what was found: a window manager puts a new window in front a moment after it
// is shown, so the list comes to the front after that.
void CustomerWindows::showFound(FrmCustomer &form)
{
    const bool wasOpen = form.isVisible();
    appearance::bringToFront(form);
    if (wasOpen) {
        QTimer::singleShot(newWindowSettles, &form, [&form] {
            if (form.hasNumber()) {
                appearance::bringToFront(form);
            }
        });
    }
}

bool CustomerWindows::editCustomer(qint32 sn, const QString &number)
{
    FrmEditCustomer &form = editor();
    const bool shown = form.ShowCustomerBySN(sn);
    if (shown && !number.isEmpty()) {
        form.appendNumber(number);
    }
    closeUnshown(form);
    return shown;
}

void CustomerWindows::ShowCustomerByName(const QString &name)
{
    FrmEditCustomer &form = editor();
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
    if (FrmCustomer *form = m_list; form != nullptr && form->isVisible()) {
        form->refreshCustomerList();
    }
}

void CustomerWindows::customerDeleted(qint32 sn)
{
    m_context.effects.customerDeleted(sn);
}

void CustomerWindows::exportCustomers()
{
    appearance::bringToFront(opened(m_export, m_context.form));
}

} // namespace customers
