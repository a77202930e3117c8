#pragma once

#include "store/SlicedReading.h"

#include <QDateTime>
#include <QString>

namespace notes {

/// What stands in the call note editor, all texts trimmed.
struct NoteEntry
{
    QString callId;
    QString customerName;
    QDateTime dateAndTime;
    QString consultant;
    QString content;
    QString request;
    QString response;
    QString note;
    int ifResolved = 0; ///< the check box's value, 0 or 1
};

/// The columns of a call's row that change while it is kept.
struct CallFields
{
    QString customerName;
    QString consultant;
    QString content;
};

/// The call identifier minted when an editor opens.
QString newCallId(const QDateTime &now);

/// All entries of one customer's calls.
QString noteQuery(const QString &customerName);
QString customerQuery(const QString &customerName);
QString callQuery(const QString &callId);
/// The call's row for its content; reads "Select".
QString contentQuery(const QString &callId);
QString callInsert(const NoteEntry &entry);
QString callUpdate(const NoteEntry &entry);
QString requestInsert(const NoteEntry &entry);
QString customerRename(const QString &oldName, const QString &newName);

/// How the two tables of call notes belong together; with a customer where a query asks for him alone.
store::JoinTables noteTables(const std::optional<QString> &customer);

} // namespace notes
