#pragma once

#include <QList>
#include <QString>

#include <array>

namespace customers {

/// The queries of the customer list.
QString listQuery();
QString refreshQuery();
QString searchQuery(QStringView typed);
/// The query of a click on a heading of the list, which sorts the rows of another query; empty for a heading
/// that does not sort.
QString sortQuery(int column, const QString &rows);

/// A column that can be exported, and the text key that titles it.
struct ExportField
{
    QLatin1StringView column;
    QLatin1StringView labelKey;
};
inline constexpr int exportFieldCount = 27;
const std::array<ExportField, exportFieldCount> &exportFields();
/// The chosen fields of all customers, each named by its key, behind the columns of `first`, each with a
/// comma. Without a field it is no query.
QString exportQuery(const QList<int> &chosen, const QString &first = {});

} // namespace customers
