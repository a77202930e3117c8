#pragma once

#include "appearance/OneWindow.h"
#include "customers/forms/FrmCustomer.h"
#include "customers/forms/FrmEditCustomer.h"
#include "customers/forms/frmCopiedCustomers.h"

namespace customers {

class frmAddDataToExcel_Tarn20050921;

/// The windows of the customer database, one of each.
class CustomerWindows : private CustomerListCommands
{
public:
    /// All of it must outlive the windows.
    struct Context
    {
        const appearance::FormContext &forms;
        const lookup::ExistenceChecks &checks;
        CustomerEffects &effects;
    };

    explicit CustomerWindows(const Context &context);
    ~CustomerWindows() override;

    void showList();
    /// Opens the list on the rows of a query in the given words, behind the editor where there is one.
    void showList(const QString &query, QWidget *editor);
    /// Opens the editor for a new customer with that number; with a key word, the list first on what it
    /// finds.
    void addCustomer(const QString &number, const QString &keyWord, const QString &name = {});
    bool editCustomer(qint32 sn) { return editCustomer(sn, {}); }
    void ShowCustomerByName(const QString &name);
    /// Opens the list of the customers in a copy of the desk.
    void showCopied(const QString &file, const QString &name);
    /// Part of what a saved customer causes; nothing while the list is closed.
    void refreshCustomerList();

private:
    void addCustomer() override { addCustomer({}, {}); }
    bool editCustomer(qint32 sn, const QString &number) override;
    void customerDeleted(qint32 sn) override;
    void customerRestored(qint32 sn) override;
    void exportCustomers() override;
    void dropWaitingNumber();
    static void showFound(FrmCustomer &form);
    static void closeUnshown(FrmEditCustomer &form);

    Context m_context;
    appearance::OneWindow<FrmCustomer> m_list;
    appearance::OneWindow<FrmEditCustomer> m_editor;
    appearance::OneWindow<frmAddDataToExcel_Tarn20050921> m_export;
    appearance::OneWindow<frmCopiedCustomers> m_copied;
};

} // namespace customers
