#include "DeskFiles.h"

#include "core/Error.h"
#include "store/Database.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace mkdesk {

namespace {

void addRow(store::Recordset &rows, const QStringList &columns, const QStringList &values)
{
    rows.AddNew();
    for (qsizetype i = 0; i < columns.size(); ++i) {
        rows.setValue(columns.at(i), values.at(i));
    }
    rows.Update();
}

// Rows whose columns are named as in the database.
std::function<void(store::Database &)> fillWith(const QString &tableName, core::TsvTable table)
{
    return [tableName, table = std::move(table)](store::Database &database) {
        store::Recordset rows = database.OpenRecordset(tableName);
        for (const QStringList &row : table.rows) {
            addRow(rows, table.columns, row);
        }
    };
}

// The user's own translation starts as the English texts, so that every key is there to be translated.
core::TsvTable ownTranslation(const core::TsvTable &texts)
{
    core::TsvTable own;
    own.columns = QStringList{u"item"_s, u"userlanguage"_s, u"english"_s};
    for (const QStringList &row : texts.rows) {
        const QString english = texts.field(row, u"ENG"_s);
        own.rows.append({texts.field(row, u"id"_s), english, english});
    }
    return own;
}

core::TsvTable helpPages(const DeskSources &sources, const QString &code)
{
    core::TsvTable pages;
    pages.columns = QStringList{u"HelpID"_s, u"Help"_s};
    for (const QString &id : sources.helpIds(code)) {
        pages.rows.append({id, sources.text(u"help/%1/%2.txt"_s.arg(code, id))});
    }
    return pages;
}

void makeFolderOf(const QString &path)
{
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder)) {
        throw core::Error(0, u"cannot make the folder "_s + folder);
    }
}

} // namespace

QList<DeskFile> deskFiles(const DeskSources &sources, bool sample)
{
    const core::TsvTable texts = sources.languageTexts();
    const core::TsvTable customers = sample ? sources.table(u"sample/customers.tsv"_s) : core::TsvTable();
    const core::TsvTable phoneBook = sample ? sources.table(u"sample/phonebook.tsv"_s) : core::TsvTable();
    const QString languageSchema = sources.text(u"schema/Language.sql"_s);
    const QString helpSchema = sources.text(u"schema/Help.sql"_s);

    QList<DeskFile> files = {
        {u"Customer.ccsm"_s, sources.text(u"schema/Customer.sql"_s), fillWith(u"customer"_s, customers)},
        {u"SimplePhoneBook.cpbk"_s, sources.text(u"schema/SimplePhoneBook.sql"_s),
         fillWith(u"phonebook"_s, phoneBook)},
        {u"Lang.mdb"_s, sources.text(u"schema/Lang.sql"_s), fillWith(u"Lang"_s, texts)},
        {u"UserLang.lan"_s, languageSchema, fillWith(u"Language"_s, ownTranslation(texts))},
    };
    for (const QString &code : sources.languageCodes()) {
        files.append({code + u".lan"_s, languageSchema, fillWith(u"Language"_s, sources.languageFile(code))});
    }
    for (const QString &code : sources.helpLanguages()) {
        files.append(
            {u"Help/Help%1.chlp"_s.arg(code), helpSchema, fillWith(u"Help"_s, helpPages(sources, code))});
    }
    return files;
}

DeskFile areaFile(const DeskSources &sources, const QString &tablePath)
{
    QFile file(tablePath);
    if (!file.open(QIODevice::ReadOnly)) {
        throw core::Error(0, file.errorString() + u": "_s + tablePath);
    }
    const core::TsvTable areas = core::parseTsv(QString::fromUtf8(file.readAll()), tablePath);
    for (const QString &column : {u"AreaCode"_s, u"Area"_s, u"PlaceName"_s}) {
        if (!areas.columns.contains(column)) {
            throw core::Error(0, tablePath + u" has no column "_s + column);
        }
    }
    return {u"AreaCode.mdb"_s, sources.text(u"schema/Area.sql"_s), fillWith(u"placename"_s, areas)};
}

QStringList databasePatterns()
{
    return {u"*.ccsm"_s, u"*.cpbk"_s, u"*.mdb"_s, u"*.lan"_s, u"*.chlp"_s};
}

Made makeDeskFile(const DeskFile &file, const QString &folder)
{
    const QString path = QDir(folder).filePath(file.path);
    const QFileInfo there(path);
    if (there.isFile()) {
        return Made::Kept;
    }
    if (there.exists()) {
        throw core::Error(0, path + u" is no file"_s);
    }
    makeFolderOf(path);
    store::createDatabase(path, file.schema, file.fill);
    return Made::New;
}

} // namespace mkdesk
