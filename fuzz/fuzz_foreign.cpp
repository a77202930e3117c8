#include "Support.h"
#include "core/TextUtilities.h"
#include "store/Database.h"
#include "store/SqlTokens.h"

#include <QTemporaryDir>

#include <cstdint>

using namespace Qt::StringLiterals;

namespace {

/// A database in which another program has written whatever it liked into one cell.
class ForeignDatabase
{
public:
    ForeignDatabase() : m_path(m_folder.filePath(u"SimplePhoneBook.cpbk"_s)), m_database(made())
    {
        m_database.Execute(u"pragma synchronous=off"_s);
        m_database.Execute(u"pragma journal_mode=memory"_s);
    }

    void write(const QByteArray &bytes, bool asText)
    {
        const QString cell = asText ? u"cast(? as text)"_s : u"?"_s;
        m_database.Execute(u"insert or replace into phonebook values(2,%1,%1)"_s.arg(cell), {bytes, bytes});
    }
    /// Its rows are all there, in their order, and each is found by what it holds.
    void read(const QByteArray &bytes, bool asText)
    {
        QStringList names;
        m_database.forEachRow(u"select simpledes from phonebook order by simpledes"_s,
                              [&names](const store::Row &row) { names.append(row.text(0)); });
        require(names.size() == 3 && names.contains(u"anna"_s) && names.contains(u"Łucja"_s));
        for (const QString &name : std::as_const(names)) {
            core::shownText(name);
            core::spreadsheetCell(name);
        }
        store::Recordset rows = m_database.OpenRecordset(u"phonebook"_s);
        rows.setIndex(u"simpledes"_s);
        require(rows.Seek(u"ŁUCJA"_s) && rows.value(u"SN"_s).toInt() == 3);
        const QString text = QString::fromUtf8(bytes);
        if (asText && !text.isEmpty() && !text.contains(QChar(0)) && text.toUtf8() == bytes) {
            const QString found = u"select SN from phonebook where simpledes='%1'"_s;
            qint32 last = 0;
            m_database.forEachRow(found.arg(store::quoted(text)) + u" and SN=2"_s,
                                  [&last](const store::Row &row) { last = row.integer(0); });
            require(last == 2);
            require(rows.Seek(text));
        }
    }

private:
    store::Database made() const
    {
        store::createDatabase(
            m_path,
            u"create table phonebook (SN counter, Telno text(255), simpledes text(255));"
            "create unique index SN on phonebook (SN); create index simpledes on phonebook (simpledes)"_s,
            [](store::Database &database) {
                database.Execute(u"insert into phonebook values(1,'1','anna'),(3,'3','Łucja')"_s);
            });
        return store::Database(m_path);
    }

    QTemporaryDir m_folder;
    QString m_path;
    store::Database m_database;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static ForeignDatabase database; // the fuzzer offers no other place that lasts from input to input
    const bool asText = size == 0 || data[0] % 4 != 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    database.write(bytes.sliced(size == 0 ? 0 : 1), asText);
    database.read(bytes.sliced(size == 0 ? 0 : 1), asText);
    return 0;
}
