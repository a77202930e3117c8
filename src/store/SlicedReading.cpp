#include "store/SlicedReading.h"

using namespace Qt::StringLiterals;

namespace store {

namespace {

constexpr qint64 firstPage = 200;  // masters, about what a first page needs
constexpr size_t mostHits = 2'000; // more of them are near each other, and soon found in order

// The columns as one side of a comparison, and as many marks for the other.
QString tuple(const QStringList &parts)
{
    return parts.size() == 1 ? parts.first() : u'(' + parts.join(u',') + u')';
}

QString marks(const QStringList &parts)
{
    return tuple(QStringList(parts.size(), u"?"_s));
}

} // namespace

SlicedReading::SlicedReading(std::shared_ptr<Engine> engine, const Select &select)
    : m_engine(std::move(engine)), m_select(select), m_columns(u"rowid"_s), m_tables(select.tables)
{
    const QString table = bracketed(select.table()) + u'.';
    const QString rowid = table + u"rowid"_s;
    if (select.order.empty()) {
        m_byIndex = select.isWholeTable() ? indexOfKeys() : QString();
        m_runs = {{u"true"_s, {}, {rowid}}};
    } else if (!indexBy(select.orderColumn).isEmpty()) { // or there is nothing to go through it by
        const QString column = table + bracketed(select.orderColumn);
        m_runs = {{column + u" is not null"_s, {}, {column}, true}, {column + u" is null"_s, {}, {rowid}}};
    }
}

SlicedReading::SlicedReading(std::shared_ptr<Engine> engine, const Select &select, const JoinTables &tables,
                             Columns columns)
    : m_engine(std::move(engine)), m_select(select),
      m_columns(select.columns), m_tables{tables.masters, tables.details}, m_pace(firstPage)
{
    if (columns == Columns::Keys) {
        m_columns = bracketed(tables.details) + u".rowid,"_s + bracketed(tables.masters) + u".rowid"_s;
    }
    const QString group = bracketed(tables.masters) + u'.' + bracketed(tables.group);
    const QString key = bracketed(tables.masters) + u'.' + bracketed(tables.key);
    if (tables.onlyGroup) {
        m_runs = {{group + u"=?"_s, {*tables.onlyGroup}, {key}}};
    } else {
        m_runs = {{group + u" is not null"_s, {}, {group, key}}, {group + u" is null"_s, {}, {key}}};
        lookThroughAlone(tables.masters, tables.details);
        lookThroughAlone(tables.details, tables.masters);
    }
}

// The name of an index whose order is that of the column; none is that of a column without a name.
QString SlicedReading::indexBy(const QString &column) const
{
    QString found;
    for (const Index &index : column.isEmpty() ? QList<Index>() : m_engine->indexesOf(m_select.table())) {
        const bool fits = index.ofAllRows && index.columns.value(0).compare(column, Qt::CaseInsensitive) == 0;
        found = fits ? index.name : found;
    }
    return found;
}

// An index holds the keys of all rows, too, in a tenth of the pages; in their order, where the key itself is
// indexed.
QString SlicedReading::indexOfKeys() const
{
    const QString index = indexBy(m_engine->autoNumberOf(m_select.table()));
    return index.isEmpty() ? QString() : u" indexed by "_s + bracketed(index);
}

std::optional<qint64> SlicedReading::total() const
{
    std::optional<qint64> rows;
    if (m_tables.size() == 1 && m_select.conditions.empty()) {
        m_engine->forEach(u"select count(*) from "_s + bracketed(m_select.table()), {},
                          [&](const Row &row) { rows = row.key(0); });
    }
    return rows;
}

// Few hits far apart are found soonest by looking through one table alone.
void SlicedReading::lookThroughAlone(const QString &table, const QString &other)
{
    const auto columnsOf = [this](const QString &name) {
        return m_engine->prepare(u"select * from "_s + bracketed(name))->columnNames();
    };
    const QStringList columns = columnsOf(table);
    const QStringList others = columnsOf(other);
    SqlTokens conditions;
    for (const Select::Condition &condition : m_select.conditions) {
        if (isAbout(condition, table, columns, others)) {
            conditions += u"and"_s + condition.words;
        }
    }
    if (!conditions.empty()) {
        m_alone.push_back({table, conditions});
    }
}

bool SlicedReading::readOn(const Visit &visit)
{
    if (!m_alone.empty()) {
        collectHits();
        if (!m_alone.empty() && m_runs.empty()) {
            readHits(visit);
            m_alone.clear();
        }
    } else if (m_runs.empty()) {
        m_engine->forEach(m_select.inOrder(m_columns), {}, visit);
    } else {
        readRun(visit);
    }
    return !m_runs.empty();
}

void SlicedReading::collectHits()
{
    const Alone &alone = m_alone.back();
    const QString rows = u" from "_s + bracketed(alone.table) + u" where rowid>?"_s;
    std::optional<qint64> end;
    m_engine->forEach(u"select rowid"_s + rows + u" order by rowid limit 1 offset ?"_s,
                      {m_lastHit, m_pace.begin()}, [&](const Row &row) { end = row.key(0); });
    const qint64 last = end.value_or(std::numeric_limits<qint64>::max());
    m_engine->forEach(u"select rowid"_s + rows + u" and rowid<=?"_s + alone.conditions, {m_lastHit, last},
                      [&](const Row &row) { m_hits.push_back(row.key(0)); });
    m_pace.end();
    m_lastHit = last;
    if (m_hits.size() > mostHits) { // and may be few in the other table
        m_alone.pop_back();
        m_hits.clear();
        m_lastHit = std::numeric_limits<qint64>::min();
        m_pace = Pace(firstPage);
    } else if (!end) {
        m_runs.clear();
    }
}

void SlicedReading::readHits(const Visit &visit)
{
    QStringList keys;
    for (const qint64 key : m_hits) {
        keys.append(QString::number(key));
    }
    if (m_alone.back().table != m_tables.first()) {
        m_tables.swapItemsAt(0, 1);
    }
    m_engine->forEach(rows(bracketed(m_tables.first()) + u".rowid in ("_s + keys.join(u',') + u')'), {},
                      visit);
}

// By "cross join", the tables are gone through in the order in which they stand.
SqlTokens SlicedReading::rows(const QString &condition) const
{
    const SqlTokens words = u"select"_s + m_columns +
                            (u"from ["_s + m_tables.join(u"] cross join ["_s) + u']' + m_byIndex) +
                            m_select.where(condition);
    return m_tables.size() > 1 && !m_select.order.empty() ? words + u"order by"_s + m_select.order : words;
}

// The last row of the next slice; nothing when fewer are left than a slice takes.
std::optional<QVariantList> SlicedReading::endOfSlice(const Run &run, qint64 count) const
{
    const QString beyond = run.from.isEmpty() ? QString() : u" and "_s + tuple(run.by) + u'>' + marks(run.by);
    const QString by = run.by.join(u',');
    const std::unique_ptr<Statement> statement = m_engine->prepare(
        u"select "_s + by + u" from "_s + bracketed(m_tables.first()) + m_byIndex + u" where "_s +
        run.condition + beyond + u" order by "_s + by + u" limit 1 offset ?"_s);
    statement->bind(run.bound + run.from + QVariantList{count});
    return statement->step() ? std::optional(statement->row()) : std::nullopt;
}

// Where rows share a value, the slice ends before the value that it would cut, and that one's rows make a run
// of their own: the engine finds a row by a value and its key, but not all that lie beyond the two.
void SlicedReading::readRun(const Visit &visit)
{
    Run &run = m_runs.back();
    const std::optional<QVariantList> to = endOfSlice(run, m_pace.begin());
    const QString place = u" and "_s + tuple(run.by);
    const QString upTo = run.shared ? u"<"_s : u"<="_s;
    const QString condition = run.condition +
                              (run.from.isEmpty() ? QString() : place + u'>' + marks(run.by)) +
                              (to ? place + upTo + marks(run.by) : QString());
    const QString order = m_tables.size() > 1 ? QString() : u" order by "_s + run.by.join(u',') + u",rowid"_s;
    m_engine->forEach(rows(condition) + order, run.bound + run.from + to.value_or(QVariantList()), visit);
    if (!to) {
        return m_runs.pop_back();
    }
    m_pace.end();
    run.from = *to;
    if (run.shared) {
        m_runs.push_back({run.by.first() + u"=?"_s, *to, {bracketed(m_tables.first()) + u".rowid"_s}});
    }
}

} // namespace store
