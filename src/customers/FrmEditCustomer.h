#pragma once

#include "appearance/FormContext.h"
#include "customers/CustomerEditing.h"
#include "customers/CustomerEffects.h"
#include "lookup/ExistenceChecks.h"

#include <QHash>
#include <QWidget>

#include <memory>

class QComboBox;
class QLineEdit;

namespace Ui {
class FrmEditCustomer;
}

namespace customers {

/// The editor of one customer. Deletes itself when closed.
class FrmEditCustomer : public QWidget, private CustomerControls
{
    Q_OBJECT

public:
    /// All of it must outlive the form.
    struct Context
    {
        appearance::FormContext form;
        const lookup::ExistenceChecks &checks;
        CustomerEffects &effects;
    };

    explicit FrmEditCustomer(const Context &context);
    ~FrmEditCustomer() override;

    /// Shows the form empty but for the number, to add a customer ("ADD" mode). Here and below, typed text that
    /// was not saved is asked about first, and the form is left as it was where the operator cancels.
    void addCustomer(const QString &number);
    /// Shows the form with the customer of that key ("EDIT" mode). False without such a row, and after a
    /// failure, which the operator was told.
    bool ShowCustomerBySN(qint32 sn);
    /// The same for the first customer of that name.
    bool ShowCustomerByName(const QString &name);
    /// Adds "," and the number to the phone numbers.
    void appendNumber(const QString &number);
};

} // namespace customers
