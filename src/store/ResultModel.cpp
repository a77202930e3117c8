#include "store/ResultModel.h"

#include "store/TableSource.h"

#include <algorithm>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace store {

namespace {

constexpr int rowsKept = 500;     // a few screens full
constexpr size_t firstPage = 100; // rows of a large screen
constexpr qint64 oneTurnMs = 20;
constexpr std::chrono::milliseconds untilPainted{20}; // the first page is to be seen before all are counted
constexpr std::chrono::seconds pauseAfterLock{2};
constexpr int mostMoves = 16;          // in one turn; where more has changed, the rest is shown anew
constexpr std::ptrdiff_t soonest = 50; // a row that comes within so many has others put in front of it

ResultModel::Trouble troubleOf(const core::Error &error)
{
    return tellsOfLock(error)                           ? ResultModel::Trouble::Locked
           : error.kind() == core::Error::Kind::TooLong ? ResultModel::Trouble::TooLong
                                                        : ResultModel::Trouble::Unreadable;
}

} // namespace

// Of a row.
struct ResultModel::Keys
{
    qint64 first;
    qint64 second; // of the other table, where there are two
    bool operator==(const Keys &) const = default;
};

// The opened file, the keys of the rows found in it, and the reading of those that are still to be found.
struct ResultModel::Rows
{
    static constexpr Keys unknown{std::numeric_limits<qint64>::min(), 0};

    Rows(const Database &database, const QString &tableOrSelect)
        : engine(database.engine()), select(tableOrSelect.contains(u' ') ? selectOf(tableOrSelect, 1)
                                                                         : Select::wholeTable(tableOrSelect)),
          rowByKeys(engine->prepare(u"select"_s + select.columns + u"from"_s + bracketed(select.table()) +
                                    u"where rowid=?"_s)),
          names(rowByKeys->columnNames()), reading(SlicedReading(engine, select)),
          isCounted(!select.conditions.empty())
    {
        readOn(firstPage);
    }
    Rows(const Database &database, const QString &joined, const JoinTables &tables)
        : engine(database.engine()), select(selectOf(joined, 2)),
          rowByKeys(engine->prepare(
              u"select"_s + select.columns +
              u"from [%1],[%2] where [%1].rowid=? and [%2].rowid=?"_s.arg(tables.details, tables.masters))),
          names(rowByKeys->columnNames()),
          reading(SlicedReading(engine, select, tables, SlicedReading::Columns::Keys)), isCounted(true),
          joins(true)
    {
        readOn(firstPage);
    }

    // Finds rows for one turn; ends early with so many.
    void readOn(size_t enough)
    {
        QElapsedTimer timer;
        timer.start();
        bool more = true;
        while (more && found.size() < enough && timer.elapsed() < oneTurnMs) {
            more = reading->readOn([&](const Row &row) {
                found.push_back({row.key(0), joins ? row.key(1) : 0});
            });
        }
        if (!more) {
            reading.reset();
        }
    }
    bool isUnknown(int row) const { return keys[static_cast<size_t>(row)] == unknown; }
    // The row as it now is; empty where it is gone.
    QVariantList read(int row)
    {
        const Keys &key = keys[static_cast<size_t>(row)];
        const StatementReset reset(*rowByKeys);
        rowByKeys->bind(joins ? QVariantList{key.first, key.second} : QVariantList{key.first});
        return rowByKeys->step() ? rowByKeys->row() : QVariantList();
    }
    // A cursor on the row, to change it by.
    TableSource at(int row) const
    {
        TableSource table(engine, Select::wholeTable(select.table()), {});
        table.standOnKey(keys[static_cast<size_t>(row)].first);
        return table;
    }
    std::shared_ptr<Engine> engine; // before the statement, which must go first
    Select select;
    std::unique_ptr<Statement> rowByKeys;
    QStringList names;
    std::optional<SlicedReading> reading;
    bool isCounted; // or does not tell before its end how many rows there are
    bool joins = false;
    bool brokenOff = false;
    std::vector<Keys> keys; // of the rows shown; behind the first `known` they are to be found, again
    size_t known = 0;
    std::vector<Keys> found; // and not yet shown
};

ResultModel::ResultModel(core::RunLog &log, QLatin1StringView name, QObject *parent)
    : QAbstractTableModel(parent), m_log(log), m_name(name), m_cache(rowsKept)
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &ResultModel::endPause);
    connect(&m_reading, &QTimer::timeout, this, &ResultModel::readOn);
}

