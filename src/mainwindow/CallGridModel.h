#pragma once

#include "core/CallRecord.h"
#include "core/Navigator.h"
#include "core/ProcessValues.h"
#include "core/RunLog.h"
#include "core/Settings.h"
#include "core/TextLookup.h"
#include "mainwindow/GridColumns.h"

#include <QAbstractTableModel>
#include <QStringList>

#include <optional>
#include <vector>

namespace mainwindow {

/// The calls of the caller-ID grid, newest first, in a ring of MaxGridRows - 1 rows: a new call overwrites
/// the oldest and moves nothing. Cells are found by their column's name.
class CallGridModel : public QAbstractTableModel
{
public:
    /// Item data role: the caller's core::Standing.
    static constexpr int StandingRole = Qt::UserRole;

    CallGridModel(core::Settings &settings, const core::ProcessValues &values, const core::TextLookup &texts,
                  core::RunLog &log);

    /// Builds the columns from the settings; those of an unusable list are the defaults, which the run log
    /// then says.
    void iniGridCallerID_tarn();
    /// Adds one call as the newest. Views see it with the next publish().
    void ShowCallerID_tarn(const core::CallRecord &record);
    /// Adds one call below so many newer ones; views see it at once.
    void showEarlierCall(const core::CallRecord &record, int newerCalls);
    /// Gives the rows that show `shown` what is known of the call by now.
    void showCallAgain(const core::CallRecord &shown, const core::CallRecord &now);
    /// Tells the views of the calls added since, all at once, so that a burst costs one repaint.
    void publish();

    /// The column of that name, -1 for an unknown one.
    int GetGridColumn(const QString &name) const;
    /// Stores an edited order, widths and visibility in the settings, saves them and rebuilds the columns.
    /// False where nothing could be saved.
    bool ChangeGridCfg(const QList<GridColumn> &columns);

    /// Stores one column's width as the operator has drawn it, and saves it.
    void setColumnWidth(int column, int twips);

    const QList<GridColumn> &columns() const { return m_columns; }
    /// The text of the named column in a row; empty outside the grid.
    QString cell(int row, const QString &columnName) const;
    /// Who called, where he is on file.
    std::optional<core::RowKey> callerOf(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    /// What the columns show of a call. Made fit for the screen only when it is looked at: of a flood most
    /// rows never are.
    struct Row
    {
        QString channel;
        QString callerId;
        QString simpleDes;
        QString incomingTime;
        qint32 sn = 0;
        QString lineNo;
        QString source;
        QString snText;
        core::Standing standing = core::Standing::Ordinary;

        bool operator==(const Row &) const = default;
    };

    static Row rowOf(const core::CallRecord &record);
    static QString textOf(const Row &row, qsizetype field);
    const Row &published(int row) const;
    QVariant inWords(const Row &row, int column, bool asTip) const;
    size_t capacity() const;

    core::Settings &m_settings;
    const core::ProcessValues &m_values;
    const core::TextLookup &m_texts;
    core::RunLog &m_log;
    QList<GridColumn> m_columns;
    QStringList GridColumnNames;
    std::vector<qsizetype> m_fieldOfColumn; ///< its place among gridColumnNames()
    std::vector<Row> m_ring;
    size_t m_newest = 0; ///< place in the ring
    size_t m_added = 0;  ///< calls since the last publish()
    int m_published = 0; ///< rows that the views know
};

/// Opens what a double-click on a grid row opens: the editor of a known caller, for an unknown one the
/// dialog that files the number.
void ShowEditor(core::Navigator &navigator, const QString &callerId, const QString &simpleDes,
                const std::optional<core::RowKey> &caller);

} // namespace mainwindow
