#pragma once

#include "oldfiles/TableRows.h"

#include <QByteArray>
#include <QString>

namespace oldfiles {

/// A table of the user's by its name.
struct Table
{
    QString name;
    TableDefinition definition;
};

/// A Jet 3 or Jet 4 database, held in memory and never written to. Whatever the bytes are, reading ends soon
/// and throws core::Error rather than give a part of a table for the whole.
class OldDatabase
{
public:
    /// Throws core::Error for anything but a database that can be read.
    explicit OldDatabase(QByteArray file);
    /// Reads the file at once: another program may be writing to it.
    static OldDatabase fromFile(const QString &path);

    /// The user's tables, without the system's, in the order of the catalogue.
    const QList<Table> &tables() const { return m_tables; }

    /// See TableRows::forEach. Throws core::Error with the table's name.
    void forEachRow(const Table &table, const std::function<void(const QVariantList &)> &visit) const;

private:
    void readCatalogue();
    void addObject(const QString &name, int type, quint32 flags, quint32 id, QSet<quint32> &seen);

    QByteArray m_file;
    Pages m_pages;
    QList<Table> m_tables;
};

/// Whether the file begins as such a database does, of whatever version; false when it cannot be read.
bool isOldDatabase(const QString &path);

} // namespace oldfiles
