#pragma once

#include "core/CallRecord.h"
#include "core/CodePage.h"

#include <QString>

namespace reception {

enum class DatagramKind { ShortCid, Detail, SmallMessage, ShutDown, ChannelStatus, CallerId, Unknown };

/// A "CID" record: the number and the name only.
struct ShortCidRecord
{
    QString number;
    QString name;
};

/// A "DETAILDES" record: the detailed description of a caller.
struct DetailRecord
{
    QString Channel;
    QString IncomingTime;
    QString LineNo;
    QString CallerID;
    QString SimpleDes;
    QString DetailDes;
};

/// The parsers never fail: whatever a datagram lacks reads as empty text.
DatagramKind kindOf(QStringView text);
core::CallRecord parseCallRecord(const core::DatagramText &datagram);
ShortCidRecord parseShortCid(const core::DatagramText &datagram);
DetailRecord parseDetail(const core::DatagramText &datagram);

/// The caller number by which the popup filter looks a call up: characters 78 to 107, trimmed.
QString callerNumberByCharacters(QStringView text);

/// The value of a parameter block such as {RAWCID:[123]}; empty for an absent key. The first "]" behind the
/// key ends the value.
QString GetTcpCmdPara(QStringView text, QLatin1StringView key);

/// The text of the last-caller box; `area` is the place of the caller's number, empty when unknown.
QString lastCallerText(const core::CallRecord &record, const QString &area);

/// How the program understood a datagram, field by field, one line each; for whoever connects a new unit.
QString describeDatagram(const core::DatagramText &datagram);

} // namespace reception
