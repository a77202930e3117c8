#include "imports/ListTarget.h"

#include "customers/CustomerEditing.h"
#include "lookup/CustomerFacts.h"
#include "phonebook/PhoneBookEntry.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

constexpr qsizetype usualWidth = 255;

bool isMemo(QLatin1StringView column)
{
    return QList{"note"_L1, "contactPersonNote"_L1, "othercontactPersonList"_L1, "ShipmentRequirement"_L1}
        .contains(column);
}

FieldShape shapeOf(const customers::CustomerField &field)
{
    using customers::FieldKind;
    if (field.kind == FieldKind::FlagLetter || field.kind == FieldKind::FlagNumber ||
        field.kind == FieldKind::PopUpFlag) {
        return FieldShape::Flag;
    }
    if (lookup::customerNumberColumns().contains(field.column) || field.column == "T2"_L1) {
        return FieldShape::Numbers;
    }
    if (isMemo(field.column)) {
        return FieldShape::Lines;
    }
    const bool isName = QList{"CustomerName"_L1, "ContactPersonName"_L1, "T1"_L1}.contains(field.column);
    return isName ? FieldShape::Name : FieldShape::Line;
}

// Three columns have no caption among the fields; they have those of the list.
QString captionOf(const customers::CustomerField &field)
{
    static const QHash<QString, QString> others{
        {u"T1"_s, u"SecondContact"_s}, {u"T2"_s, u"SecondContactMobile"_s}, {u"T3"_s, u"PopTheCaller"_s}};
    return others.value(field.column, field.labelKey);
}

} // namespace

int ListTarget::fieldOf(QStringView column) const
{
    for (int field = 0; field < fields.size(); ++field) {
        if (column.compare(fields.at(field).column, Qt::CaseInsensitive) == 0) {
            return field;
        }
    }
    return -1;
}

QList<int> ListTarget::fieldsOf(RowKey key) const
{
    switch (key) {
    case RowKey::Number:
        return numbers;
    case RowKey::Id:
        return id >= 0 ? QList{id} : QList<int>();
    case RowKey::Name:
        return {names.first()};
    case RowKey::Nothing:
        break;
    }
    return {};
}

ListTarget customersOf(const core::Paths &paths)
{
    ListTarget target{.file = paths.CustomerFile, .table = u"customer"_s, .namesNotes = true};
    const customers::CustomerRecord blank = customers::CustomerEditing::newCustomer({}, {}).record;
    for (const customers::CustomerField &field : customers::customerFields()) {
        const bool isName = field.kind == customers::FieldKind::Name;
        const auto stored = [&field, isName](const QString &text) {
            return customers::storedValue(field, isName ? customers::nameToFile(text) : text);
        };
        const FieldShape shape = shapeOf(field);
        target.fields.append({.column = field.column,
                              .captionKey = captionOf(field),
                              .shape = shape,
                              .width = shape == FieldShape::Lines ? 0 : usualWidth,
                              .stored = stored});
        target.defaults.append(stored(blank.text(QString(field.column))));
    }
    target.names = {target.fieldOf(u"CustomerName"), target.fieldOf(u"ContactPersonName")};
    for (const QString &column : lookup::customerNumberColumns()) {
        target.numbers.append(target.fieldOf(column));
    }
    target.id = target.fieldOf(u"CustomerID");
    return target;
}

ListTarget phoneBookOf(const core::Paths &paths)
{
    const auto asText = [](const QString &text) { return QVariant(text); };
    const auto asMark = [](const QString &text) {
        return QVariant(phonebook::markLetter(text == "1"_L1 ? Qt::Checked : Qt::Unchecked));
    };
    ListTarget target{.file = paths.PhoneBookFile, .table = u"phonebook"_s, .needsNumber = true};
    target.fields = {
        {u"Telno"_s, u"Telno"_s, FieldShape::Numbers, usualWidth, asText},
        {u"simpledes"_s, u"SimpleDes"_s, FieldShape::Name, usualWidth, asText},
        {u"detaildes"_s, u"DetailDes"_s, FieldShape::Lines, usualWidth, asText},
        {u"IfVIP"_s, u"IfVip"_s, FieldShape::Flag, usualWidth, asMark},
        {u"ifinblacklist"_s, u"IfInBlackList"_s, FieldShape::Flag, usualWidth, asMark},
    };
    target.defaults = {u""_s, u""_s, u""_s, asMark({}), asMark({})};
    target.names = {1};
    target.numbers = {0};
    return target;
}

} // namespace imports
