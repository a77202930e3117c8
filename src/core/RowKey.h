#pragma once

#include <QString>

#include <optional>

namespace core {

/// The row of a caller who is on file.
struct RowKey
{
    enum class Table : quint8 { PhoneBook, Customer };

    Table table = Table::Customer;
    qint32 sn = 0;

    bool operator==(const RowKey &) const = default;
};

/// How call records and the caller-ID grid name the table: "PHONEBOOK" or "CUSTOMER".
QString sourceOf(RowKey::Table table);

/// The row that they name by both, "CUSTOMER12"; none where either is missing.
std::optional<RowKey> rowKeyOf(QStringView id);

inline bool isCustomer(const std::optional<RowKey> &caller)
{
    return caller && caller->table == RowKey::Table::Customer;
}

} // namespace core
