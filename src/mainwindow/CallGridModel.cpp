#include "mainwindow/CallGridModel.h"

#include "core/TextUtilities.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace mainwindow {

namespace {

constexpr int firstDataRow = 1; // row 0 of the grid is its header

} // namespace

CallGridModel::CallGridModel(core::Settings &settings, const core::ProcessValues &values,
                             const core::TextLookup &texts, core::RunLog &log)
    : m_settings(settings), m_values(values), m_texts(texts), m_log(log)
{}

void CallGridModel::iniGridCallerID_tarn()
{
    beginResetModel();
    bool usable = false;
    m_columns = readGridColumns(m_settings.record, &usable);
    if (!usable) {
        m_log.reportError(
            u"!iniGridCallerID_tarn "_s,
            core::Error(0, u"the grid's column list is not usable, the defaults stand in for: "_s +
                               m_settings.record.gridColumnNames.text()));
    }
    writeGridColumns(m_settings.record, m_columns);
    GridColumnNames.clear();
    m_fieldOfColumn.clear();
    for (const GridColumn &column : std::as_const(m_columns)) {
        GridColumnNames.append(column.name);
        m_fieldOfColumn.push_back(gridColumnNames().indexOf(column.name));
    }
    m_ring.resize(capacity());
    endResetModel();
}

size_t CallGridModel::capacity() const
{
    return static_cast<size_t>(std::max(m_values.MaxGridRows - firstDataRow, 1));
}

CallGridModel::Row CallGridModel::rowOf(const core::CallRecord &record)
{
    return {.channel = record.Channel,
            .callerId = record.CallerID,
            .simpleDes = record.SimpleDes,
            .incomingTime = record.IncomingTime,
            .sn = record.SN,
            .lineNo = record.LineNo,
            .source = record.Source,
            .snText = record.SnText,
            .standing = core::standingOf(record.IfVIP, record.IfInBlackList)};
}

// The fields have the places of gridColumnNames().
QString CallGridModel::textOf(const Row &row, qsizetype field)
{
    using core::shownText;
    switch (field) {
    case 0:
        return shownText(row.channel);
    case 1:
        return shownText(row.callerId);
    case 2:
        return shownText(row.simpleDes);
    case 3:
        return shownText(row.incomingTime);
    case 4:
        return QString::number(row.sn).rightJustified(3, u'0');
    case 5:
        return shownText(row.lineNo);
    case 6:
        return shownText(QString(row.source + row.snText));
    default:
        return {};
    }
}

void CallGridModel::ShowCallerID_tarn(const core::CallRecord &record)
{
    m_newest = (m_newest + m_ring.size() - 1) % m_ring.size();
    ++m_added;
    m_ring[m_newest] = rowOf(record);
}

void CallGridModel::showEarlierCall(const core::CallRecord &record, int newerCalls)
{
    ShowCallerID_tarn(record);
    publish();
    const int place = std::min(newerCalls, m_published - 1);
    if (place > 0 && beginMoveRows({}, 0, 0, {}, place + 1)) {
        for (size_t row = m_newest; row < m_newest + static_cast<size_t>(place); ++row) {
            std::swap(m_ring[row % m_ring.size()], m_ring[(row + 1) % m_ring.size()]);
        }
        endMoveRows();
    }
}

void CallGridModel::showCallAgain(const core::CallRecord &shown, const core::CallRecord &now)
{
    std::ranges::replace(m_ring, rowOf(shown), rowOf(now));
    if (m_published > 0) {
        Q_EMIT dataChanged(index(0, 0), index(m_published - 1, columnCount() - 1));
    }
}

void CallGridModel::publish()
{
    if (m_added == 0) {
        return;
    }
    const int most = int(m_ring.size());
    const int added = int(std::min(m_added, m_ring.size()));
    const int dropped = std::max(m_published + added - most, 0);
    if (dropped > 0) {
        beginRemoveRows({}, m_published - dropped, m_published - 1);
        m_published -= dropped;
        endRemoveRows();
    }
    beginInsertRows({}, 0, added - 1);
    m_published += added;
    m_added = 0;
    endInsertRows();
}

int CallGridModel::GetGridColumn(const QString &name) const
{
    return int(GridColumnNames.indexOf(name));
}

void CallGridModel::setColumnWidth(int column, int twips)
{
    m_columns[column].width = twips;
    writeGridColumns(m_settings.record, m_columns);
    m_settings.SaveMisc();
}

bool CallGridModel::ChangeGridCfg(const QList<GridColumn> &columns)
{
    return m_log.trap("ChangeGridCfg"_L1, false, [&] {
        writeGridColumns(m_settings.record, columns);
        const bool saved = m_settings.SaveMisc();
        iniGridCallerID_tarn();
        return saved;
    });
}

// A row that a new call has overwritten before the views were told shows that call.
const CallGridModel::Row &CallGridModel::published(int row) const
{
    return m_ring[(m_newest + m_added + static_cast<size_t>(row)) % m_ring.size()];
}

QString CallGridModel::cell(int row, const QString &columnName) const
{
    return row >= 0 && row < m_published ? textOf(published(row), gridColumnNames().indexOf(columnName))
                                         : QString();
}

std::optional<core::RowKey> CallGridModel::callerOf(int row) const
{
    return core::rowKeyOf(cell(row, u"ID"_s));
}

int CallGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_published;
}

int CallGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant CallGridModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Row &row = published(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return textOf(row, m_fieldOfColumn.at(static_cast<size_t>(index.column())));
    case StandingRole:
        return QVariant::fromValue(row.standing);
    case Qt::TextAlignmentRole:
        return int(Qt::AlignLeading | Qt::AlignVCenter);
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return inWords(row, index.column(), role == Qt::ToolTipRole);
    default:
        return {};
    }
}

// Says in words what the caller's picture shows.
QVariant CallGridModel::inWords(const Row &row, int column, bool asTip) const
{
    if (row.standing == core::Standing::Ordinary) {
        return {};
    }
    const QString word = m_texts.Lms(row.standing == core::Standing::Vip ? u"IFVIP"_s : u"IfInBlackList"_s);
    if (asTip) {
        return QString(word + u'\n' + m_texts.Lms(u"DoubleClickToAddPhoneNumber"_s));
    }
    const QString text = textOf(row, m_fieldOfColumn.at(static_cast<size_t>(column)));
    return column == GetGridColumn(u"CallerID"_s) ? QString(text + u", "_s + word) : text;
}

QVariant CallGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size()) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return int(Qt::AlignLeading | Qt::AlignVCenter);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    const QString &name = m_columns.at(section).name;
    const QString text = name == "ID"_L1 ? name : m_texts.Lms(name);
    return text.isEmpty() ? name : text;
}

void ShowEditor(core::Navigator &navigator, const QString &callerId, const QString &simpleDes,
                const std::optional<core::RowKey> &caller)
{
    if (caller) {
        navigator.Show_Editor(*caller);
    } else {
        navigator.addCaller(callerId, simpleDes);
    }
}

} // namespace mainwindow
