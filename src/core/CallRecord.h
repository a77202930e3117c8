#pragma once

#include "core/RowKey.h"

#include <QString>

namespace core {

/// One received caller-ID record. A field that the datagram lacks is empty. Every text comes from a stranger.
struct CallRecord
{
    QString CallerID;      ///< the calling number as the unit delivers it
    QString IncomingTime;  ///< "YYYY-MM-DD HH:MM:SS", kept as text
    QString Channel;       ///< port number of the unit
    QString LineNo;        ///< the called line's number or name
    QString SimpleDes;     ///< a short name for the caller
    QString DetailDes;     ///< parameter block "DETAILDES"
    QString SnText;        ///< the digits of the sender's match
    QString Source;        ///< "PHONEBOOK", "CUSTOMER", or empty without a match
    qint32 SN = 0;         ///< the value of SnText, 0 without one
    QString IfVIP;         ///< "Y" marks a VIP
    QString IfInBlackList; ///< "Y" marks a black-listed caller
    QString RawCid;        ///< parameter block "RAWCID"
    QString Tail;     ///< the previous call: 16 characters of time, 8 of extension, 15 of number; not trimmed
    QString SenderIp; ///< the unit or server that made the record
};

/// The row that the caller is matched with; none for an unknown one.
inline std::optional<RowKey> rowKeyOf(const CallRecord &record)
{
    return rowKeyOf(QString(record.Source + record.SnText));
}

/// What sets a caller apart, as the sender marks it.
enum class Standing { Ordinary, Vip, BlackListed };

/// By the marks as they stand: only a capital "Y" counts, and the black list wins over VIP.
inline Standing standingOf(const QString &ifVip, const QString &ifInBlackList)
{
    constexpr QLatin1Char marked('Y');
    if (ifInBlackList == marked) {
        return Standing::BlackListed;
    }
    return ifVip == marked ? Standing::Vip : Standing::Ordinary;
}

} // namespace core