ResultModel::~ResultModel() = default;

bool ResultModel::attempt(const std::function<void()> &work) const
{
    m_trouble = Trouble::None;
    return m_log.trap(m_name, [&] {
        try {
            work();
        } catch (const core::Error &error) {
            m_trouble = troubleOf(error);
            if (m_trouble == Trouble::Locked) {
                m_pause.start(pauseAfterLock);
            }
            throw;
        }
    });
}

// A view that is long would be a long time in taking it for another one.
bool ResultModel::show(const std::function<std::unique_ptr<Rows>()> &open, bool again)
{
    m_selectFailed = !attempt([&] {
        std::unique_ptr<Rows> rows = open();
        m_pause.stop();
        if (again && rows->reading && !rows->isCounted && rows->names == m_rows->names) {
            rows->keys = std::move(m_rows->keys);
            m_rows = std::move(rows);
            m_cache.clear();
            Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
            takeFound();
        } else {
            beginResetModel();
            rows->keys = std::exchange(rows->found, {});
            rows->known = rows->keys.size();
            m_rows = std::move(rows);
            m_cache.clear();
            arrangeColumns();
            endResetModel();
        }
        m_reading.stop();
        if (isReading()) {
            m_reading.start(m_rows->isCounted ? std::chrono::milliseconds(0) : untilPainted);
        }
    });
    return !m_selectFailed;
}

bool ResultModel::setRecordSource(QString databaseFile, QString tableOrSelect)
{
    const bool again = rowCount() > 0 && databaseFile == m_databaseFile && tableOrSelect == m_source;
    m_databaseFile = std::move(databaseFile);
    const bool shown =
        show([&] { return std::make_unique<Rows>(Database(m_databaseFile), tableOrSelect); }, again);
    if (shown) {
        m_source = std::move(tableOrSelect);
    }
    return shown;
}

bool ResultModel::setRecordSource(Database &database, const QString &select, const JoinTables &tables)
{
    m_databaseFile = database.path();
    const bool shown = show([&] { return std::make_unique<Rows>(database, select, tables); }, false);
    if (shown) {
        m_source = select;
    }
    return shown;
}

void ResultModel::awaitLock(const QString &databaseFile)
{
    m_databaseFile = databaseFile;
    m_trouble = Trouble::Locked;
    m_selectFailed = true;
    m_pause.start(pauseAfterLock);
}

void ResultModel::clear()
{
    m_reading.stop();
    m_pause.stop();
    m_selectFailed = false;
    beginResetModel();
    m_rows.reset();
    m_cache.clear();
    endResetModel();
}

bool ResultModel::refresh()
{
    return setRecordSource(m_databaseFile, m_source);
}

bool ResultModel::isReplaced() const
{
    return m_rows != nullptr && m_rows->engine->isReplaced();
}

bool ResultModel::isReading() const
{
    return m_rows != nullptr && m_rows->reading.has_value();
}

bool ResultModel::isComplete() const
{
    return m_rows != nullptr && !m_rows->reading && !m_rows->brokenOff;
}

// The rows that are still to be found have their places from now on.
void ResultModel::countAll()
{
    const auto rows = static_cast<int>(m_rows->reading->total().value_or(0));
    m_rows->isCounted = true;
    if (rows > rowCount()) {
        insert(m_rows->keys.size(), std::vector(static_cast<size_t>(rows - rowCount()), Rows::unknown));
    }
    m_reading.start(0);
}

// Those that were shown before, or counted, and are there no more.
void ResultModel::dropUnfound()
{
    if (m_rows->known < m_rows->keys.size()) {
        drop(m_rows->known, m_rows->keys.size());
    }
}

// A slice that a lock kept from being read is read when that is over: nothing of it was taken.
void ResultModel::readOn()
{
    const bool read =
        attempt([&] { m_rows->isCounted ? m_rows->readOn(std::numeric_limits<size_t>::max()) : countAll(); });
    const bool heldUp = m_trouble == Trouble::Locked; // before the views read rows
    if (takeFound()) {
        Q_EMIT rowsFound();
    }
    if (heldUp) {
        m_reading.stop();
        Q_EMIT readingHeldUp();
    } else if (!read || !isReading()) {
        m_reading.stop();
        m_rows->reading.reset();
        m_rows->brokenOff = !read;
        dropUnfound();
        Q_EMIT readingEnded();
    }
}

