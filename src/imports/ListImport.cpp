#include "imports/ListImport.h"

#include "store/Database.h"

#include <QHash>

#include <algorithm>
#include <functional>
#include <limits>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

struct Cancelled : std::exception
{};

/// Goes through the rows of a list and files them, or only tells what it would do.
class Filing
{
public:
    Filing(store::Database &database, const ListTarget &target, const ListPlan &plan, ListImport::Mode mode);
    /// Before the first row.
    void learnRows(const std::function<void()> &between);
    void take(const SourceRow &row);
    /// Behind the last row.
    ImportReport end();

private:
    QStringList keysOf(const QStringList &texts, RowKey key) const;
    std::optional<RefusedRow> refusalOf(const QStringList &texts, const QStringList &keys,
                                        std::optional<qint32> sn) const;
    void add(QStringList texts);
    void change(qint32 sn, const QStringList &texts);
    void follow(const QString &oldName, const QString &newName);

    store::Database &m_database;
    const ListTarget &m_target;
    const ListPlan &m_plan;
    bool m_writes;
    RowReading m_reading;
    QList<int> m_given; ///< the fields that rows may say something of
    std::unique_ptr<store::Statement> m_select;
    std::unique_ptr<store::Statement> m_insert;
    std::unique_ptr<store::Statement> m_update;
    bool m_hasNotes;
    QHash<QString, qint32> m_snOfKey;
    QHash<QString, qint32> m_snOfId;
    QHash<QString, qint64> m_rowOfKey; ///< of this list
    QHash<QString, qint64> m_rowOfId;
    QHash<qint32, qint64> m_rowOfSn;
    QList<std::pair<QString, qint64>> m_renamedNotes; ///< the new name, and the row of the call's note
    ImportReport m_report;
};

// Of several rows with one key the first counts.
template <typename Value>
void putFirst(QHash<QString, Value> &rows, const QString &key, Value value)
{
    if (!rows.contains(key)) {
        rows.insert(key, value);
    }
}

QString joined(const QStringList &columns, const QString &behindEach, const QString &sign)
{
    return columns.join(behindEach + sign) + behindEach;
}

Filing::Filing(store::Database &database, const ListTarget &target, const ListPlan &plan,
               ListImport::Mode mode)
    : m_database(database), m_target(target), m_plan(plan), m_writes(mode == ListImport::Mode::Write),
      m_reading(target, plan),
      m_hasNotes(target.namesNotes && database.tableNames().contains("CallInfo"_L1, Qt::CaseInsensitive))
{
    QStringList all;
    QStringList given;
    for (int field = 0; field < target.fields.size(); ++field) {
        const QString column = target.fields.at(field).column;
        all.append(column);
        if (plan.fieldOfColumn.contains(field) || plan.fixedField == field) {
            m_given.append(field);
            given.append(column);
        }
    }
    if (given.isEmpty()) {
        return; // nothing can be said of any row
    }
    const QString marks = QString(u"?,"_s).repeated(all.size()).chopped(1);
    store::Engine &engine = *database.engine();
    m_select = engine.prepare(u"select %1 from %2 where SN=?"_s.arg(given.join(u','), target.table));
    if (m_writes) {
        m_insert =
            engine.prepare(u"insert into %1 (%2) values (%3)"_s.arg(target.table, all.join(u','), marks));
        m_update = engine.prepare(
            u"update %1 set %2 where SN=?"_s.arg(target.table, joined(given, u"=?"_s, u","_s)));
    }
}

QStringList Filing::keysOf(const QStringList &texts, RowKey key) const
{
    QStringList keys;
    for (const int field : m_target.fieldsOf(key)) {
        const QString &text = texts.at(field);
        if (key == RowKey::Number) {
            keys += digitsOf(text);
        } else if (const QString word = m_target.fields.at(field).stored(text).toString().simplified();
                   !word.isEmpty()) {
            keys.append(word.toCaseFolded());
        }
    }
    return keys;
}

