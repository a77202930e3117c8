#pragma once

#include "core/TextLookup.h"
#include "store/ResultModel.h"

#include <QLabel>
#include <QObject>
#include <QPushButton>
#include <QTimer>

#include <vector>

namespace appearance {

/// Deletes rows of a list and, as long as the list is open, puts them back: the last ones first, as a bar
/// offers. Many rows take several turns of the event loop, in which calls come in.
class RowRemoval : public QObject
{
    Q_OBJECT

public:
    /// Seen while there is something to put back.
    struct Bar
    {
        QWidget &frame;
        QLabel &text;
        QPushButton &undo;
    };
    struct Context
    {
        store::ResultModel &rows;
        const core::TextLookup &texts;
        QStringList nameFields; ///< what a row is called: the first of them that is not empty
    };

    RowRemoval(const Context &context, const Bar &bar);

    bool isBusy() const { return m_turns.isActive(); }
    /// The rows of these auto-numbers; those that the list no longer shows stay.
    void remove(const std::vector<qint64> &numbers);
    /// What was deleted last.
    void putBack();

Q_SIGNALS:
    void removed(qint32 sn, int row);
    /// So many were; not `whole`: the next one could not be, and those behind it were left alone.
    void removalEnded(int rows, bool whole);
    void restored(qint32 sn);
    void restoringEnded(int rows, bool whole);

private:
    bool removeNext();
    bool restoreNext();
    void workOn();
    void end(bool whole);
    void showBar();
    QString nameOf(const store::DeletedRow &row) const;

    Context m_context;
    Bar m_bar;
    std::vector<std::vector<store::DeletedRow>> m_deleted; ///< by each command, the last one behind
    std::vector<qint64> m_toRemove;                        ///< the first one behind
    bool m_restoring = false;
    int m_done = 0; ///< rows of the command at hand
    QTimer m_turns;
};

} // namespace appearance
