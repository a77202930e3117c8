#pragma once

#include "imports/XmlPart.h"

#include <QHash>
#include <QList>
#include <QString>

namespace imports {

/// What a workbook shows of the numbers in its cells: dates as such, and numbers with the zeros in front that
/// their format asks for.
class NumberFormats
{
public:
    /// Reads the part with the styles.
    void read(XmlPart &styles);
    void setDatesSince1904() { m_since1904 = true; }
    /// Dates as YYYY-MM-DD, with the time where there is one.
    QString shown(const QString &number, int style) const;

private:
    QString date(double days) const;

    QHash<int, QString> m_codes; ///< the workbook's own, by their number
    QList<int> m_formatOfStyle;
    bool m_since1904 = false;
};

/// The column of a reference such as "AB12", from 0; -1 for none.
int columnOf(QStringView reference);

} // namespace imports
