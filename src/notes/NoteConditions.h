#pragma once

#include "core/RunLog.h"

#include <QDateTime>
#include <QString>

namespace notes {

/// What the manager searches by; an empty text asks for nothing. Texts are trimmed here.
struct NoteConditions
{
    QString fixedCustomer; ///< restricts every search to this customer; empty: to none
    QString callId;
    QString customerName;
    QString consultant;
    QDateTime start; ///< start and end bound the whole range, not the hours of each day
    QDateTime end;
    QString content;
    QString request;
    QString response;
    QString note;
    int ifResolved = 0; ///< place in the list: 0 any, 1 yes, 2 no
};

/// The days on which calls were noted.
struct NoteDays
{
    QDate first;
    QDate last;
};

/// From the first call on file to the last one, today among them. A day is invalid, and everything is to be
/// searched on its side, where the file cannot be read or such a call has no date in its usual form.
NoteDays daysOfNotes(core::RunLog &log, const QString &customerFile, QDate today);

/// The search as a select; empty after a failure.
QString MakeCondition(core::RunLog &log, const NoteConditions &conditions);

} // namespace notes
