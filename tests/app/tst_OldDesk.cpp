#include "ProgramDesk.h"
#include "start/forms/frmConvertDesk.h"
#include "support/JetWriter.h"
#include "support/Rows.h"

using oldfiles::ColumnType;
using start::frmConvertDesk;

namespace {

/// The sample desk as an old program has left it.
struct OldDesk : ProgramDesk
{
    OldDesk()
    {
        makeOld(u"Customer.ccsm"_s, u"customer"_s);
        makeOld(u"SimplePhoneBook.cpbk"_s, u"phonebook"_s);
        makeOld(u"Lang.mdb"_s, u"Lang"_s);
        before = files();
    }
    /// Of the one table in it.
    void makeOld(const QString &name, const QString &tableName) const
    {
        support::JetTable table{tableName, {}, {}};
        {
            store::Database database(folderPath + name, store::Database::Mode::ReadOnly);
            store::Recordset rows = database.OpenRecordset(u"select * from "_s + tableName);
            for (const QString &field : rows.fieldNames()) {
                const bool number = field == "SN"_L1;
                table.columns.append({field, number ? ColumnType::Long : ColumnType::Memo, true, number});
            }
            for (; !rows.EOFile(); rows.MoveNext()) {
                QVariantList row;
                for (int column = 0; column < table.columns.size(); ++column) {
                    row.append(rows.value(column));
                }
                table.rows.append(row);
            }
        }
        writeFile(folderPath + name, support::jetFile({table}));
    }
    /// Every file and folder of the desk and of the data, with its contents.
    QMap<QString, QByteArray> files() const
    {
        QMap<QString, QByteArray> files = support::filesBelow(folder.path(), QDir::AllEntries);
        files.remove(u"calldesk.lock"_s);
        return files;
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
        whenAsked([&] {
            auto *found = find<frmConvertDesk, QTreeWidget>("lstFound");
            asked = found->window()->windowTitle() + u'|' + found->topLevelItem(0)->text(0);
            press<frmConvertDesk>("cmdConvert");
        });
        desk.prompts.expect();
        QVERIFY(desk.start());
        QCOMPARE(asked, u"Convertir un puesto antiguo|Customer.ccsm"_s);
        const QString told = desk.prompts.asked.value(0);
        QVERIFY2(told.startsWith(u"El puesto está convertido. Tablas: 3, "_s) &&
                     told.endsWith(desk.folderPath + u"Old files 2026-11-21"_s),
                 qPrintable(told));
        desk.showsACall();
        QVERIFY(desk.card().contains(u"Harbor Lantern Hotel"_s));
        QVERIFY(!conversion::isOldDesk(desk.paths.StartFolder)); // nor asked again
    }

    void notNowEndsTheProgramAndNothingIsWritten()
    {
        OldDesk desk;
        whenAsked([] { press<frmConvertDesk>("cmdNotNow"); });
        QVERIFY(!desk.start());
        QVERIFY(desk.isAsItWas());
    }

    void cancelledOrFailedItLeavesTheDeskAndAsksAgain()
    {
        for (const bool fails : {false, true}) {
            OldDesk desk;
            const QString inUse = desk.folderPath + u"Customer.ldb"_s; // by another program
            if (fails) {
                desk.writeFile(inUse, "DESK1");
                desk.prompts.expect();
            }
            desk.before = desk.files();
            bool asWas = false;
            whenAsked([&] {
                press<frmConvertDesk>("cmdConvert");
                if (!fails) {
                    press<frmConvertDesk>("cmdCancel");
                }
                QTRY_VERIFY(isAsking());
                asWas = desk.isAsItWas();
                QFile::remove(inUse);
                press<frmConvertDesk>("cmdConvert");
            });
            desk.prompts.expect(); // the success
            QVERIFY(desk.start());
            QVERIFY(asWas);
            QVERIFY(!fails || desk.prompts.asked.first().contains(u"open in another program"_s));
        }
    }

    void aFileThatCannotBeReadIsNamedWithItsReason()
    {
        OldDesk desk;
        desk.writeFile(desk.folderPath + u"SimplePhoneBook.cpbk"_s, support::encodedJetFile());
        desk.before = desk.files();
        bool seen = false;
        desk.prompts.expect(true, [&seen] { seen = openForm<frmConvertDesk>()->isVisible(); });
        QVERIFY(!desk.start());
        QVERIFY(seen); // while they were read
        const QString told = desk.prompts.asked.value(0);
        QVERIFY2(told.contains(u"SimplePhoneBook.cpbk: "_s) && told.contains(u"encoded"_s), qPrintable(told));
        QVERIFY(desk.isAsItWas());
    }

    // A file of the operator's own that happens to be such a database is nobody's desk.
    void anotherOldDatabaseInTheFolderIsNoOldDesk()
    {
        ProgramDesk desk;
        desk.writeFile(desk.paths.StartFolder + u"/Stock.mdb"_s, support::jetFile({}));
        QVERIFY(desk.start());
    }
};

QTEST_MAIN(tst_OldDesk)
#include "tst_OldDesk.moc"