// In slices, so that whoever saves a row meanwhile need not wait.
void Filing::learnRows(const std::function<void()> &between)
{
    constexpr qint64 rowsAtOnce = 2000;
    const bool needsIds = m_target.id >= 0 && m_given.contains(m_target.id);
    QList<int> fields = m_target.fieldsOf(m_plan.identify);
    if (needsIds && !fields.contains(m_target.id)) {
        fields.append(m_target.id);
    }
    if (fields.isEmpty()) {
        return;
    }
    QStringList columns{u"rowid"_s, u"SN"_s};
    for (const int field : fields) {
        columns.append(m_target.fields.at(field).column);
    }
    const QString select =
        u"select %1 from %2 where rowid>? order by rowid limit ?"_s.arg(columns.join(u','), m_target.table);
    qint64 last = std::numeric_limits<qint64>::min();
    for (qint64 rows = rowsAtOnce; rows == rowsAtOnce; between()) {
        rows = 0;
        m_database.forEachBoundRow(select, {last, rowsAtOnce}, [&](const store::Row &row) {
            ++rows;
            last = row.key(0);
            QStringList texts(m_target.fields.size(), QString());
            for (qsizetype i = 0; i < fields.size(); ++i) {
                texts[fields.at(i)] = row.text(int(i) + 2);
            }
            for (const QString &key : keysOf(texts, m_plan.identify)) {
                putFirst(m_snOfKey, key, row.integer(1));
            }
            for (const QString &key : needsIds ? keysOf(texts, RowKey::Id) : QStringList()) {
                putFirst(m_snOfId, key, row.integer(1));
            }
        });
    }
}

void Filing::take(const SourceRow &row)
{
    const ReadRow read = m_reading.read(row);
    const QStringList keys = keysOf(read.texts, m_plan.identify);
    std::optional<qint32> sn;
    for (const QString &key : keys) {
        if (const auto known = m_snOfKey.constFind(key); !sn && known != m_snOfKey.constEnd()) {
            sn = *known;
        }
    }
    std::optional<RefusedRow> refused = read.refused ? read.refused : refusalOf(read.texts, keys, sn);
    if (refused) {
        refused->row = row.number;
        m_report.refused.append(*refused);
        return;
    }
    for (const QString &key : keys) {
        putFirst(m_rowOfKey, key, row.number);
    }
    for (const QString &key : m_target.id >= 0 ? keysOf(read.texts, RowKey::Id) : QStringList()) {
        putFirst(m_rowOfId, key, row.number);
    }
    if (sn) {
        m_rowOfSn.insert(*sn, row.number);
        change(*sn, read.texts);
    } else {
        add(read.texts);
    }
}

// Two rows of the list that are the same one would change each other; a new one needs what an editor asks
// for.
std::optional<RefusedRow> Filing::refusalOf(const QStringList &texts, const QStringList &keys,
                                            std::optional<qint32> sn) const
{
    for (const QString &key : keys) {
        if (const qint64 other = m_rowOfKey.value(key)) {
            return RefusedRow{.why = Refusal::Repeats, .otherRow = other};
        }
    }
    if (const qint64 other = sn ? m_rowOfSn.value(*sn) : 0) {
        return RefusedRow{.why = Refusal::Repeats, .otherRow = other};
    }
    for (const QString &key : m_target.id >= 0 ? keysOf(texts, RowKey::Id) : QStringList()) {
        const auto holder = m_snOfId.constFind(key);
        if (m_rowOfId.contains(key) || (holder != m_snOfId.constEnd() && sn != *holder)) {
            return RefusedRow{.why = Refusal::IdTaken};
        }
    }
    const auto isBlank = [&texts](int field) { return texts.at(field).isEmpty(); };
    if (!sn && m_target.needsNumber && std::ranges::all_of(m_target.numbers, isBlank)) {
        return RefusedRow{.why = Refusal::NoNumber};
    }
    if (!sn && !m_target.needsNumber && std::ranges::all_of(m_target.names, isBlank)) {
        return RefusedRow{.why = Refusal::NoName};
    }
    return {};
}

