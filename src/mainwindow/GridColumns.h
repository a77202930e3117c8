#pragma once

#include "core/Settings.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace mainwindow {

/// The seven names, in the order as delivered.
const QStringList &gridColumnNames();

/// The unit of the given widths.
inline constexpr int twipsPerInch = 1440;

/// One column of the caller-ID grid.
struct GridColumn
{
    QString name; ///< one of the seven given names, by which cells are found
    int width;    ///< twips
    bool visible;
};

/// The grid's columns in order, as the settings record lists them. A list that does not name each of the
/// seven columns once is not usable: the defaults are returned and `usable` is set to false. Unusable widths
/// are replaced one by one; with no column visible the default ones are.
QList<GridColumn> readGridColumns(const core::SettingsRecord &record, bool *usable = nullptr);

/// Stores order, widths and visibility in the record's three comma-separated fields; saves nothing.
void writeGridColumns(core::SettingsRecord &record, const QList<GridColumn> &columns);

} // namespace mainwindow
