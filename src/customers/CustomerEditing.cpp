#include "customers/CustomerEditing.h"

#include "customers/CustomerForwarding.h"
#include "store/Database.h"
#include "store/Upgrade.h"

using namespace Qt::StringLiterals;

namespace customers {

namespace {

store::Recordset openTable(store::Database &database, const QString &index)
{
    store::Recordset table = database.OpenRecordset(u"Customer"_s);
    table.setIndex(index);
    return table;
}

// As it has always been, the messenger's box shows the home phones and not its own column, and the next save
// writes them into that column.
FieldTexts shownOf(FieldTexts read)
{
    const auto at = [&read](QStringView column) -> QString & {
        return read.at(static_cast<size_t>(fieldOf(column)));
    };
    at(u"ContactPersonMessenger") = at(u"ContactPersonHomePhones");
    return read;
}

LoadedCustomer customerOf(const store::Recordset &row)
{
    LoadedCustomer customer;
    customer.record.SN = row.value(u"SN"_s).toInt();
    for (size_t place = 0; place < customer.read.size(); ++place) {
        const CustomerField &field = customerFields().at(place);
        customer.read.at(place) = shownValue(field, row.value(field.column));
    }
    customer.record.shown = shownOf(customer.read);
    return customer;
}

// A pop-up flag that cannot be read counts as unchanged, so that it is written anew.
QString textOnFile(const CustomerField &field, const QVariant &stored, const QString &read)
{
    bool isNumber = false;
    stored.toString().trimmed().toInt(&isNumber);
    return field.kind == FieldKind::PopUpFlag && !isNumber ? read : shownValue(field, stored);
}

QList<core::FieldEdit> editsOf(const LoadedCustomer &loaded, const CustomerRecord &typed,
                               const store::Recordset &row)
{
    QList<core::FieldEdit> edits;
    for (size_t place = 0; place < typed.shown.size(); ++place) {
        const CustomerField &field = customerFields().at(place);
        const QString column = field.column;
        const QString &read = loaded.read.at(place);
        const QString onFile = typed.SN ? textOnFile(field, row.value(column), read) : QString();
        edits.append({.column = column,
                      .read = storedValue(field, typed.SN ? read : QString()),
                      .shown = storedValue(field, loaded.record.shown.at(place)),
                      .wanted = storedValue(field, typed.shown.at(place)),
                      .onFile = storedValue(field, onFile)});
    }
    return edits;
}

// How the customer stands in the editor once the edits are written to his row.
LoadedCustomer afterSave(const QList<core::FieldEdit> &edits, const CustomerRecord &typed, qint32 sn,
                         const store::Recordset &row)
{
    LoadedCustomer customer{.record = {.SN = sn, .shown = typed.shown}};
    for (size_t place = 0; place < typed.shown.size(); ++place) {
        const CustomerField &field = customerFields().at(place);
        customer.read.at(place) = textOnFile(field, row.value(field.column), typed.shown.at(place));
        if (edits.at(static_cast<qsizetype>(place)).isTakenOver()) {
            customer.record.shown.at(place) = shownOf(customer.read).at(place);
        }
    }
    return customer;
}

} // namespace

FoundCustomer CustomerEditing::ShowCustomerBySN(qint32 sn) const
{
    return find("ShowCustomerBySN"_L1, u"SN"_s, sn);
}

FoundCustomer CustomerEditing::ShowCustomerByName(const QString &name) const
{
    return find("ShowCustomerByName"_L1, u"CustomerName"_s, name);
}

FoundCustomer CustomerEditing::find(QLatin1StringView procedure, const QString &index,
                                    const QVariant &key) const
{
    FoundCustomer found{.message = m_context.texts.Lms(u"CustomerNotShown"_s)};
    m_context.log.trap(procedure, [&] {
        store::Database database(m_context.paths.CustomerFile);
        store::Recordset customers = openTable(database, index);
        const bool isThere = customers.Seek(key);
        found = isThere ? FoundCustomer{.customer = customerOf(customers)}
                        : FoundCustomer{.message = m_context.texts.Lms(u"CustomerNotFound"_s)};
    });
    return found;
}

QString nameToFile(QString name)
{
    return name.replace(u'\'', QChar(0x2019));
}

LoadedCustomer CustomerEditing::newCustomer(const QString &number, const QString &name)
{
    LoadedCustomer customer;
    FieldTexts &shown = customer.record.shown;
    for (const QStringView flag : {u"IfVIP", u"ifinblacklist"}) {
        shown.at(static_cast<size_t>(fieldOf(flag))) = u"0"_s;
    }
    shown.at(static_cast<size_t>(fieldOf(u"T3"))) = u"1"_s;
    shown.at(static_cast<size_t>(fieldOf(u"WorkPhones"))) = number;
    shown.at(static_cast<size_t>(fieldOf(u"CustomerName"))) = nameToFile(name);
    return customer;
}

// The first match is the one with the smallest key. In the order of texts, all texts with the same capitals
// stand together, between the capitals and the capitals with one more character: the index finds them at
// once. Only joined letters, such as U+FB01, would be missed; a column that is written in capitals holds
// none.
bool CustomerEditing::IfRepeatCustomerField(const std::optional<qint32> &sn, const QString &column,
                                            const QString &value) const
{
    return m_context.log.trap("IfRepeatCustomerField"_L1, false, [&] {
        if (value.isEmpty()) {
            return false;
        }
        const QString name = customerFields().at(static_cast<size_t>(fieldOf(column))).column;
        const QString capitals = value.toUpper();
        std::optional<qint32> first;
        store::Database database(m_context.paths.CustomerFile, store::Database::Mode::ReadOnly);
        database.forEachBoundRow(
            u"select SN, %1 from customer where %1 collate JET >= ? and %1 collate JET < ?"_s.arg(name),
            {capitals, QString(capitals + QChar(1))}, [&](const store::Row &row) {
                if (row.text(1).toUpper() == capitals) {
                    first = std::min(row.integer(0), first.value_or(row.integer(0)));
                }
            });
        return first && first != sn;
    });
}

// Reads the row again under the same lock that it writes under, so that no other desk comes in between.
SavedCustomer CustomerEditing::SaveCustomer(const LoadedCustomer &loaded, const CustomerRecord &typed) const
{
    SavedCustomer saved;
    const bool succeeded = m_context.log.trapAs("SaveCustomer "_L1, [&] {
        store::Database database(m_context.paths.CustomerFile);
        database.transaction([&] {
            store::Recordset customers = openTable(database, u"SN"_s);
            saved.gone = typed.SN && !customers.Seek(*typed.SN);
            if (saved.gone) {
                return;
            }
            const QList<core::FieldEdit> edits = editsOf(loaded, typed, customers);
            saved.oldName = typed.SN ? customers.value(u"CustomerName"_s).toString() : QString();
            saved.disputed = core::disputed(edits);
            if (!saved.disputed.isEmpty()) {
                return;
            }
            typed.SN ? customers.Edit() : customers.AddNew();
            customers.setFields(edits);
            store::repairCustomer(customers);
            const qint32 sn = customers.value(u"SN"_s).toInt();
            customers.Update();
            saved.onFile = lookup::factsOf(customers);
            saved.customer = afterSave(edits, typed, sn, customers);
            saved.written = true;
        });
    });
    return succeeded ? saved
                     : refused({}, store::notWrittenText(m_context.texts, u"CustomerNotSaved"_s,
                                                         m_context.paths.CustomerFile));
}

SavedCustomer CustomerEditing::refused(const QString &column, const QString &message)
{
    SavedCustomer saved;
    saved.wrongField = column;
    saved.message = message;
    return saved;
}

// With a message where another customer has that ID.
SavedCustomer CustomerEditing::refuseRepeatedId(const std::optional<qint32> &sn, const QString &id) const
{
    return IfRepeatCustomerField(sn, u"CustomerID"_s, id)
               ? refused(u"CustomerID"_s, m_context.texts.Lms(u"CustomerID"_s) +
                                              m_context.values.WordSeparator +
                                              m_context.texts.Lms(u"CustomerIDexisted"_s))
               : SavedCustomer();
}

SavedCustomer CustomerEditing::save(const LoadedCustomer &loaded, const CustomerRecord &typed) const
{
    SavedCustomer saved = refuseRepeatedId(typed.SN, typed.text(u"CustomerID"));
    if (!saved.message.isEmpty()) {
        return saved;
    }
    if (typed.text(u"CustomerName").trimmed().isEmpty()) {
        return refused(u"CustomerName"_s, m_context.texts.Lms(u"PlsInputCustomerName"_s));
    }
    saved = SaveCustomer(loaded, typed);
    tellSaved(saved);
    return saved;
}

void CustomerEditing::tellSaved(const SavedCustomer &saved) const
{
    if (saved.written) {
        const CustomerRecord &record = saved.customer.record;
        m_context.effects.refreshCustomerList();
        m_context.server.SendServer(u"REFRESHCUSTOMERLIST"_s);
        m_context.effects.SendTDRData(GetCustomerInfo(record));
        m_context.effects.customerSaved(*record.SN, saved.oldName, saved.onFile);
    }
}

SavedCustomer CustomerEditing::bringBack(const QString &file, qint32 sn) const
{
    SavedCustomer saved;
    const bool succeeded = m_context.log.trap("bringBack"_L1, [&] {
        store::Database copy(file, store::Database::Mode::ReadOnly);
        store::Recordset from = openTable(copy, u"SN"_s);
        saved = !from.Seek(sn) ? refused({}, m_context.texts.Lms(u"CustomerNotFound"_s))
                               : refuseRepeatedId({}, from.value(u"CustomerID"_s).toString());
        if (saved.message.isEmpty()) {
            saved = addCopied(from);
        }
    });
    if (!succeeded) {
        return refused(
            {}, store::notWrittenText(m_context.texts, u"CustomerNotSaved"_s, m_context.paths.CustomerFile));
    }
    tellSaved(saved);
    return saved;
}

SavedCustomer CustomerEditing::addCopied(store::Recordset &from) const
{
    SavedCustomer saved;
    store::Database database(m_context.paths.CustomerFile);
    database.transaction([&] {
        store::Recordset customers = openTable(database, u"SN"_s);
        const bool isFree = !customers.Seek(from.value(u"SN"_s));
        const QStringList columns = customers.fieldNames();
        customers.AddNew();
        for (const QString &column : from.fieldNames()) {
            const bool isNumber = column.compare("SN"_L1, Qt::CaseInsensitive) == 0;
            if (store::placeOfField(columns, column) >= 0 && (!isNumber || isFree)) {
                customers.setValue(column, from.value(column));
            }
        }
        store::repairCustomer(customers);
        customers.Update();
        saved.customer = customerOf(customers);
        saved.onFile = lookup::factsOf(customers);
        saved.written = true;
    });
    return saved;
}

void CustomerEditing::decide(const core::Saved &refused, core::Whose holds, LoadedCustomer &loaded,
                             CustomerRecord &typed)
{
    if (refused.gone && holds == core::Whose::Mine) {
        typed.SN.reset(); // he is filed anew
    }
    for (const core::FieldEdit &edit : refused.disputed) {
        const size_t place = static_cast<size_t>(fieldOf(edit.column));
        const QString onFile = shownValue(customerFields().at(place), edit.onFile);
        loaded.read.at(place) = onFile;
        loaded.record.shown.at(place) = onFile;
        if (holds == core::Whose::Theirs) {
            typed.shown.at(place) = onFile;
        }
    }
}

} // namespace customers