void Filing::add(QStringList texts)
{
    ++m_report.added;
    if (!m_writes) {
        return;
    }
    QString &name = texts[m_target.names.first()];
    for (const int other : m_target.names) {
        name = name.isEmpty() ? texts.at(other) : name;
    }
    QVariantList values;
    for (int field = 0; field < texts.size(); ++field) {
        const QString &text = texts.at(field);
        values.append(text.isEmpty() ? m_target.defaults.at(field) : m_target.fields.at(field).stored(text));
    }
    const store::StatementReset reset(*m_insert);
    m_insert->bind(values);
    m_insert->step();
}

void Filing::change(qint32 sn, const QStringList &texts)
{
    QVariantList stored;
    if (m_plan.onFile != OnFile::Stays) {
        const store::StatementReset reset(*m_select);
        m_select->bind({sn});
        stored = m_select->step() ? m_select->row() : QVariantList();
    }
    QVariantList wanted = stored;
    QString oldName;
    QString newName;
    for (qsizetype i = 0; i < stored.size(); ++i) {
        const int field = m_given.at(i);
        const QString onFile = stored.at(i).toString();
        if (texts.at(field).isEmpty() || (m_plan.onFile == OnFile::FilledIn && !onFile.trimmed().isEmpty())) {
            continue;
        }
        const QVariant value = m_target.fields.at(field).stored(texts.at(field));
        if (value.toString() == onFile) {
            continue;
        }
        wanted[i] = value;
        if (field == m_target.names.first()) {
            oldName = onFile;
            newName = value.toString();
        }
    }
    if (wanted == stored) {
        ++m_report.kept;
        return;
    }
    ++m_report.changed;
    if (!m_writes) {
        return;
    }
    wanted.append(sn);
    {
        const store::StatementReset reset(*m_update);
        m_update->bind(wanted);
        m_update->step();
    }
    follow(oldName, newName);
}

// The notes of calls stand under the name. They follow at the end: what is one's new name may be another's
// old one.
void Filing::follow(const QString &oldName, const QString &newName)
{
    if (oldName.isEmpty() || !m_target.namesNotes) {
        return;
    }
    m_report.renamed.insert(oldName, newName);
    if (m_hasNotes) {
        m_database.forEachBoundRow(u"select rowid from CallInfo where CustomerName=?"_s, {oldName},
                                   [&](const store::Row &note) {
                                       m_renamedNotes.append({newName, note.key(0)});
                                   });
    }
}

ImportReport Filing::end()
{
    for (const auto &[name, note] : std::as_const(m_renamedNotes)) {
        m_database.Execute(u"update CallInfo set CustomerName=? where rowid=?"_s, {name, note});
    }
    return std::move(m_report);
}

ImportReport run(const ListTarget &target, const QString &path, const ListPlan &plan, ListImport::Mode mode,
                 const Stops &stops, const std::function<void(int)> &progress)
{
    const bool writes = mode == ListImport::Mode::Write;
    const std::unique_ptr<RowSource> rows = openList(path, plan.form, stops);
    store::Database database(target.file,
                             writes ? store::Database::Mode::ReadWrite : store::Database::Mode::ReadOnly);
    ImportReport report;
    const auto work = [&] {
        Filing filing(database, target, plan, mode);
        filing.learnRows([&] { progress(0); });
        if (plan.hasHeadings) {
            rows->next();
        }
        for (std::optional<SourceRow> row = rows->next(); row; row = rows->next()) {
            filing.take(*row);
            progress(rows->perMille());
        }
        report = filing.end();
    };
    if (writes) {
        database.transaction(work);
    } else {
        work();
    }
    return report;
}

} // namespace

ListImport::ListImport(const ListTarget &target, const QString &path, const ListPlan &plan, Mode mode,
                       const CopyDesk &copyDesk)
    : m_work([this, target, path, plan, mode, copyDesk] {
          const auto progress = [this](int perMille) {
              m_perMille = perMille;
              if (m_cancelled) {
                  throw Cancelled();
              }
          };
          const auto ended = [this] { return m_cancelled.load(); };
          try {
              if (mode == Mode::Write) {
                  copyDesk(ended);
              }
              return run(target, path, plan, mode, ended, progress);
          } catch (const Cancelled &) {
          } catch (const core::Error &) {
              if (!m_cancelled) { // which keeps the file from being read on
                  throw;
              }
          }
          return ImportReport{.isCancelled = true};
      })
{}

} // namespace imports
