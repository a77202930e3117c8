#pragma once

#include "RecordWriter.h"

#include <QDateTime>

namespace sim {

/// One datagram as the operator of the simulator asks for it. In every text "{n}" stands for the running
/// number of the datagram, and "{n:4}" for the same filled with zeros to four digits.
struct DatagramTemplate
{
    enum class Kind { None, Call, Cid, Detail, Message, ShutDown, ChannelStatus, Text };

    Kind kind = Kind::None;
    CallFields fields;
    bool timeIsNow = true; ///< fields.time is then the moment of sending
    QString text;          ///< of the message, the status or the raw text
    QString sendTo;
    CodePageChoice codePage;
};

QByteArray makeDatagram(const DatagramTemplate &wanted, qint64 n, const QDateTime &now);

/// Raw text: \r \n \t \\ are understood, and \x1B is one byte as it is, whatever the code page.
QByteArray rawText(QStringView text, const CodePageChoice &codePage);

} // namespace sim
