#pragma once

#include "core/CallRecord.h"
#include "core/TextLookup.h"

#include <QTime>

#include <optional>

namespace lookup {

/// The fields of a call record that the popup reads; each names the popup's use of it.
struct PopupInfo
{
    QString AboutFirst;    ///< start of the caller line
    QTime time;            ///< as the unit tells it; invalid where it does not
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
    QString callerNumber; ///< the two halves of the caller line, for the card's head
    QString callerName;
    QString txtSN;
    QString txtSnType;
    QString txtAbout;
    QString txtContent;
    QString lblBlackListNotice; ///< empty for an ordinary caller: the label is hidden
    QString earlierNotice;      ///< takes its place once another call rings
};

/// Empty when the caller is unknown or has no name, and for ordinary callers without `popupDetail`: a popup
/// that stands is then left alone.
std::optional<PopUpView> decidePopUp(const PopupInfo &info, bool popupDetail, const core::TextLookup &texts);

} // namespace lookup
