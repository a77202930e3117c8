#include "core/RowKey.h"

#include "core/TextUtilities.h"

using namespace Qt::StringLiterals;

namespace core {

QString sourceOf(RowKey::Table table)
{
    return table == RowKey::Table::PhoneBook ? u"PHONEBOOK"_s : u"CUSTOMER"_s;
}

std::optional<RowKey> rowKeyOf(QStringView id)
{
    for (const RowKey::Table table : {RowKey::Table::PhoneBook, RowKey::Table::Customer}) {
        const QString source = sourceOf(table);
        if (id.startsWith(source) && id.size() > source.size()) {
            return RowKey{.table = table, .sn = leadingNumber(id.sliced(source.size()))};
        }
    }
    return {};
}

} // namespace core
