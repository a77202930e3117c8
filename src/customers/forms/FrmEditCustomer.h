#pragma once

#include "appearance/ComboLists.h"
#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "customers/CustomerEditing.h"
#include "customers/forms/CustomerControlSet.h"
#include "lookup/forms/OwnerLine.h"

#include <functional>
#include <memory>

class QLineEdit;

namespace Ui {
class FrmEditCustomer;
}

namespace customers {

/// The editor of one customer. Deletes itself when closed.
class FrmEditCustomer : public appearance::Form
{
    Q_OBJECT

public:
    /// All of it must outlive the form.
    struct Context
    {
        appearance::FormContext forms;
        const lookup::ExistenceChecks &checks;
        CustomerEffects &effects;
    };

    explicit FrmEditCustomer(const Context &context);
    ~FrmEditCustomer() override;

    /// Shows the form empty but for number and name, to add a customer. Here and below, typed
    /// text that was not saved is asked about first, and the form stays as it is where the operator cancels.
    void addCustomer(const QString &number, const QString &name = {});
    /// Shows the form with the customer of that key. False where the operator cancelled and,
    /// after telling it, where there is no such row or it cannot be read; a form that was not open then stays
    /// so.
    bool ShowCustomerBySN(qint32 sn);
    /// The same for the first customer of that name.
    bool ShowCustomerByName(const QString &name);
    /// Adds "," and the number to the phone numbers, and says that it is not saved yet.
    void appendNumber(const QString &number);

protected:
    bool mayClose() override { return mayDropContents(); }
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    CustomerRecord shownCustomer() const { return {m_loaded.record.SN, m_controls.texts()}; }
    bool hasUnsavedChanges() const { return shownCustomer() != m_loaded.record; }
    void begin(const LoadedCustomer &customer);
    void follow(const LoadedCustomer &customer);
    QWidget *controlOf(QStringView column) const;
    void turnTo(QStringView column);

    void setUpCombos();
    void setUpAddresses();
    void setUpButtons();
    void setUpChecks();
    void setUpMessage();
    static void mirror(QLineEdit &one, QLineEdit &other);
    void rememberText(QComboBox &combo);
    void settleFields();
    void replaceApostrophes();

    void startNewCustomer(const QString &number, const QString &name);
    bool edit(const std::function<FoundCustomer()> &find);
    bool mayDropContents();
    bool save();
    void viewNotes();
    void openHomepage();
    void writeEmail();

    Context m_context;
    std::unique_ptr<Ui::FrmEditCustomer> m_ui;
    appearance::ComboLists m_lists;
    CustomerControlSet m_controls;
    CustomerEditing m_editing;
    LoadedCustomer m_loaded; ///< without an SN while he is new
    std::optional<lookup::OwnerLine> m_ownerLine;
};

} // namespace customers
