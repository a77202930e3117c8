#pragma once

#include "core/RunLog.h"

#include <QString>

#include <vector>

namespace areas {

/// The place behind a dialling prefix; without `found` all texts are empty.
struct AreaCodeRecord
{
    QString AreaCode;
    QString Area;
    QString PlaceName;
    bool found = false;
};

/// The path of the area database "AreaCode.mdb" in `folder`; empty when no such file stands there, which
/// leaves the area lookup switched off.
QString MakeAreaPath(core::RunLog &log, const QString &folder);

/// The place of a calling number, by the longest known prefix. Answers with empty texts until a list is
/// loaded.
class AreaCodes
{
public:
    explicit AreaCodes(core::RunLog &log) : m_log(log) {}

    /// Loads the list from the table placename (AreaCode, Area, PlaceName) of the database at `areaPath`.
    /// Nothing happens for an empty path; a failure is logged and keeps the list as it was.
    void load(const QString &areaPath);

    /// The first record of the list with exactly this code.
    AreaCodeRecord SearchAreaCode(QStringView prefix) const;
    /// Such as "North(Harbour)"; only the first 25 characters of the number count.
    QString GetArea(QStringView number) const;

private:
    core::RunLog &m_log;
    std::vector<AreaCodeRecord> m_list; ///< sorted by code, equal codes in table order
};

} // namespace areas
