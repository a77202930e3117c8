#include "phonebook/PhoneBookEntry.h"

#include "core/TextUtilities.h"
#include "store/Database.h"
#include "store/SqlDialect.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace phonebook {

namespace {

store::Recordset openTable(store::Database &database)
{
    store::Recordset table = database.OpenRecordset(u"Phonebook"_s);
    table.setIndex(u"SN"_s);
    return table;
}

QString writeEntry(const QString &databaseFile, const PhoneBookEntry &entry)
{
    store::Database database(databaseFile);
    store::Recordset table = openTable(database);
    if (table.Seek(entry.SN)) {
        table.Edit();
    } else {
        table.AddNew();
    }
    table.setValue(u"Telno"_s, entry.Telno.trimmed());
    table.setValue(u"simpledes"_s, entry.simpledes);
    table.setValue(u"detaildes"_s, entry.detaildes);
    table.setValue(u"ifinblacklist"_s, markLetter(entry.ifinblacklist));
    table.setValue(u"IfVIP"_s, markLetter(entry.IfVIP));
    table.Update();
    return table.value(u"SN"_s).toString();
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
    if (!table.Seek(sn)) {
        return {};
    }
    const auto text = [&table](const QString &field) {
        return core::NullToEmpty(table.value(field)).toString();
    };
    return PhoneBookEntry{.SN = text(u"SN"_s),
                          .Telno = text(u"Telno"_s),
                          .simpledes = text(u"simpledes"_s),
                          .detaildes = text(u"detaildes"_s),
                          .ifinblacklist = markState(text(u"ifinblacklist"_s)),
                          .IfVIP = markState(text(u"IfVIP"_s))};
}

// A row that stands in the table is saved, whatever becomes of what follows: telling the operator otherwise
// would make him save it twice.
QString SaveSimplePhoneBook(core::RunLog &log, const QString &databaseFile, const PhoneBookEntry &entry,
                            const AfterSave &after)
{
    QString sn;
    log.trap("SaveSimplePhoneBook"_L1, [&] {
        sn = writeEntry(databaseFile, entry);
        after.rebindList(sn.toInt());
        after.server.SendServer(u"REFRESHSIMPLEPHONEBOOK"_s);
    });
    return sn;
}

QString obstacleText(const core::TextLookup &texts, const QString &databaseFile)
{
    if (!QFileInfo(databaseFile).isFile()) {
        return texts.Lms(u"PhoneBookMissing"_s);
    }
    return store::isLocked(databaseFile) ? texts.Lms(u"PhoneBookLocked"_s) : QString();
}

QString troubleText(const core::TextLookup &texts, const QString &databaseFile)
{
    const QString obstacle = obstacleText(texts, databaseFile);
    return obstacle.isEmpty() ? texts.Lms(u"PhoneBookUnusable"_s) : obstacle;
}

} // namespace phonebook
