#pragma once

#include "core/RunLog.h"
#include "store/Database.h"
#include "store/LockPause.h"

#include <QAbstractTableModel>
#include <QCache>
#include <QHash>
#include <QTimer>

#include <optional>

namespace store {

/// The data control of a list: shows the rows of a select over one table in a grid. Only the keys of the rows
/// are held; a row is read when it is looked at, and shown empty while another program has locked the file.
/// Cells may be edited in place.
class RecordsetModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// `name` is the data control's, as it stands in the run log in front of its errors. The log must outlive
    /// the model.
    RecordsetModel(core::RunLog &log, QLatin1StringView name, QObject *parent = nullptr);
    ~RecordsetModel() override;

    /// From the next select on: a long search shows its first rows at once and finds the others from the
    /// event loop, with rows inserted at the end. Without this every select is read at once.
    void setReadsInSlices(bool slices) { m_inSlices = slices; }
    bool isReading() const { return m_reading.isActive(); }
    /// False also where the reading broke off.
    bool isComplete() const;

    /// Shows the rows of a select in the given words. False, with an entry in the run log, where that fails:
    /// the model then shows what it showed before.
    bool setRecordSource(const QString &databaseFile, const QString &select);
    /// Runs the last select anew, on the file as it now is.
    bool refresh();
    /// Another file has taken the place of the one whose rows are shown: nothing can be written, or deleted,
    /// before refresh().
    bool isReplaced() const;
    const QString &recordSource() const { return m_select; }
    const QString &databaseFile() const { return m_databaseFile; }

    /// The fields that make the first columns, whatever their order in the file, from the next select on; the
    /// others stand behind them.
    void setLeadingFields(const QStringList &fields) { m_leading = fields; }
    void setEditable(bool editable) { m_editable = editable; }
    /// The heading of a column; one that has none shows its name.
    void setHeading(const QString &field, const QString &heading);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// Writes the cell to the file at once; false, with an entry in the run log, where that fails.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    /// Deletes rows from the file, each on its own; stops at the first that fails.
    bool removeRows(int row, int count, const QModelIndex &parent = {}) override;

    /// The column of a field name, whatever its case; -1 without one.
    int columnOf(const QString &field) const;
    /// The field of a column.
    QString fieldAt(int column) const;
    /// The row with that auto-number; -1 where it is not shown.
    int rowOf(qint64 number) const;
    /// A field of a row; null where there is no such row any more.
    QVariant field(int row, const QString &name) const;

Q_SIGNALS:
    /// After a cell was written by setData().
    void changedInPlace();
    /// All rows are known, or the reading broke off, which was logged; not for what was read at once.
    void readingEnded();

protected:
    core::RunLog &log() { return m_log; }
    QLatin1StringView name() const { return m_name; }
    /// The row was written elsewhere in the program: it is read anew when it is looked at.
    void forgetRow(int row);

private:
    struct Rows;
    QVariantList rowAt(int row) const;
    void readOn();
    void arrangeColumns();

    core::RunLog &m_log;
    QLatin1StringView m_name;
    QString m_databaseFile;
    QString m_select;
    std::unique_ptr<Rows> m_rows;
    mutable QCache<int, QVariantList> m_cache;
    mutable LockPause m_lockPause;
    QHash<QString, QString> m_headings; ///< by field name in lower case
    QStringList m_leading;
    QList<int> m_fieldOf; ///< of each column: the field's place in the row
    bool m_editable = false;
    bool m_inSlices = false;
    QTimer m_reading; ///< runs while rows of a search are still to be found
};

} // namespace store
