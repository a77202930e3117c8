#pragma once

#include <QString>

#include <memory>
#include <sqlite3.h>

namespace bench {

/// A phone book of `entries`, each with two numbers, in a new file.
void makePhoneBook(const QString &path, int entries);

/// A customer database of `customers` with 2.75 numbers each, in a new file; everybody pops up.
void makeCustomers(const QString &path, int customers);

/// Adds call notes to such a database: `calls` with two entries each. The first customer has every twentieth
/// call, the others share the rest.
void addCallNotes(const QString &path, int calls);

/// The mobile number of the customer with that SN, digits only.
QString mobileNumber(int sn);

using Connection = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

/// A database as the engine's own interface opens it.
Connection openPlain(const QString &path);

} // namespace bench
