#include "phonebook/PhoneBookEntry.h"

#include "core/TextUtilities.h"
#include "store/Database.h"
#include "store/SqlTokens.h"

#include <QFileInfo>

#include <array>

using namespace Qt::StringLiterals;

namespace phonebook {

namespace {

store::Recordset openTable(store::Database &database)
{
    store::Recordset table = database.OpenRecordset(u"Phonebook"_s);
    table.setIndex(u"SN"_s);
    return table;
}

using StoredFields = std::array<std::pair<QString, QString>, 5>;

// The columns of an entry as they are written.
StoredFields storedFields(const PhoneBookEntry &entry)
{
    return {{{u"Telno"_s, entry.Telno.trimmed()},
             {u"simpledes"_s, entry.simpledes},
             {u"detaildes"_s, entry.detaildes},
             {u"ifinblacklist"_s, markLetter(entry.ifinblacklist)},
             {u"IfVIP"_s, markLetter(entry.IfVIP)}}};
}

PhoneBookEntry entryOf(const store::Recordset &row)
{
    PhoneBookEntry entry{.SN = row.value(u"SN"_s).toInt()};
    for (const auto &[column, unused] : storedFields({})) {
        entry = withField(entry, column, core::NullToEmpty(row.value(column)).toString());
    }
    return entry;
}

QList<core::FieldEdit> editsOf(const PhoneBookEntry &loaded, const PhoneBookEntry &typed,
                               const PhoneBookEntry &onFile)
{
    const StoredFields read = storedFields(loaded);
    const StoredFields wanted = storedFields(typed);
    const StoredFields there = storedFields(typed.SN ? onFile : loaded);
    QList<core::FieldEdit> edits;
    for (size_t place = 0; place < read.size(); ++place) {
        edits.append({.column = read.at(place).first,
                      .read = read.at(place).second,
                      .shown = read.at(place).second,
                      .wanted = wanted.at(place).second,
                      .onFile = there.at(place).second});
    }
    return edits;
}

enum class Fields { All, Typed };

// Reads the row again under the same lock that it writes under, so that no other desk comes in between.
SavedEntry write(const QString &databaseFile, const PhoneBookEntry &loaded, const PhoneBookEntry &typed,
                 Fields fields)
{
    SavedEntry saved;
    store::Database database(databaseFile);
    database.transaction([&] {
        store::Recordset table = openTable(database);
        saved.gone = typed.SN && !table.Seek(*typed.SN);
        if (saved.gone) {
            return;
        }
        QList<core::FieldEdit> edits = editsOf(loaded, typed, typed.SN ? entryOf(table) : PhoneBookEntry());
        saved.disputed = core::disputed(edits);
        if (!saved.disputed.isEmpty()) {
            return;
        }
        if (fields == Fields::Typed && typed.SN) {
            edits.removeIf([](const core::FieldEdit &edit) { return !edit.isTyped(); });
        }
        typed.SN ? table.Edit() : table.AddNew();
        table.setFields(edits);
        table.Update();
        saved.entry = entryOf(table);
        saved.written = true;
    });
    return saved;
}

// Once the row is in the table it counts as saved, whatever happens to the rest: told otherwise, the operator
// would save it twice.
SavedEntry SaveSimplePhoneBook(const Desk &desk, const PhoneBookEntry &loaded, const PhoneBookEntry &typed)
{
    SavedEntry saved;
    const bool succeeded = desk.log.trap("SaveSimplePhoneBook"_L1, [&] {
        saved = write(desk.paths.PhoneBookFile, loaded, typed, Fields::All);
        if (saved.written) {
            desk.entrySaved(saved.entry);
            desk.server.SendServer(u"REFRESHSIMPLEPHONEBOOK"_s);
        }
    });
    if (!succeeded && !saved.written) {
        saved.message =
            desk.texts.Lms(u"EntryNotSaved"_s) + u'\n' + troubleText(desk.texts, desk.paths.PhoneBookFile);
    }
    return saved;
}

} // namespace

QString markLetter(Qt::CheckState state)
{
    switch (state) {
    case Qt::Checked:
        return u"Y"_s;
    case Qt::PartiallyChecked:
        return u"G"_s;
    case Qt::Unchecked:
        break;
    }
    return u"N"_s;
}

Qt::CheckState markState(const QString &letter)
{
    if (letter == u'G') {
        return Qt::PartiallyChecked;
    }
    return letter == u'Y' ? Qt::Checked : Qt::Unchecked;
}

QString allEntriesQuery()
{
    return u"select * from phonebook order by Simpledes"_s;
}

QString searchQuery(const QString &text)
{
    const QString words = store::quoted(text);
    return u"Select * from phonebook where  telno like '*"_s + words + u"*' or simpledes like '*"_s + words +
           u"*' or detaildes like '*"_s + words + u"*'"_s;
}

std::optional<PhoneBookEntry> entryBySn(const QString &databaseFile, qint32 sn)
{
    store::Database database(databaseFile);
    store::Recordset table = openTable(database);
    return table.Seek(sn) ? std::optional(entryOf(table)) : std::nullopt;
}

SavedEntry save(const Desk &desk, const PhoneBookEntry &loaded, const PhoneBookEntry &typed)
{
    if (typed.Telno.trimmed().isEmpty()) {
        SavedEntry refused;
        refused.wrongField = u"Telno"_s;
        refused.message = desk.texts.Lms(u"PhoneNumbersCantbeBlank"_s);
        return refused;
    }
    return SaveSimplePhoneBook(desk, loaded, typed);
}

SavedEntry writeTyped(const QString &databaseFile, const PhoneBookEntry &loaded, const PhoneBookEntry &typed)
{
    return write(databaseFile, loaded, typed, Fields::Typed);
}

void decide(const core::Saved &refused, core::Whose holds, PhoneBookEntry &loaded, PhoneBookEntry &typed)
{
    if (refused.gone && holds == core::Whose::Mine) {
        typed.SN.reset(); // it is filed anew
    }
    for (const core::FieldEdit &edit : refused.disputed) {
        loaded = withField(loaded, edit.column, edit.onFile.toString());
        if (holds == core::Whose::Theirs) {
            typed = withField(typed, edit.column, edit.onFile.toString());
        }
    }
}

PhoneBookEntry withField(PhoneBookEntry entry, const QString &column, const QString &text)
{
    const auto is = [&column](QLatin1StringView name) {
        return name.compare(column, Qt::CaseInsensitive) == 0;
    };
    if (is("Telno"_L1)) {
        entry.Telno = text;
    } else if (is("simpledes"_L1)) {
        entry.simpledes = text;
    } else if (is("detaildes"_L1)) {
        entry.detaildes = text;
    } else if (is("ifinblacklist"_L1)) {
        entry.ifinblacklist = markState(text);
    } else if (is("IfVIP"_L1)) {
        entry.IfVIP = markState(text);
    }
    return entry;
}

QString obstacleText(const core::TextLookup &texts, const QString &databaseFile)
{
    if (!QFileInfo(databaseFile).isFile()) {
        return texts.Lms(u"PhoneBookMissing"_s);
    }
    return store::isLocked(databaseFile) ? texts.Lms(u"HeldElsewhere"_s) : QString();
}

QString troubleText(const core::TextLookup &texts, const QString &databaseFile)
{
    const QString obstacle = obstacleText(texts, databaseFile);
    return obstacle.isEmpty() ? texts.Lms(u"PhoneBookUnusable"_s) : obstacle;
}

} // namespace phonebook
