#pragma once

#include "core/CallRecord.h"
#include "core/TextLookup.h"

#include <QTime>

namespace lookup {

/// The fields of a call record that the popup reads; each names the popup's use of it.
struct PopupInfo
{
    QString AboutFirst;    ///< start of the caller line
    QTime time;            ///< as the unit tells it; invalid where it does not
    QString line;          ///< the one that was called
    QString AboutSecond;   ///< end of the caller line
    QString Content;       ///< the description
    QString SnText;        ///< the SN of the caller's row as text
    QString SnType;        ///< "CUSTOMER" or "PHONEBOOK"
    QString IfVIP;         ///< "Y" marks a VIP
    QString IfInBlackList; ///< "Y" marks a black-listed caller
};

/// The line that tells number and name.
QString callerLine(const QString &number, const QString &name);

PopupInfo popupInfoOf(const core::CallRecord &record);

/// What the popup shows, by the names of its controls, fit to be shown as plain text.
struct PopUpView
{
    core::Standing standing = core::Standing::Ordinary;
    QString callerNumber; ///< the two halves of the caller line
    QString callerName;
    QString callOnLine; ///< when the call came, and on which line
    QString txtSN;
    QString txtSnType;
    QString txtAbout;
    QString txtContent;
    QString lblBlackListNotice; ///< empty for an ordinary caller: the label is hidden
    QString earlierNotice;      ///< takes its place once another call rings
};

/// How long ago a call came; empty within the first minute.
QString ageText(qint64 seconds, const core::TextLookup &texts);

/// What the notes of a customer hold; `lastDate` is empty where there are none.
QString notesText(const QString &lastDate, int openRequests, const core::TextLookup &texts);

/// False when the caller is unknown or has no name, and for ordinary callers without `popupDetail`: a card
/// that stands is then left alone.
bool opensCard(const core::CallRecord &record, bool popupDetail);
PopUpView popUpViewOf(const PopupInfo &info, const core::TextLookup &texts);

} // namespace lookup
