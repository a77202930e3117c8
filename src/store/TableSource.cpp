#include "store/TableSource.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

TableSource::TableSource(std::shared_ptr<Engine> engine, Select select, QVariantList bound)
    : m_engine(std::move(engine)), m_select(std::move(select)), m_bound(std::move(bound)),
      m_rowByKey(m_engine->prepare(u"select"_s + m_select.columns + u"from"_s + bracketedTable() +
                                   u"where rowid = ?"_s)),
      m_names(m_rowByKey->columnNames())
{
    if (!m_select.isWholeTable()) {
        readKeys(); // a wrong condition is an error of opening, not of the first move
        m_position = 0;
    }
}

void TableSource::readKeys()
{
    if (m_keys) {
        return;
    }
    // All keys of a table stand in any index, which is a tenth of it, but in another order.
    const bool all = m_select.isWholeTable();
    std::vector<qint64> keys;
    m_engine->forEach(all ? u"select rowid from "_s + bracketedTable() : m_select.inOrder(u"rowid"_s),
                      m_bound, [&](const Row &row) { keys.push_back(row.key(0)); });
    if (all) {
        std::ranges::sort(keys);
    }
    m_keys = std::move(keys);
}

qint64 TableSource::count()
{
    readKeys();
    return static_cast<qint64>(m_keys->size());
}

// Where a key stands, or would stand, among the keys.
std::vector<qint64>::iterator TableSource::placeOf(qint64 key)
{
    return !m_select.order.empty() ? std::ranges::find(*m_keys, key) : std::ranges::lower_bound(*m_keys, key);
}

qint64 TableSource::position()
{
    if (!m_position) {
        readKeys();
        m_position = placeOf(m_lastKey) - m_keys->begin();
    }
    return *m_position;
}

void TableSource::standOn(qint64 position)
{
    const bool onRow = position >= 0 && position < count();
    standOnKey(onRow ? std::optional(m_keys->at(static_cast<size_t>(position))) : std::nullopt);
    m_position = position;
}

void TableSource::standOnKey(std::optional<qint64> key)
{
    m_key = key;
    m_lastKey = key.value_or(m_lastKey);
    m_row.reset();
    m_position = key ? std::nullopt : std::optional<qint64>(-1);
}

// The lock on the file is given up at once: a cursor that stands open in a list must not keep others from
// saving.
const QVariantList *TableSource::row()
{
    if (!m_key && position() >= 0 && position() < count()) {
        standOn(position());
    }
    if (!m_row && m_key) {
        const StatementReset reset(*m_rowByKey);
        m_rowByKey->bind({*m_key});
        if (m_rowByKey->step()) {
            m_row = m_rowByKey->row();
        }
    }
    return m_row ? &*m_row : nullptr;
}

// An index of the given name bears its table's name in front; a file made by other means may lack that.
void TableSource::setIndex(const QString &name)
{
    if (!m_select.isWholeTable()) {
        return Source::setIndex(name); // a seek would leave the rows chosen
    }
    const QList<Index> indexes = m_engine->indexesOf(m_select.table());
    auto found = std::ranges::find_if(
        indexes, [&](const Index &index) { return index.isNamed(m_select.table(), name); });
    if (found == indexes.end()) {
        found = std::ranges::find_if(
            indexes, [&](const Index &index) { return index.name.compare(name, Qt::CaseInsensitive) == 0; });
    }
    if (found == indexes.end()) {
        throw core::Error(0, u"no such index: "_s + name + u" of "_s + m_select.table());
    }
    m_seek = m_engine->prepare(u"select rowid from "_s + bracketedTable() + u" where "_s +
                               bracketed(found->columns.value(0)) + u" = ? order by rowid limit 1"_s);
}

bool TableSource::seek(const QVariant &key)
{
    if (!m_seek) {
        throw core::Error(0, u"no index is chosen for "_s + m_select.table());
    }
    const StatementReset reset(*m_seek);
    m_seek->bind({key});
    const bool found = m_seek->step();
    standOnKey(found ? std::optional(m_seek->key(0)) : std::nullopt);
    return found;
}

QString TableSource::autoNumber() const
{
    return m_names.value(placeOfField(m_names, m_engine->autoNumberOf(m_select.table())));
}

qint64 TableSource::reserveNumber()
{
    return m_engine->reserveNumber(m_select.table());
}

void TableSource::insert(const QList<Field> &fields)
{
    QStringList names;
    QVariantList values;
    for (const auto &[name, value] : fields) {
        names.append(bracketed(name));
        values.append(value);
    }
    const QString marks = QStringList(names.size(), u"?"_s).join(u',');
    const QString row =
        fields.isEmpty() ? u" default values"_s : u" ("_s + names.join(u',') + u") values ("_s + marks + u')';
    qint64 key = 0;
    m_engine->forEach(u"insert into "_s + bracketedTable() + row + u" returning rowid"_s, values,
                      [&](const Row &inserted) { key = inserted.key(0); });
    if (m_keys) {
        m_keys->insert(!m_select.order.empty() ? m_keys->end() : placeOf(key), key);
    }
    standOnKey(key);
}

void TableSource::update(const QList<Field> &fields)
{
    if (fields.isEmpty()) {
        return;
    }
    QStringList assignments;
    QVariantList values;
    for (const auto &[name, value] : fields) {
        assignments.append(bracketed(name) + u"=?"_s);
        values.append(value);
    }
    values.append(currentKey());
    const QString sql =
        u"update "_s + bracketedTable() + u" set "_s + assignments.join(u',') + u" where rowid=?"_s;
    if (m_engine->execute(sql, values) == 0) {
        throw core::Error(0, u"the row was deleted meanwhile in "_s + m_select.table());
    }
    m_row.reset();
}

void TableSource::remove()
{
    const qint64 key = currentKey();
    m_engine->execute(u"delete from "_s + bracketedTable() + u" where rowid=?"_s, {key});
    std::optional<qint64> gap;
    if (m_keys) {
        gap = position();
        std::erase(*m_keys, key);
    }
    standOnKey({});
    m_position = gap;
}

qint64 TableSource::currentKey()
{
    if (row() == nullptr) {
        throw core::Error(0, u"no current row in "_s + m_select.table());
    }
    return *m_key;
}

} // namespace store
