#include "mainwindow/GridColumns.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace mainwindow {

namespace {

constexpr int minWidth = 200;
constexpr int maxWidth = 9999; // seven of four digits fit the record's field

QStringList splitTrimmed(const QString &list)
{
    QStringList parts = list.split(u',');
    for (QString &part : parts) {
        part = part.trimmed();
    }
    return parts;
}

QList<GridColumn> defaults()
{
    core::SettingsRecord record;
    core::setGridDefaults(record);
    return readGridColumns(record);
}

bool namesEachOnce(const QStringList &names)
{
    const QStringList &known = gridColumnNames();
    return names.size() == known.size() &&
           QSet(names.begin(), names.end()) == QSet(known.begin(), known.end());
}

int usableWidth(const QString &text, const QString &name)
{
    bool isNumber = false;
    const int width = text.toInt(&isNumber);
    if (isNumber) {
        return std::clamp(width, minWidth, maxWidth);
    }
    const qsizetype place = gridColumnNames().indexOf(name);
    return place < 0 ? minWidth : defaults().at(place).width;
}

bool anyVisible(const QList<GridColumn> &columns)
{
    return std::any_of(columns.begin(), columns.end(),
                       [](const GridColumn &column) { return column.visible; });
}

} // namespace

const QStringList &gridColumnNames()
{
    static const QStringList names = {u"Channel"_s, u"CallerID"_s, u"SimpleDes"_s, u"IncomingTime"_s,
                                      u"SN"_s,      u"LineNo"_s,   u"ID"_s};
    return names;
}

QList<GridColumn> readGridColumns(const core::SettingsRecord &record, bool *usable)
{
    const QStringList names = splitTrimmed(record.gridColumnNames.text());
    const QStringList widths = splitTrimmed(record.gridColumnWidths.text());
    const QStringList flags = splitTrimmed(record.gridColumnVisibility.text());
    QList<GridColumn> columns;
    for (qsizetype at = 0; at < names.size(); ++at) {
        columns.append(
            {names.at(at), usableWidth(widths.value(at), names.at(at)), flags.value(at) == "1"_L1});
    }
    const bool good = namesEachOnce(names) && anyVisible(columns);
    if (usable != nullptr) {
        *usable = good;
    }
    return good ? columns : defaults();
}

void writeGridColumns(core::SettingsRecord &record, const QList<GridColumn> &columns)
{
    QStringList names;
    QStringList widths;
    QStringList flags;
    for (const GridColumn &column : columns) {
        names.append(column.name);
        widths.append(QString::number(std::clamp(column.width, minWidth, maxWidth)));
        flags.append(column.visible ? u"1"_s : QString());
    }
    record.gridColumnNames.setText(names.join(u','));
    record.gridColumnWidths.setText(widths.join(u','));
    record.gridColumnVisibility.setText(flags.join(u','));
}

} // namespace mainwindow
