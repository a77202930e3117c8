#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "appearance/SearchedList.h"
#include "store/ResultModel.h"

#include <memory>

namespace Ui {
class FrmCustomer;
}

namespace customers {

/// What the customer list opens and causes; CustomerWindows implements it.
class CustomerListCommands
{
public:
    virtual ~CustomerListCommands() = default;
    virtual void addCustomer() = 0;
    /// Opens the editor on a customer, with `number` added to his phone numbers where it is not empty; false
    /// where the editor is not on him.
    virtual bool editCustomer(qint32 sn, const QString &number) = 0;
    virtual void customerDeleted(qint32 sn) = 0;
    /// He stands in the file again.
    virtual void customerRestored(qint32 sn) = 0;
    virtual void exportCustomers() = 0;
};

/// The list of customers. Deletes itself when closed.
class FrmCustomer : public appearance::Form
{
    Q_OBJECT

public:
    /// Both must outlive the form.
    FrmCustomer(const appearance::FormContext &context, CustomerListCommands &commands);
    ~FrmCustomer() override;

    /// Shows the rows of a query in the given words.
    void showQuery(const QString &query);
    /// Searches for the customer to whom a caller's number may belong; a row that is then opened gets it. The
    /// list says so as long as the number waits. False where nobody was found yet: while the search
    /// goes on, the list comes to the front with the first one.
    bool searchFor(const QString &keyWord, const QString &number);
    bool hasNumber() const;
    /// The caller's number goes another way.
    void dropNumber();
    /// Shows the list anew after a customer was saved, with the same one current: what is searched for, or
    /// else all customers.
    void refreshCustomerList();

private:
    void setUpGrid();
    void layOutColumns();
    void setUpCommands();
    void setUpList();
    void showAnswer(bool whole);
    void sort(int column);
    bool editRow(int row, const QString &number);
    void deleteSelected();

    void showMessage(const QString &key);
    void showSortArrow();

    appearance::FormContext m_context;
    CustomerListCommands &m_commands;
    std::unique_ptr<Ui::FrmCustomer> m_ui;
    store::ResultModel Ado1;
    std::optional<appearance::SearchedList> m_list;
    bool m_columnsLaidOut = false;
};

} // namespace customers
