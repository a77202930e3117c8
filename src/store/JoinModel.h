#pragma once

#include "core/RunLog.h"
#include "store/JoinReading.h"
#include "store/LockPause.h"

#include <QAbstractTableModel>
#include <QCache>
#include <QHash>
#include <QTimer>

namespace store {

/// Shows the result of a select over two joined tables in a grid, to be looked at only. The first page stands
/// at once; the rest of the keys is read on in slices while the program goes on. No lock is held on the file
/// meanwhile; a row is read when it is looked at, and shown empty while another program has locked the file.
class JoinModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// `name` is the procedure's that shows the result, as its errors stand in the run log.
    JoinModel(core::RunLog &log, QLatin1StringView name, QObject *parent = nullptr);

    /// Shows the result; the database must stay open as long as it is shown. Throws core::Error, and shows
    /// then what it showed before.
    void show(Database &database, const JoinSelect &select, const std::optional<QString> &group = {});
    /// Shows nothing; to be called before the database is closed.
    void clear();
    /// False while rows are still being found, and where that broke off.
    bool isComplete() const { return m_complete; }

    /// The heading of a column; one that has none shows its name.
    void setHeading(const QString &field, const QString &heading);
    /// The words that a yes/no column shows.
    void setYesNo(const QString &yes, const QString &no);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// A field of a row; null where there is no such row any more.
    QVariant field(int row, const QString &name) const;

Q_SIGNALS:
    /// All rows are known, or the reading broke off, which was logged.
    void readingEnded();

private:
    struct Keys
    {
        qint64 detail;
        qint64 master;
    };
    void readOn();
    QString shown(const QVariant &value) const;
    QVariantList rowAt(int row) const;

    core::RunLog &m_log;
    QLatin1StringView m_name;
    Database *m_database = nullptr;
    JoinSelect m_select;
    std::optional<JoinReading> m_reading;
    std::vector<Keys> m_keys;
    bool m_complete = false;
    mutable QCache<int, QVariantList> m_cache;
    mutable LockPause m_lockPause;
    QHash<QString, QString> m_headings; ///< by field name in lower case
    QString m_yes = QStringLiteral("Yes");
    QString m_no = QStringLiteral("No");
    QTimer m_timer;
};

} // namespace store
