#pragma once

#include "core/RunLog.h"
#include "store/Database.h"
#include "store/SlicedReading.h"

#include <QAbstractTableModel>
#include <QCache>
#include <QHash>
#include <QTimer>

#include <memory>
#include <optional>

namespace store {

/// A row of a table as it was deleted.
struct DeletedRow
{
    qint64 number = 0; ///< its auto-number
    QList<std::pair<QString, QVariant>> fields;
};

/// Shows in a grid the rows of a table, of a select over one, or of one over two joined tables. The first
/// page stands at once; the others are found from the event loop, and between two slices of that no lock is
/// held on the file. Of a whole table all rows are counted from the second page on, so that a scroll bar
/// tells the truth; one that is still to be found is empty and cannot be chosen. Where the same table is
/// shown anew, its rows stay until those of the file are found. Only the keys of the rows are kept: a row is
/// read when it is looked at, and shown empty while another program has locked the file. Cells of one table
/// may be edited in place.
class ResultModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// What keeps rows from being shown.
    enum class Trouble {
        None,
        Locked,  ///< by another program; what is being read goes on by itself when the lock is over
        TooLong, ///< a text that is searched for
        Unreadable,
    };

    /// `name` is the data control's, or the procedure's that shows the result, as it stands in the run log in
    /// front of its errors. The log must outlive the model.
    ResultModel(core::RunLog &log, QLatin1StringView name, QObject *parent = nullptr);
    ~ResultModel() override;

    /// Shows the rows of a table, or of a select in the given words. False, with an entry in the run log,
    /// where that fails: the model then shows what it showed before.
    bool setRecordSource(QString databaseFile, QString tableOrSelect);
    /// The same for a select over two joined tables. The file stays open until clear().
    bool setRecordSource(Database &database, const QString &select, const JoinTables &tables);
    /// A lock kept the file from being opened: lockEnded() comes as after a select that failed by it.
    void awaitLock(const QString &databaseFile);
    /// Shows nothing.
    void clear();
    /// Runs the last select on a file anew, as that now is.
    bool refresh();
    /// Another file has taken the place of the one whose rows are shown: nothing can be written, or deleted,
    /// before refresh().
    bool isReplaced() const;
    const QString &recordSource() const { return m_source; }
    /// The file that was last asked for rows.
    const QString &databaseFile() const { return m_databaseFile; }

    /// Rows are still to be found.
    bool isReading() const;
    /// False while rows are still to be found, and where that broke off.
    bool isComplete() const;
    /// Of what was last tried.
    Trouble trouble() const { return m_trouble; }

    /// The fields that make the first columns, whatever their order in the file, from the next select on; the
    /// others stand behind them.
    void setLeadingFields(const QStringList &fields) { m_leading = fields; }
    void setEditable(bool editable) { m_editable = editable; }
    /// The heading of a column; one that has none shows its name.
    void setHeading(const QString &field, const QString &heading);
    /// The words that a yes/no column shows.
    void setYesNo(const QString &yes, const QString &no);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// Writes the cell to the file at once; false, with an entry in the run log, where that fails.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    /// Deletes a row of a table from the file; nothing, with an entry in the run log, where that fails, and
    /// where there is no such row.
    std::optional<DeletedRow> deleteRow(int row);
    /// Writes a deleted row anew, with its number or, where another row has that by now, a new one, which it
    /// returns; nothing, with an entry in the run log, where that fails. The list shows it once it is
    /// refreshed.
    std::optional<qint64> putBack(const DeletedRow &row);

    /// The column of a field name, whatever its case; -1 without one.
    int columnOf(const QString &field) const;
    /// The field of a column.
    QString fieldAt(int column) const;
    /// The auto-number of a row of a table; nothing where it is still to be found.
    std::optional<qint64> numberOf(int row) const;
    /// The row of a table with that auto-number; -1 where it is not shown.
    int rowOf(qint64 number) const;
    /// A field of a row; null where there is no such row any more.
    QVariant field(int row, const QString &name) const;

Q_SIGNALS:
    /// Some more rows are known; not for what was read at once.
    void rowsFound();
    /// All rows are known, or the reading broke off, which was logged; not for what was read at once.
    void readingEnded();
    /// The reading waits for another program's lock.
    void readingHeldUp();
    /// A lock, for which the last select failed, may be over: it is worth another try.
    void lockEnded();

protected:
    core::RunLog &log() { return m_log; }
    QLatin1StringView name() const { return m_name; }
    /// The row was written elsewhere in the program: it is read anew when it is looked at.
    void forgetRow(int row);

private:
    struct Rows;
    struct Keys;
    bool show(const std::function<std::unique_ptr<Rows>()> &open, bool again);
    bool attempt(const std::function<void()> &work) const;
    void countAll();
    void readOn();
    bool takeFound();
    void dropUnfound();
    void insert(size_t place, const std::vector<Keys> &keys);
    void drop(size_t first, size_t end);
    void endPause();
    void arrangeColumns();
    QVariantList rowAt(int row) const;

    core::RunLog &m_log;
    QLatin1StringView m_name;
    QString m_databaseFile;
    QString m_source;
    std::unique_ptr<Rows> m_rows;
    mutable QCache<int, QVariantList> m_cache;
    mutable Trouble m_trouble = Trouble::None;
    bool m_selectFailed = false;
    mutable QTimer m_pause; ///< after a lock, in which nothing is read: each row would wait for it anew
    QTimer m_reading;       ///< runs while rows are to be found
    QHash<QString, QString> m_headings; ///< by field name in lower case
    QString m_yes = QStringLiteral("Yes");
    QString m_no = QStringLiteral("No");
    QStringList m_leading;
    QList<int> m_fieldOf; ///< of each column: the field's place in the row
    bool m_editable = false;
};

/// The key of the text that tells the operator; `unreadable` where neither a lock nor his text is to blame.
QString troubleKey(ResultModel::Trouble trouble, const QString &unreadable);

} // namespace store
