#include "ProgramDesk.h"
#include "start/forms/frmConvertDesk.h"
#include "support/FullDisk.h"
#include "support/JetWriter.h"
#include "support/Rows.h"

#include <QDirIterator>

using oldfiles::ColumnType;
using start::frmConvertDesk;

namespace {

/// A table of ours as an old program kept it.
support::JetTable oldTable(store::Database &database, const QString &name)
{
    support::JetTable table{name, {}, {}};
    store::Recordset rows = database.OpenRecordset(u"select * from "_s + name);
    const QStringList fields = rows.fieldNames();
    for (const QString &field : fields) {
        const bool number = field == "SN"_L1;
        table.columns.append({field, number ? ColumnType::Long : ColumnType::Memo, true, number});
    }
    for (; !rows.EOFile(); rows.MoveNext()) {
        QVariantList row;
        for (qsizetype column = 0; column < fields.size(); ++column) {
            row.append(rows.value(int(column)));
        }
        table.rows.append(row);
    }
    return table;
}

/// The sample desk as an old program has left it, with a call note.
struct OldDesk : ProgramDesk
{
    OldDesk()
    {
        makeOld(u"Customer.ccsm"_s, {u"customer"_s},
                {{u"CallInfo"_s,
                  {{u"CallID"_s}, {u"CustomerName"_s}, {u"CallContent"_s, ColumnType::Memo}},
                  {{u"1"_s, u"Harbor Lantern Hotel"_s, u"wants\r\na quote"_s}}}});
        makeOld(u"SimplePhoneBook.cpbk"_s, {u"phonebook"_s});
        makeOld(u"Lang.mdb"_s, {u"Lang"_s});
        before = files();
    }
    void makeOld(const QString &name, const QStringList &tables, const QList<support::JetTable> &more = {})
    {
        support::JetWriter writer;
        const QString path = folderPath + name;
        {
            store::Database database(path, store::Database::Mode::ReadOnly);
            for (const QString &table : tables) {
                writer.add(oldTable(database, table));
            }
        }
        for (const support::JetTable &table : more) {
            writer.add(table);
        }
        writeFile(path, writer.file());
    }
    /// Every file and folder of the desk and of the data, with its contents.
    QMap<QString, QByteArray> files() const
    {
        QMap<QString, QByteArray> found;
        for (const QString &below : {paths.StartFolder, paths.DataFolder}) {
            QDirIterator each(below, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                              QDirIterator::Subdirectories);
            while (each.hasNext()) {
                const QString path = each.next();
                found.insert(path, fileBytes(path));
            }
        }
        return found;
    }
    bool isAsItWas() const { return files() == before; }

    const QString folderPath = paths.StartFolder + u'/';
    QMap<QString, QByteArray> before;
};

bool isAsking()
{
    auto *button = find<frmConvertDesk>("cmdConvert");
    return button->isVisible() && button->isEnabled();
}
/// What the operator does once the question stands, and the files are read.
void whenAsked(std::function<void()> act)
{
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        QTRY_VERIFY(isAsking());
        act();
    });
}

} // namespace

