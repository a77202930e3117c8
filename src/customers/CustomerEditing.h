#pragma once

#include "core/Paths.h"
#include "core/ProcessValues.h"
#include "core/RecordSave.h"
#include "core/RunLog.h"
#include "core/Server.h"
#include "core/TextLookup.h"
#include "customers/CustomerEffects.h"
#include "customers/CustomerFields.h"

#include <QString>
#include <QVariant>

namespace store {
class Recordset;
}

namespace customers {

/// A customer as an editor begins with him; it travels with the editor until he is saved.
struct LoadedCustomer
{
    CustomerRecord record = {};
    FieldTexts read = {}; ///< what each column held, as its control would show it; empty for a new one

    /// The name that his call notes stand under; empty for a new one.
    const QString &nameOnFile() const { return read.at(static_cast<size_t>(fieldOf(u"CustomerName"))); }
};

/// One who was looked for, or why there is none.
struct FoundCustomer
{
    std::optional<LoadedCustomer> customer = {};
    QString message = {}; ///< for the operator
};

/// What became of a customer, and how he stands in the editor after that.
struct SavedCustomer : core::Saved
{
    LoadedCustomer customer = {};
    QString oldName = {}; ///< the name on file before; empty for one who was not on file
    lookup::CustomerFacts onFile = {};
};

/// A name as it may be filed: an apostrophe would break the statements that hold it between quotation marks.
QString nameToFile(QString name);

/// Moves one customer between the table `customer` and an editor.
class CustomerEditing
{
public:
    struct Context
    {
        const core::Paths &paths;
        const core::ProcessValues &values;
        core::RunLog &log;
        const core::TextLookup &texts;
        core::Server &server;
        CustomerEffects &effects;
    };
    /// All of it must outlive the object.
    explicit CustomerEditing(const Context &context) : m_context(context) {}

    /// The row of that key, or the first of that name.
    FoundCustomer ShowCustomerBySN(qint32 sn) const;
    FoundCustomer ShowCustomerByName(const QString &name) const;
    /// A customer who is not on file, but for that number and name; his calls will pop up.
    static LoadedCustomer newCustomer(const QString &number, const QString &name);

    /// Whether the first customer in the table with that value in a column, compared in capitals, is another
    /// than the given one. Duplicates behind that first one go unnoticed; an empty value is none.
    bool IfRepeatCustomerField(const std::optional<qint32> &sn, const QString &column,
                               const QString &value) const;

    /// All that the save button does. Of a row that is on file only those fields are written that were typed,
    /// unless somebody else has changed them too; what he has changed besides is taken over.
    SavedCustomer save(const LoadedCustomer &loaded, const CustomerRecord &typed) const;
    /// Files a customer of another database of customers, with all columns that the desk has, and under his
    /// own number where that is free.
    SavedCustomer bringBack(const QString &file, qint32 sn) const;
    /// What the operator decided of a save that could not be made, for the next one.
    static void decide(const core::Saved &refused, core::Whose holds, LoadedCustomer &loaded,
                       CustomerRecord &typed);

private:
    FoundCustomer find(QLatin1StringView procedure, const QString &index, const QVariant &key) const;
    SavedCustomer SaveCustomer(const LoadedCustomer &loaded, const CustomerRecord &typed) const;
    SavedCustomer addCopied(store::Recordset &from) const;
    SavedCustomer refuseRepeatedId(const std::optional<qint32> &sn, const QString &id) const;
    void tellSaved(const SavedCustomer &saved) const;
    static SavedCustomer refused(const QString &column, const QString &message);

    Context m_context;
};

} // namespace customers
