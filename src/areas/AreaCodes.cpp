#include "areas/AreaCodes.h"

#include "store/Database.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace areas {

QString MakeAreaPath(core::RunLog &log, const QString &folder)
{
    return log.trap("MakeAreaPath"_L1, QString(), [&] {
        const QString path = QDir::toNativeSeparators(folder + u"/AreaCode.mdb"_s);
        return QFileInfo(path).isFile() ? path : QString();
    });
}

void AreaCodes::load(const QString &areaPath)
{
    if (areaPath.isEmpty()) {
        return;
    }
    m_log.trap("AreaCodes::load"_L1, [&] {
        std::vector<AreaCodeRecord> list;
        store::Database database(areaPath);
        database.forEachRow(u"placename"_s, {u"AreaCode"_s, u"Area"_s, u"PlaceName"_s},
                            [&](const store::Row &row) {
                                list.push_back({row.text(0), row.text(1), row.text(2), true});
                            });
        std::ranges::stable_sort(list, {}, &AreaCodeRecord::AreaCode);
        m_list = std::move(list);
    });
}

AreaCodeRecord AreaCodes::SearchAreaCode(QStringView prefix) const
{
    return m_log.trap("SearchAreaCode"_L1, AreaCodeRecord(), [&] {
        const auto isBefore = [](const AreaCodeRecord &record, QStringView code) {
            return record.AreaCode < code;
        };
        const auto first = std::lower_bound(m_list.begin(), m_list.end(), prefix, isBefore);
        return first != m_list.end() && first->AreaCode == prefix ? *first : AreaCodeRecord();
    });
}

QString AreaCodes::GetArea(QStringView number) const
{
    constexpr qsizetype longestPrefix = 25;
    return m_log.trap("GetArea"_L1, QString(), [&] {
        for (qsizetype length = std::min(number.size(), longestPrefix); length > 0; --length) {
            const AreaCodeRecord record = SearchAreaCode(number.first(length));
            if (record.found) {
                return QString(record.Area + u'(' + record.PlaceName + u')');
            }
        }
        return QString();
    });
}

} // namespace areas
