#pragma once

#include "core/CallRecord.h"
#include "core/TextLookup.h"

#include <QTime>

#include <optional>

namespace lookup {

/// What the card reads of a call record; the names say what for.
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

/// What the card shows, some of it by the names of its controls, all of it fit to be shown as plain text.
struct CardView
{
    core::Standing standing = core::Standing::Ordinary;
    QString callerNumber; ///< the two halves of the caller line
    QString callerName;
    QString callOnLine; ///< when the call came, and on which line
    std::optional<core::RowKey> caller;
    QString txtAbout;
    QString txtContent;
    QString lblBlackListNotice; ///< empty for an ordinary caller: the label is hidden
    QString earlierNotice;      ///< takes its place once another call rings
};

/// How long ago a call came; empty within the first minute.
QString ageText(qint64 seconds, const core::TextLookup &texts);

/// What the notes of a customer hold; `lastDate` is empty where there are none.
QString notesText(const QString &lastDate, int openRequests, const core::TextLookup &texts);

/// Whether a call opens the card. One from an unknown caller or without a name does not, and one from an
/// ordinary caller only with `ordinaryToo`. A card that stands is then left alone.
bool opensCard(const core::CallRecord &record, bool ordinaryToo);
CardView cardViewOf(const PopupInfo &info, const core::TextLookup &texts);

} // namespace lookup
