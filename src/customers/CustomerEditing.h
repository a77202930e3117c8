#pragma once

#include "core/Paths.h"
#include "core/ProcessValues.h"
#include "core/Prompts.h"
#include "core/RunLog.h"
#include "core/Server.h"
#include "core/TextLookup.h"
#include "customers/CustomerEffects.h"
#include "customers/CustomerFields.h"

#include <QString>
#include <QVariant>

namespace customers {

/// The controls of the editor, as far as loading and saving need them.
class CustomerControls
{
public:
    virtual ~CustomerControls() = default;
    virtual CustomerRecord shownCustomer() const = 0;
    virtual void showCustomer(const CustomerRecord &customer) = 0;
    virtual void showSN(qint32 sn) = 0;
    /// Turns to the control of a column, which has to be filled in anew.
    virtual void turnTo(QStringView column) = 0;
};

/// Moves one customer between the table `customer` and the editor's controls.
class CustomerEditing
{
public:
    struct Context
    {
        const core::Paths &paths;
        const core::ProcessValues &values;
        core::RunLog &log;
        const core::TextLookup &texts;
        core::Prompts &prompts;
        core::Server &server;
        CustomerEffects &effects;
    };
    /// All of it, and the controls, must outlive the object.
    CustomerEditing(const Context &context, CustomerControls &controls)
        : m_context(context), m_controls(controls)
    {}

    /// Fill the controls from the row of that key, or from the first of that name. False, with the controls
    /// as they were and the operator told, where there is none or it cannot be read.
    bool ShowCustomerBySN(qint32 sn);
    bool ShowCustomerByName(const QString &name);
    /// Fills the controls for a customer who is not on file, but for that number; his calls will pop up.
    void showNewCustomer(const QString &number);

    /// Writes the controls into the customer's row, or a new one where there is none. False where the name is
    /// missing, which the operator was told, and where the database failed.
    bool SaveCustomer();
    /// Whether the first customer in the table with that value in a column, compared in capitals, is another
    /// than the given one. Duplicates behind that first one go unnoticed; an empty value is none.
    bool IfRepeatCustomerField(qint32 sn, const QString &column, const QString &value);

    /// All that the save button does; false, with the operator told, where nothing was saved.
    bool save();
    /// The controls differ from what was loaded or saved last.
    bool hasUnsavedChanges() const { return m_controls.shownCustomer() != m_asLoaded; }

private:
    bool show(QLatin1StringView procedure, const QString &index, const QVariant &key);
    void write(const CustomerRecord &customer);
    void tell(const QString &textKey);

    Context m_context;
    CustomerControls &m_controls;
    CustomerRecord m_asLoaded;
    QString m_nameOnFile;
};

} // namespace customers
