#include "store/JoinModel.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

namespace {

constexpr int rowsKept = 500;     // a few screens full
constexpr size_t firstPage = 100; // rows of a large screen
constexpr qint64 firstPatience = 60;

} // namespace

JoinModel::JoinModel(core::RunLog &log, QLatin1StringView name, QObject *parent)
    : QAbstractTableModel(parent), m_log(log), m_name(name), m_cache(rowsKept),
      m_lockPause([this] { Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1)); })
{
    connect(&m_timer, &QTimer::timeout, this, &JoinModel::readOn);
}

void JoinModel::show(Database &database, const JoinSelect &select, const std::optional<QString> &group)
{
    JoinReading reading(database, select, JoinReading::Columns::Keys, group);
    std::vector<Keys> keys;
    QElapsedTimer timer;
    timer.start();
    bool more = true;
    while (more && keys.size() < firstPage && timer.elapsed() < firstPatience) {
        more = reading.readOn([&](const Row &row) { keys.push_back({row.key(0), row.key(1)}); });
    }
    beginResetModel();
    m_database = &database;
    m_select = select;
    m_keys = std::move(keys);
    m_cache.clear();
    m_reading.reset();
    m_lockPause.stop();
    m_complete = !more;
    endResetModel();
    if (more) {
        m_reading.emplace(std::move(reading));
        m_timer.start(0);
    } else {
        m_timer.stop();
        Q_EMIT readingEnded();
    }
}

void JoinModel::clear()
{
    m_timer.stop();
    m_lockPause.stop();
    m_reading.reset();
    beginResetModel();
    m_database = nullptr;
    m_keys.clear();
    m_cache.clear();
    endResetModel();
}

void JoinModel::readOn()
{
    std::vector<Keys> found;
    bool more = false;
    const bool read = m_log.trap(m_name, [&] {
        more = m_reading->readOn([&](const Row &row) { found.push_back({row.key(0), row.key(1)}); });
    });
    if (!found.empty()) {
        const int first = rowCount();
        beginInsertRows({}, first, first + static_cast<int>(found.size()) - 1);
        m_keys.insert(m_keys.end(), found.begin(), found.end());
        endInsertRows();
    }
    if (!more) {
        m_timer.stop();
        m_reading.reset();
        m_complete = read;
        Q_EMIT readingEnded();
    }
}

void JoinModel::setHeading(const QString &field, const QString &heading)
{
    m_headings.insert(field.toLower(), heading.isEmpty() ? field : heading);
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, std::max(columnCount() - 1, 0));
}

void JoinModel::setYesNo(const QString &yes, const QString &no)
{
    m_yes = yes;
    m_no = no;
}

int JoinModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_keys.size());
}

int JoinModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_select.names.size());
}

QVariantList JoinModel::rowAt(int row) const
{
    if (const QVariantList *kept = m_cache.object(row)) {
        return *kept;
    }
    QVariantList fields(m_select.names.size());
    const bool read = m_log.trap(m_name, [&] {
        m_lockPause.guard([&] {
            const Keys &keys = m_keys[static_cast<size_t>(row)];
            const Recordset result =
                m_database->OpenRecordset(m_select.rowByKeys(), {keys.detail, keys.master});
            for (int column = 0; column < fields.size() && !result.EOFile(); ++column) {
                fields[column] = result.value(column);
            }
        });
    });
    if (read || !m_lockPause.isActive()) {
        m_cache.insert(row, new QVariantList(fields));
    }
    return fields;
}

QVariant JoinModel::data(const QModelIndex &index, int role) const
{
    const bool waits = m_lockPause.isActive() && !m_cache.contains(index.row());
    return index.isValid() && role == Qt::DisplayRole && !waits
               ? shown(rowAt(index.row()).value(index.column()))
               : QVariant();
}

QString JoinModel::shown(const QVariant &value) const
{
    if (value.typeId() == QMetaType::Bool) {
        return value.toBool() ? m_yes : m_no;
    }
    return value.toString();
}

QVariant JoinModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    const QString name = m_select.names.value(section);
    return m_headings.value(name.toLower(), name);
}

QVariant JoinModel::field(int row, const QString &name) const
{
    return row >= 0 && row < rowCount() ? rowAt(row).value(placeOfField(m_select.names, name)) : QVariant();
}

} // namespace store
