#pragma once

#include "core/Paths.h"
#include "core/RecordSave.h"
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
    std::optional<qint32> SN = {}; ///< none for an entry that is not in the table yet
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

/// What saving needs, and whom it tells; all of it must outlive the desk.
struct Desk
{
    const core::Paths &paths;
    core::RunLog &log;
    const core::TextLookup &texts;
    core::Server &server;
    std::function<void(const PhoneBookEntry &entry)> entrySaved; ///< what a saved entry causes elsewhere
};

/// What became of an entry, and how it stands on file after that.
struct SavedEntry : core::Saved
{
    PhoneBookEntry entry = {};
};

/// All that the save button does. Of a row that is on file only those fields are written that were typed,
/// unless somebody else has changed them too; what he has changed besides is taken over.
SavedEntry save(const Desk &desk, const PhoneBookEntry &loaded, const PhoneBookEntry &typed);
/// Writes what was typed in the list into the row of an entry, and no other field. Throws core::Error.
SavedEntry writeTyped(const QString &databaseFile, const PhoneBookEntry &loaded, const PhoneBookEntry &typed);
/// What the operator decided of a save that could not be made, for the next one.
void decide(const core::Saved &refused, core::Whose holds, PhoneBookEntry &loaded, PhoneBookEntry &typed);

/// The entry with another text in one column, by its name; a mark's text is its letter.
PhoneBookEntry withField(PhoneBookEntry entry, const QString &column, const QString &text);

/// What keeps the phone book from being used, for the operator; empty where its file is there and not locked.
QString obstacleText(const core::TextLookup &texts, const QString &databaseFile);
/// The same after something has failed: never empty.
QString troubleText(const core::TextLookup &texts, const QString &databaseFile);

} // namespace phonebook
