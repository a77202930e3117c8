#pragma once

#include "RecordWriter.h"

namespace sim {

/// An option that fills one field of a record.
struct FieldOption
{
    const char *name;
    const char *valueName;
    const char *description;
    QString CallFields::*field;
};

struct PlainOption
{
    const char *name;
    const char *valueName; ///< empty: takes no value
    const char *description;
};

/// What a datagram is made of: allowed on the command line and in a scene.
inline constexpr FieldOption fieldOptions[] = {
    {"number", "digits", "Caller's number, at most 30 columns.", &CallFields::number},
    {"line", "text", "Called line's number or name, 28 columns (default 5550100).", &CallFields::line},
    {"channel", "digits", "Port of the unit, columns 23 to 30 (default 001).", &CallFields::channel},
    {"time", "text", "Time of the call, YYYY-MM-DD HH:MM:SS (default: now).", &CallFields::time},
    {"name", "text", "Short name of the caller, 30 columns.", &CallFields::name},
    {"match", "key", "Sender's match: 12 is customer 12, SPB12 phone book entry 12.", &CallFields::match},
    {"ip", "address", "Unit's address as told in the record (default 127.0.0.1).", &CallFields::ip},
    {"black-list", "mark", "Black-list mark; Y when no mark is given.", &CallFields::blackList},
    {"vip", "mark", "VIP mark; Y when no mark is given.", &CallFields::vip},
    {"tail-time", "text", "Time of the caller's previous call, YYYY-MM-DD HH:MM.", &CallFields::tailTime},
    {"tail-ext", "digits", "Extension of the previous call, 8 columns.", &CallFields::tailExt},
    {"tail-tel", "digits", "Telephone number of the previous call, 15 columns.", &CallFields::tailTel},
};

inline constexpr PlainOption datagramOptions[] = {
    {"raw-cid", "digits", "Raw decoded digits, in a parameter block."},
    {"detail", "text", "Long description of the caller, in a parameter block."},
    {"kind", "kind", "Record: call (default), cid (short record), detail (detail record)."},
    {"message", "text", "Send a short message."},
    {"to", "name", "Who gets the short message (default ALL)."},
    {"shutdown", "", "Send SHUTDOWNALL: the program ends without asking."},
    {"channel-status", "text", "Send a channel status report."},
    {"text", "text", "Send this text as it stands; \\r \\n \\t \\\\ and \\x1B are understood."},
    {"say", "text", "Print this when the datagram is sent."},
    {"code-page", "page", "utf-8 (default) or a Windows code page such as 936."},
};

/// Where it is sent and when: on the command line only.
inline constexpr PlainOption runOptions[] = {
    {"host", "host", "Where the program runs (default 127.0.0.1)."},
    {"port", "port", "The program's UDP port (default 1972)."},
    {"from", "address", "Own address to send from; 127.0.0.2 acts as a second unit."},
    {"count", "n", "How many datagrams (default 1, or one burst)."},
    {"first", "n", "What {n} is in the first datagram (default 1)."},
    {"rate", "n", "Datagrams a second; 0: as fast as possible (default 0, with --replay 10)."},
    {"burst", "n", "Send n at once each time; the rate holds in the mean."},
    {"replay", "file", "Send the datagrams of a run log, or of a capture (one a line)."},
    {"scene", "file", "Play a scene file."},
    {"listen", "port", "Print what the program sends to this port (default 1971), and send from it."},
    {"seconds", "n", "How long to listen after the last datagram (default: until Ctrl+C)."},
    {"print", "", "Write the datagrams to standard output, one a line, instead of sending them."},
    {"quiet", "", "No report at the end."},
};

/// Stands below the options in the help text.
extern const char helpNotes[];

} // namespace sim
