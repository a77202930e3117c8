#pragma once

#include "core/RunLog.h"
#include "core/Server.h"
#include "core/TextLookup.h"

#include <QString>

#include <functional>
#include <optional>

namespace phonebook {

/// A mark of an entry as the table holds it: "Y", "G" for undecided, else "N".
QString markLetter(Qt::CheckState state);
/// Anything but "Y" and "G" counts as unmarked.
Qt::CheckState markState(const QString &letter);

/// One entry as the operator sees it; the members bear the names of the table's columns.
struct PhoneBookEntry
{
    QString SN = {}; ///< empty for an entry that is not in the table yet
    QString Telno = {};
    QString simpledes = {};
    QString detaildes = {};
    Qt::CheckState ifinblacklist = Qt::Unchecked;
    Qt::CheckState IfVIP = Qt::Unchecked;

    bool operator==(const PhoneBookEntry &) const = default;
};

/// The whole phone book, sorted by description.
QString allEntriesQuery();
/// The entries that hold `text` in their number or in one of their descriptions.
QString searchQuery(const QString &text);

/// Empty when no row has that SN. Throws core::Error.
std::optional<PhoneBookEntry> entryBySn(const QString &databaseFile, qint32 sn);

/// Whom a save tells of it.
struct AfterSave
{
    std::function<void(qint32 sn)> rebindList; ///< shows the whole phone book anew where its list is open
    core::Server &server;
};

/// Writes the entry into the row of its SN, or into a new row where there is none. The SN of the row; empty,
/// with an entry in the run log, where nothing was written.
QString SaveSimplePhoneBook(core::RunLog &log, const QString &databaseFile, const PhoneBookEntry &entry,
                            const AfterSave &after);

/// What keeps the phone book from being used, for the operator; empty where its file is there and not locked.
QString obstacleText(const core::TextLookup &texts, const QString &databaseFile);
/// The same after something has failed: never empty.
QString troubleText(const core::TextLookup &texts, const QString &databaseFile);

} // namespace phonebook