// Shows the rows found, behind those that were found before. A row of an earlier reading is moved rather
// than turned into another: whoever holds an index, be it an open cell, must not find somebody else there.
bool ResultModel::takeFound()
{
    const std::vector<Keys> found = std::exchange(m_rows->found, {});
    std::vector<Keys> &keys = m_rows->keys;
    size_t &known = m_rows->known;
    const size_t before = known;
    int moves = 0;
    bool filled = false;
    for (auto key = found.begin(); key != found.end(); ++key, ++known) {
        while (known < keys.size() && keys[known] != *key && keys[known] != Rows::unknown) {
            const auto soon = key + std::min(found.end() - key, soonest);
            if (++moves > mostMoves) {
                dropUnfound();
            } else if (std::find(key, soon, keys[known]) == soon) {
                drop(known, known + 1);
            } else {
                insert(known, {*key});
            }
        }
        if (known == keys.size()) {
            insert(known, {key, found.end()});
            known = keys.size();
            break;
        }
        filled |= keys[known] != *key;
        keys[known] = *key;
    }
    if (filled) {
        Q_EMIT dataChanged(index(static_cast<int>(before), 0),
                           index(static_cast<int>(known) - 1, columnCount() - 1));
    }
    return !found.empty();
}

void ResultModel::insert(size_t place, const std::vector<Keys> &keys)
{
    beginInsertRows({}, static_cast<int>(place), static_cast<int>(place + keys.size()) - 1);
    m_rows->keys.insert(m_rows->keys.begin() + static_cast<std::ptrdiff_t>(place), keys.begin(), keys.end());
    m_cache.clear();
    endInsertRows();
}

void ResultModel::drop(size_t first, size_t end)
{
    beginRemoveRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
    m_rows->keys.erase(m_rows->keys.begin() + static_cast<std::ptrdiff_t>(first),
                       m_rows->keys.begin() + static_cast<std::ptrdiff_t>(end));
    m_cache.clear();
    endRemoveRows();
}

void ResultModel::endPause()
{
    if (isLocked(m_databaseFile)) {
        return m_pause.start(pauseAfterLock);
    }
    if (isReading()) {
        m_reading.start(0);
    }
    if (rowCount() > 0) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
    if (m_selectFailed) {
        Q_EMIT lockEnded();
    }
}

void ResultModel::arrangeColumns()
{
    m_fieldOf.clear();
    for (const QString &field : std::as_const(m_leading)) {
        if (const qsizetype place = placeOfField(m_rows->names, field); place >= 0) {
            m_fieldOf.append(int(place));
        }
    }
    for (int place = 0; place < m_rows->names.size(); ++place) {
        if (!m_fieldOf.contains(place)) {
            m_fieldOf.append(place);
        }
    }
}

QString ResultModel::fieldAt(int column) const
{
    return m_rows->names.value(m_fieldOf.value(column, -1));
}

void ResultModel::setHeading(const QString &field, const QString &heading)
{
    m_headings.insert(field.toLower(), heading.isEmpty() ? field : heading);
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, std::max(columnCount() - 1, 0));
}

void ResultModel::setYesNo(const QString &yes, const QString &no)
{
    m_yes = yes;
    m_no = no;
}

int ResultModel::rowCount(const QModelIndex &parent) const
{
    return m_rows == nullptr || parent.isValid() ? 0 : static_cast<int>(m_rows->keys.size());
}

int ResultModel::columnCount(const QModelIndex &parent) const
{
    return m_rows == nullptr || parent.isValid() ? 0 : static_cast<int>(m_rows->names.size());
}

// A row that another desk has deleted meanwhile reads as one of empty cells until the next refresh.
QVariantList ResultModel::rowAt(int row) const
{
    if (const QVariantList *kept = m_cache.object(row)) {
        return *kept;
    }
    QVariantList fields;
    if (m_rows->isUnknown(row)) {
        return fields;
    }
    attempt([&] { fields = m_rows->read(row); });
    fields.resize(m_rows->names.size());
    if (m_trouble != Trouble::Locked) {
        m_cache.insert(row, new QVariantList(fields));
    }
    return fields;
}

