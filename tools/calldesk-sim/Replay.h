#pragma once

#include "RecordWriter.h"

#include <QList>

namespace sim {

/// What a run log or a capture holds to be sent again.
struct Replay
{
    QList<QByteArray> datagrams;
    qint64 leftOut = 0;   ///< log entries that are no datagram, or the second entry of one
    qint64 shutDowns = 0; ///< left out as well: they would end the program in the middle of the replay
};

/// A file with at least one line that begins with "<YYYY-MM-DD HH:MM:SS>  " is a run log (UTF-8). Of it every
/// entry is taken that is a datagram of a known kind, written anew in `codePage`. In any other file each line
/// that is not empty is one datagram, sent byte for byte. In both the symbols U+240D and U+240A stand for CR
/// and LF.
Replay readReplay(const QByteArray &file, const CodePageChoice &codePage);

/// One line of a capture: `datagram` with its CR and LF as symbols.
QByteArray captureLine(const QByteArray &datagram);

} // namespace sim
