#include "store/JoinReading.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

namespace {

constexpr qint64 firstSlice = 200; // about what a first page needs
constexpr qint64 smallestSlice = 50;
constexpr qint64 largestSlice = 20'000;
constexpr size_t mostHits = 2'000; // more of them are near each other, and soon found in order

} // namespace

JoinReading::JoinReading(Database &database, const JoinSelect &select, Columns columns,
                         const std::optional<QString> &group)
    : m_database(database), m_select(select), m_group(group), m_slice(firstSlice)
{
    m_columns = columns == Columns::Given
                    ? select.columns
                    : u'[' + select.tables.details + u"].rowid,["_s + select.tables.masters + u"].rowid"_s;
    if (!group) {
        lookThrough(select.tables.masters);
        lookThrough(select.tables.details);
    }
}

void JoinReading::lookThrough(const QString &table)
{
    QString answered;
    for (const QString &condition : m_select.conditions) {
        try {
            m_database.OpenRecordset(u"select rowid as r from ["_s + table + u"] where ("_s + condition +
                                     u") limit 0"_s);
            answered += u" and ("_s + condition + u')';
        } catch (const core::Error &) {
            continue; // it names a column of the other table
        }
    }
    if (!answered.isEmpty()) {
        m_alone.push_back({table, answered});
        m_step = Step::Hits;
    }
}

bool JoinReading::readOn(const Visit &visit)
{
    QElapsedTimer timer;
    timer.start();
    if (m_step == Step::Hits) {
        collectHits();
        if (m_step == Step::Ended) {
            readHits(visit);
        }
    } else if (m_step == Step::Rows) {
        if (m_from.isEmpty() && !m_group) {
            readRowsWithoutGroup(visit);
        }
        readRows(visit);
    }
    fitSlice(timer);
    return m_step != Step::Ended;
}

/// A slice is to last about eight milliseconds on any desk.
void JoinReading::fitSlice(const QElapsedTimer &timer)
{
    constexpr qint64 aim = 8;
    if (timer.elapsed() < aim / 2) {
        m_slice = std::min(m_slice * 2, largestSlice);
    } else if (timer.elapsed() > aim) {
        m_slice = std::max(m_slice / 2, smallestSlice);
    }
}

void JoinReading::collectHits()
{
    const Alone &alone = m_alone.back();
    const QString rows = u" from ["_s + alone.table + u"] where rowid>?"_s;
    std::optional<qint64> end;
    m_database.forEachBoundRow(u"select rowid as r"_s + rows + u" order by rowid limit 1 offset ?"_s,
                               {m_lastRow, m_slice}, [&](const Row &row) { end = row.key(0); });
    const qint64 last = end.value_or(std::numeric_limits<qint64>::max());
    m_database.forEachBoundRow(u"select rowid as r"_s + rows + u" and rowid<=?"_s + alone.conditions,
                               {m_lastRow, last}, [&](const Row &row) { m_hits.push_back(row.key(0)); });
    m_lastRow = last;
    if (m_hits.size() > mostHits || !end) {
        endCollecting(m_hits.size() <= mostHits);
    }
}

/// All hits of this table are known, or they are too many and may be few in the other.
void JoinReading::endCollecting(bool all)
{
    if (all) {
        m_step = Step::Ended;
        return;
    }
    m_alone.pop_back();
    m_hits.clear();
    m_lastRow = std::numeric_limits<qint64>::min();
    m_slice = firstSlice;
    m_step = m_alone.empty() ? Step::Rows : Step::Hits;
}

void JoinReading::readHits(const Visit &visit)
{
    QStringList keys;
    for (const qint64 key : m_hits) {
        keys.append(QString::number(key));
    }
    const auto &[details, masters, group, key] = m_select.tables;
    const QString &table = m_alone.back().table;
    const QString condition = u" and ["_s + table + u"].rowid in ("_s + keys.join(u',') + u')';
    m_database.forEachBoundRow(
        m_select.over(m_columns, table, table == details ? masters : details, condition), {}, visit);
}

/// Nothing compares with Null, so these masters are in no slice.
void JoinReading::readRowsWithoutGroup(const Visit &visit)
{
    const auto &[details, masters, group, key] = m_select.tables;
    m_database.forEachBoundRow(
        m_select.over(m_columns, masters, details, u" and ["_s + masters + u"].["_s + group + u"] is null"_s),
        {}, visit);
}

/// What the masters are gone through by, as the left side of a comparison.
QString JoinReading::beyond() const
{
    const QString master = u'[' + m_select.tables.masters + u"].["_s;
    const QString key = master + m_select.tables.key + u']';
    return m_group ? key : u'(' + master + m_select.tables.group + u"],"_s + key + u')';
}

QString JoinReading::boundSelect() const
{
    const auto &[details, masters, group, key] = m_select.tables;
    const QString columns = m_group ? u'[' + key + u']' : u'[' + group + u"],["_s + key + u']';
    return u"select "_s + columns + u" from ["_s + masters + u"] where ["_s + key + u"] is not null and ["_s +
           group + (m_group ? u"]=?"_s : u"] is not null"_s) +
           (m_from.isEmpty() ? QString() : u" and "_s + beyond() + (m_group ? u">?"_s : u">(?,?)"_s)) +
           u" order by "_s + columns + u" limit 1 offset ?"_s;
}

/// The last master of the next slice; nothing when fewer are left than a slice takes.
std::optional<QVariantList> JoinReading::nextBound()
{
    std::optional<QVariantList> bound;
    const QVariantList values =
        (m_group ? QVariantList{*m_group} : QVariantList()) + m_from + QVariantList{m_slice};
    m_database.forEachBoundRow(boundSelect(), values, [&](const Row &row) {
        bound = m_group ? QVariantList{row.text(0)} : QVariantList{row.text(0), row.text(1)};
    });
    return bound;
}

void JoinReading::readRows(const Visit &visit)
{
    const std::optional<QVariantList> to = nextBound();
    const QString values = m_group ? u"?"_s : u"(?,?)"_s;
    QString condition =
        m_group ? u" and ["_s + m_select.tables.masters + u"].["_s + m_select.tables.group + u"]=?"_s
                : QString();
    condition += m_from.isEmpty() ? QString() : u" and "_s + beyond() + u'>' + values;
    condition += to ? u" and "_s + beyond() + u"<="_s + values : QString();
    m_database.forEachBoundRow(
        m_select.over(m_columns, m_select.tables.masters, m_select.tables.details, condition),
        (m_group ? QVariantList{*m_group} : QVariantList()) + m_from + to.value_or(QVariantList()), visit);
    m_from = to.value_or(QVariantList());
    m_step = to ? Step::Rows : Step::Ended;
}

} // namespace store