/// An old program's desk, on its first start with this one.
class tst_OldDesk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // In the language of the system: the desk's own texts are in an old file, too.
    void onceAgreedToItIsConvertedAndTheStartGoesOn()
    {
        OldDesk desk;
        desk.systemLanguageId = 0x0C0A; // Spanish
        QString asked;
        QTreeWidgetItem counted;
        whenAsked([&] {
            auto *found = find<frmConvertDesk, QTreeWidget>("lstFound");
            counted = *found->topLevelItem(0)->child(0);
            asked = found->window()->windowTitle() + u'|' + found->topLevelItem(0)->text(0);
            press<frmConvertDesk>("cmdConvert");
        });
        desk.prompts.expect();
        QVERIFY(desk.start());
        QCOMPARE(asked, u"Convertir un puesto antiguo|Customer.ccsm"_s);
        QCOMPARE(counted.text(0) + counted.text(1),
                 u"customer"_s +
                     support::rowsOf(desk.paths.CustomerFile, u"select count(*) from customer"_s));
        const QString told = desk.prompts.asked.value(0);
        QVERIFY2(told.startsWith(u"El puesto está convertido. Tablas: 4, "_s) &&
                     told.endsWith(desk.folderPath + u"Old files 2026-11-21"_s),
                 qPrintable(told));
        for (const QString &name : {u"Customer.ccsm"_s, u"SimplePhoneBook.cpbk"_s, u"Lang.mdb"_s}) {
            QCOMPARE(desk.fileBytes(desk.folderPath + u"Old files 2026-11-21/"_s + name),
                     desk.before.value(desk.folderPath + name));
        }
        QCOMPARE(support::rowsOf(desk.paths.CustomerFile, u"select CustomerName,CallContent from CallInfo"_s),
                 u"Harbor Lantern Hotel|wants\r\na quote"_s);
        desk.showsACall();
        QVERIFY((find<lookup::frmPopUp, QPlainTextEdit>("txtAbout")
                     ->toPlainText()
                     .contains(u"Harbor Lantern Hotel"_s)));
        QVERIFY(!conversion::isOldDesk(desk.paths.StartFolder)); // nor asked again
    }

    void notNowEndsTheProgramAndNothingIsWritten()
    {
        for (const bool byKey : {false, true}) {
            OldDesk desk;
            whenAsked([&] {
                QVERIFY(isAsking());
                if (byKey) {
                    QTest::keyClick(openForm<frmConvertDesk>(), Qt::Key_Escape);
                } else {
                    press<frmConvertDesk>("cmdNotNow");
                }
            });
            QVERIFY(!desk.start());
            QVERIFY(desk.isAsItWas());
        }
    }

    void cancelledOrFailedItLeavesTheDeskAndAsksAgain_data()
    {
        QTest::addColumn<QString>("obstacle");
        QTest::addColumn<QString>("told");
        QTest::newRow("cancelled") << QString() << QString();
        QTest::newRow("open in another program") << u"Customer.ldb"_s << u"open in another program"_s;
        QTest::newRow("a folder that cannot be written to") << u"Conversion.lock/"_s << u"Conversion.lock"_s;
        QTest::newRow("a full disk") << u"full"_s << u"disk"_s;
    }
    void cancelledOrFailedItLeavesTheDeskAndAsksAgain()
    {
        QFETCH(const QString, obstacle);
        QFETCH(const QString, told);
        OldDesk desk;
        if (obstacle.endsWith(u'/')) {
            QVERIFY(QDir().mkpath(desk.folderPath + obstacle));
        } else if (obstacle.contains(u'.')) {
            desk.writeFile(desk.folderPath + obstacle, "DESK1");
        }
        desk.before = desk.files();
        bool asWas = false;
        whenAsked([&] {
            std::optional<support::FullDisk> full;
            if (obstacle == "full"_L1) {
                full.emplace(20000);
            }
            press<frmConvertDesk>("cmdConvert");
            if (obstacle.isEmpty()) {
                press<frmConvertDesk>("cmdCancel");
            }
            QTRY_VERIFY(isAsking());
            asWas = desk.isAsItWas();
            full.reset();
            QDir(desk.paths.StartFolder).rmdir(obstacle);
            QFile::remove(desk.folderPath + obstacle);
            press<frmConvertDesk>("cmdConvert");
        });
        for (int i = 0; i < (told.isEmpty() ? 1 : 2); ++i) { // the failure, if one, and the success
            desk.prompts.expect();
        }
        QVERIFY(desk.start());
        QVERIFY(asWas);
        QVERIFY(!conversion::isOldDesk(desk.paths.StartFolder));
        if (told.isEmpty()) {
            return;
        }
        const QString text = desk.prompts.asked.value(0);
        QVERIFY2(text.contains(told), qPrintable(text));
    }

    void aFileThatCannotBeReadIsNamedWithItsReason()
    {
        OldDesk desk;
        support::JetWriter encoded;
        encoded.encodingKey = 5;
        desk.writeFile(desk.folderPath + u"SimplePhoneBook.cpbk"_s, encoded.file());
        desk.before = desk.files();
        bool seen = false;
        desk.prompts.expect(true, [&seen] { seen = openForm<frmConvertDesk>()->isVisible(); });
        QVERIFY(!desk.start());
        QVERIFY(seen); // while they were read
        const QString told = desk.prompts.asked.value(0);
        QVERIFY2(told.contains(u"SimplePhoneBook.cpbk: "_s) && told.contains(u"encoded"_s), qPrintable(told));
        QVERIFY(desk.isAsItWas());
    }

    void whateverAThreadFailsWithIsAReasonThatCanBeTold()
    {
        core::Background<int> work([]() -> int { throw std::bad_alloc(); });
        QVERIFY_THROWS_EXCEPTION(core::Error, work.take());
        core::Background<int> named([]() -> int { throw core::Error(7, u"why"_s); });
        try {
            named.take();
            QFAIL("it succeeded");
        } catch (const core::Error &error) {
            QCOMPARE(error.description() + QString::number(error.number()), u"why7"_s);
        }
    }

    // A file of the operator's own that happens to be such a database is nobody's desk.
    void anotherOldDatabaseInTheFolderIsNoOldDesk()
    {
        ProgramDesk desk;
        desk.writeFile(desk.paths.StartFolder + u"/Stock.mdb"_s, support::JetWriter().file());
        QVERIFY(desk.start());
    }
};

QTEST_MAIN(tst_OldDesk)
#include "tst_OldDesk.moc"
