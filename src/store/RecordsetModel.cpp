#include "store/RecordsetModel.h"

#include <algorithm>

namespace store {

namespace {

constexpr int rowsKept = 500; // a few screens full
constexpr std::chrono::milliseconds oneTurn{20};

} // namespace

/// The opened file and the cursor on it.
struct RecordsetModel::Rows
{
    Rows(const QString &file, const QString &select, bool inSlices)
        : database(file), recordset(inSlices ? database.OpenSliced(select) : database.OpenRecordset(select)),
          names(recordset.fieldNames()), complete(recordset.readOn(oneTurn)), count(known())
    {}

    int known() const { return static_cast<int>(recordset.RecordCount()); }

    Recordset &at(int row)
    {
        recordset.MoveFirst();
        recordset.Move(gone >= 0 && row > gone ? row - 1 : row);
        return recordset;
    }

    Database database;
    Recordset recordset;
    QStringList names;
    bool complete;
    int count;
    int gone = -1; ///< the row that is no more in the recordset, while the views are told
};

RecordsetModel::RecordsetModel(core::RunLog &log, QLatin1StringView name, QObject *parent)
    : QAbstractTableModel(parent), m_log(log), m_name(name), m_cache(rowsKept),
      m_lockPause([this] { Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1)); })
{
    connect(&m_reading, &QTimer::timeout, this, &RecordsetModel::readOn);
}

RecordsetModel::~RecordsetModel() = default;

bool RecordsetModel::setRecordSource(const QString &databaseFile, const QString &select)
{
    return m_log.trap(m_name, [&] {
        auto rows = std::make_unique<Rows>(databaseFile, select, m_inSlices);
        m_reading.stop();
        m_lockPause.stop();
        beginResetModel();
        m_rows = std::move(rows);
        m_cache.clear();
        m_databaseFile = databaseFile;
        m_select = select;
        arrangeColumns();
        endResetModel();
        if (!m_rows->complete) {
            m_reading.start(0);
        }
    });
}

void RecordsetModel::arrangeColumns()
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

QString RecordsetModel::fieldAt(int column) const
{
    return m_rows->names.value(m_fieldOf.value(column, -1));
}

void RecordsetModel::readOn()
{
    const bool read = m_log.trap(m_name, [this] { m_rows->complete = m_rows->recordset.readOn(oneTurn); });
    const int known = m_rows->known();
    if (known > m_rows->count) {
        beginInsertRows({}, m_rows->count, known - 1);
        m_rows->count = known;
        endInsertRows();
    }
    if (!read || m_rows->complete) {
        m_reading.stop();
        Q_EMIT readingEnded();
    }
}

bool RecordsetModel::isComplete() const
{
    return m_rows != nullptr && m_rows->complete;
}

bool RecordsetModel::isReplaced() const
{
    return m_rows != nullptr && m_rows->database.isReplaced();
}

bool RecordsetModel::refresh()
{
    return setRecordSource(QString(m_databaseFile), QString(m_select));
}

void RecordsetModel::setHeading(const QString &field, const QString &heading)
{
    m_headings.insert(field.toLower(), heading.isEmpty() ? field : heading);
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, std::max(columnCount() - 1, 0));
}

int RecordsetModel::rowCount(const QModelIndex &parent) const
{
    return m_rows == nullptr || parent.isValid() ? 0 : m_rows->count;
}

int RecordsetModel::columnCount(const QModelIndex &parent) const
{
    return m_rows == nullptr || parent.isValid() ? 0 : static_cast<int>(m_rows->names.size());
}

/// A row that another desk has deleted meanwhile reads as one of empty cells until the next refresh.
QVariantList RecordsetModel::rowAt(int row) const
{
    if (const QVariantList *kept = m_cache.object(row)) {
        return *kept;
    }
    QVariantList fields(m_rows->names.size());
    if (row == m_rows->gone) {
        return fields;
    }
    const bool read = m_log.trap(m_name, [&] {
        m_lockPause.guard([&] {
            Recordset &recordset = m_rows->at(row);
            for (int column = 0; column < fields.size(); ++column) {
                fields[column] = recordset.value(column);
            }
        });
    });
    if (read || !m_lockPause.isActive()) {
        m_cache.insert(row, new QVariantList(fields));
    }
    return fields;
}

QVariant RecordsetModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) {
        return {};
    }
    if (m_lockPause.isActive() && !m_cache.contains(index.row())) {
        return {};
    }
    const QVariant value = rowAt(index.row()).value(m_fieldOf.value(index.column()));
    return role == Qt::DisplayRole ? QVariant(value.toString()) : value;
}

QVariant RecordsetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || m_rows == nullptr) {
        return {};
    }
    const QString name = fieldAt(section);
    return m_headings.value(name.toLower(), name);
}

Qt::ItemFlags RecordsetModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    return m_editable ? usual | Qt::ItemIsEditable : usual;
}

bool RecordsetModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || value == data(index, Qt::EditRole)) {
        return false;
    }
    const bool written = m_log.trap(m_name, [&] {
        Recordset &recordset = m_rows->at(index.row());
        recordset.Edit();
        recordset.setValue(fieldAt(index.column()), value);
        recordset.Update();
    });
    m_cache.remove(index.row());
    if (written) {
        Q_EMIT dataChanged(index, index);
        Q_EMIT changedInPlace();
    }
    return written;
}

void RecordsetModel::forgetRow(int row)
{
    m_cache.remove(row);
    Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

bool RecordsetModel::removeRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || count < 1 || row + count > rowCount()) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        if (!m_log.trap(m_name, [&] { m_rows->at(row).Delete(); })) {
            return false;
        }
        m_cache.clear();
        m_rows->gone = row;
        beginRemoveRows({}, row, row);
        --m_rows->count;
        m_cache.clear();
        m_rows->gone = -1;
        endRemoveRows();
    }
    return true;
}

int RecordsetModel::columnOf(const QString &field) const
{
    const qsizetype place = m_rows == nullptr ? -1 : placeOfField(m_rows->names, field);
    return static_cast<int>(m_fieldOf.indexOf(place));
}

int RecordsetModel::rowOf(qint64 number) const
{
    const qint64 position = m_rows == nullptr ? -1 : m_rows->recordset.positionOf(number);
    return position < rowCount() ? static_cast<int>(position) : -1;
}

QVariant RecordsetModel::field(int row, const QString &name) const
{
    return row >= 0 && row < rowCount() ? rowAt(row).value(placeOfField(m_rows->names, name)) : QVariant();
}

} // namespace store