QVariant ResultModel::data(const QModelIndex &index, int role) const
{
    const bool waits = m_pause.isActive() && !m_cache.contains(index.row());
    if (!index.isValid() || waits || (role != Qt::DisplayRole && role != Qt::EditRole)) {
        return {};
    }
    QVariant value = rowAt(index.row()).value(m_fieldOf.value(index.column()));
    if (role == Qt::EditRole) {
        return value;
    }
    return value.typeId() == QMetaType::Bool ? (value.toBool() ? m_yes : m_no) : value.toString();
}

QVariant ResultModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || m_rows == nullptr) {
        return {};
    }
    const QString name = fieldAt(section);
    return m_headings.value(name.toLower(), name);
}

Qt::ItemFlags ResultModel::flags(const QModelIndex &index) const
{
    if (index.isValid() && m_rows->isUnknown(index.row())) {
        return Qt::NoItemFlags;
    }
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    return m_editable ? usual | Qt::ItemIsEditable : usual;
}

bool ResultModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || value == data(index, Qt::EditRole)) {
        return false;
    }
    const bool written = m_log.trap(m_name, [&] {
        m_rows->at(index.row()).update({{fieldAt(index.column()), value}});
    });
    m_cache.remove(index.row());
    if (written) {
        Q_EMIT dataChanged(index, index);
    }
    return written;
}

void ResultModel::forgetRow(int row)
{
    m_cache.remove(row);
    Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

std::optional<DeletedRow> ResultModel::deleteRow(int row)
{
    const std::optional<qint64> number = numberOf(row);
    if (!number) {
        return std::nullopt;
    }
    DeletedRow deleted{.number = *number, .fields = {}};
    const auto remove = [&] {
        TableSource table = m_rows->at(row);
        if (const QVariantList *values = table.row()) {
            for (qsizetype place = 0; place < values->size(); ++place) {
                deleted.fields.append({table.names().at(place), values->at(place)});
            }
        }
        table.remove();
    };
    if (!m_log.trap(m_name, [&] { m_rows->engine->transaction(remove); })) {
        return std::nullopt;
    }
    m_rows->known -= static_cast<size_t>(row) < m_rows->known ? 1U : 0U;
    drop(static_cast<size_t>(row), static_cast<size_t>(row) + 1);
    return deleted;
}

// Since then a copy of the desk may have been restored: the row then stands there again, or another one has
// got its number.
std::optional<qint64> ResultModel::putBack(const DeletedRow &row)
{
    qint64 number = row.number;
    const auto insert = [&] {
        TableSource table(m_rows->engine, Select::wholeTable(m_rows->select.table()), {});
        table.standOnKey(number);
        auto fields = row.fields;
        if (const QVariantList *there = table.row()) {
            if (std::ranges::equal(*there, fields, {}, {}, &std::pair<QString, QVariant>::second)) {
                return;
            }
            fields.removeIf([&](const auto &field) { return field.first == table.autoNumber(); });
        }
        table.insert(fields);
        number = table.currentKey();
    };
    const bool stands = m_rows != nullptr && m_log.trap(m_name, [&] { m_rows->engine->transaction(insert); });
    return stands ? std::optional(number) : std::nullopt;
}

std::optional<qint64> ResultModel::numberOf(int row) const
{
    const bool isShown = m_rows != nullptr && row >= 0 && row < rowCount() && !m_rows->isUnknown(row);
    return isShown ? std::optional(m_rows->keys[static_cast<size_t>(row)].first) : std::nullopt;
}

int ResultModel::columnOf(const QString &field) const
{
    const qsizetype place = m_rows == nullptr ? -1 : placeOfField(m_rows->names, field);
    return static_cast<int>(m_fieldOf.indexOf(place));
}

int ResultModel::rowOf(qint64 number) const
{
    if (m_rows == nullptr) {
        return -1;
    }
    const auto found = std::ranges::find(m_rows->keys, number, &Keys::first);
    return found != m_rows->keys.end() ? static_cast<int>(found - m_rows->keys.begin()) : -1;
}

QString troubleKey(ResultModel::Trouble trouble, const QString &unreadable)
{
    return trouble == ResultModel::Trouble::Locked    ? u"FileInUse"_s
           : trouble == ResultModel::Trouble::TooLong ? u"SearchTextUnusable"_s
                                                      : unreadable;
}

QVariant ResultModel::field(int row, const QString &name) const
{
    return row >= 0 && row < rowCount() ? rowAt(row).value(placeOfField(m_rows->names, name)) : QVariant();
}

} // namespace store
