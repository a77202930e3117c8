#pragma once

#include "store/Wildcards.h"

#include <QString>
#include <QStringList>

namespace store {

/// A statement in the given words, in SQLite's words. Throws core::Error for an unclosed quote and for more
/// than one statement.
QString toSqlite(QStringView sql, Wildcards wildcards);

/// A value as it stands between single quotes.
QString quoted(const QString &value);

/// The statements of a schema text, cut at their semicolons.
QStringList statementsOf(QStringView schemaSql);

} // namespace store
