#pragma once

#include "core/Paths.h"

#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <sqlite3.h>

namespace bench {

/// The files of a desk, and an empty data folder that goes with the object. A desk with customers is made
/// once, into the build folder, and kept there with what was saved in it; the delivered files are those of
/// the last build.
class Desk
{
public:
    /// Customers of five scripts with 2.75 numbers each, who all pop up, a tenth as many entries in the phone
    /// book, and `calls` with two call notes each. None at all without customers.
    explicit Desk(int customers);

    static constexpr int calls = 100'000;
    /// The one who has a twentieth of all calls.
    static QString busyCustomer();
    /// The mobile number of the customer with that SN, digits only.
    static QString mobileNumber(int sn);

    int customers() const { return m_customers; }
    const core::Paths &paths() const { return m_paths; }

private:
    int m_customers;
    QTemporaryDir m_data;
    core::Paths m_paths;
};

using Connection = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

/// A database as the engine's own interface opens it: texts are compared byte by byte.
Connection openPlain(const QString &path);
/// Runs a statement, visits its rows and returns how many there were. Throws std::runtime_error.
int forEachRow(sqlite3 *engine, const QString &statement, const std::function<void(sqlite3_stmt *)> &visit);
/// The same, reading every column as text.
int readThrough(sqlite3 *engine, const QString &statement);
double mbOfFile(const QString &path);
QString textOf(sqlite3_stmt *row, int column);

} // namespace bench
