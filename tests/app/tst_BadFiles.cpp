#include "ProgramDesk.h"
#include "store/Database.h"

#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

enum class Damage { Missing, Empty, Text, OtherSchema, Locked };

/// Holds a database file locked, as another program that writes to it does.
class OtherProgram
{
public:
    bool lock(const QString &database)
    {
        m_sqlite.start(u"sqlite3"_s, {database});
        m_sqlite.write("begin exclusive; select 'locked';\n");
        return m_sqlite.waitForReadyRead() && m_sqlite.readAll().startsWith("locked");
    }
    ~OtherProgram() { m_sqlite.close(); }

private:
    QProcess m_sqlite;
};

void makeOtherSchema(const QString &path)
{
    store::createDatabase(path, u"create table strangers (name text(20));"_s, [](store::Database &) {});
}

} // namespace

/// Whatever is wrong with its files, the program starts, says so and shows calls.
class tst_BadFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDatabaseThatCannotBeReadIsNamedOnce_data();
    void aDatabaseThatCannotBeReadIsNamedOnce();
    void settingsOfAnyLengthAreMadeWhole_data();
    void settingsOfAnyLengthAreMadeWhole();
    void readOnlySettingsAreLeftAlone();
    void aFolderInPlaceOfTheRunLogIsBorne();
    void aDataFolderThatCannotBeMadeIsBorne();

private:
    static void everyCallPopsUp(Desk &desk);
    static void aCallShows(Desk &desk);
    static QList<QByteArray> errorLines(const Desk &desk);
};

void tst_BadFiles::everyCallPopsUp(Desk &desk)
{
    core::SettingsRecord record;
    core::setGridDefaults(record);
    record.PopupAllLines = 1;
    desk.writeFile(u"data/Crm.cfg"_s, record.toBytes());
}

void tst_BadFiles::aCallShows(Desk &desk)
{
    QVERIFY(desk.program->mainWindow().isVisible());
    desk.send(call(vipNumber, u"Harbor Lantern Hotel"_s, vipSn));
    QTRY_VERIFY(Desk::card() != nullptr);
    QCOMPARE(desk.calls().cell(0, u"CallerID"_s), vipNumber);
}

QList<QByteArray> tst_BadFiles::errorLines(const Desk &desk)
{
    QList<QByteArray> lines = desk.log().split('\n');
    lines.removeIf([](const QByteArray &line) { return !line.contains(">  !"); });
    return lines;
}

void tst_BadFiles::aDatabaseThatCannotBeReadIsNamedOnce_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<Damage>("damage");
    const std::pair<const char *, Damage> damages[] = {{"missing", Damage::Missing},
                                                       {"empty", Damage::Empty},
                                                       {"text", Damage::Text},
                                                       {"of another schema", Damage::OtherSchema},
                                                       {"locked", Damage::Locked}};
    for (const char *file : {"Customer.ccsm", "SimplePhoneBook.cpbk", "Lang.mdb"}) {
        for (const auto &[name, damage] : damages) {
            QTest::addRow("%s %s", file, name) << QString::fromLatin1(file) << damage;
        }
    }
}

void tst_BadFiles::aDatabaseThatCannotBeReadIsNamedOnce()
{
    QFETCH(QString, file);
    QFETCH(Damage, damage);
    Desk desk;
    everyCallPopsUp(desk);
    const QString path = desk.folder.filePath(u"start/"_s + file);
    OtherProgram other;
    if (damage == Damage::Locked) {
        QVERIFY(other.lock(path));
    } else if (damage == Damage::Empty || damage == Damage::Text) {
        desk.writeFile(u"start/"_s + file, damage == Damage::Text ? "No database.\n" : "");
    } else {
        QVERIFY(QFile::remove(path));
    }
    if (damage == Damage::OtherSchema) {
        makeOtherSchema(path);
    }
    if (file == "Lang.mdb"_L1 && damage == Damage::Missing) {
        desk.prompts.expect();
    }
    QVERIFY(desk.start());
    aCallShows(desk);
    const QList<QByteArray> errors = errorLines(desk);
    QVERIFY(!errors.isEmpty());
    QCOMPARE(QSet<QByteArray>(errors.begin(), errors.end()).size(), errors.size());
    for (const QByteArray &error : errors) { // one a procedure that needed the file
        QVERIFY2(error.contains(file.toLatin1()), error.constData());
    }
}

void tst_BadFiles::settingsOfAnyLengthAreMadeWhole_data()
{
    QTest::addColumn<int>("length");
    for (const int length : {0, 10, 333, 1000}) {
        QTest::addRow("%d bytes", length) << length;
    }
}

void tst_BadFiles::settingsOfAnyLengthAreMadeWhole()
{
    QFETCH(int, length);
    Desk desk;
    core::SettingsRecord record;
    core::setGridDefaults(record);
    record.reserved.setBytes("kept");
    desk.writeFile(u"data/Crm.cfg"_s, record.toBytes().leftJustified(length, 'x', true));
    QVERIFY(desk.start());
    aCallShows(desk);
    const QByteArray settings = desk.file(u"Crm.cfg"_s);
    QCOMPARE(settings.size(), 334);
    QCOMPARE(settings.first(5), length == 0 ? QByteArray(5, '\0') : QByteArray("kept\0", 5));
    QCOMPARE(settings.mid(100, 9), QByteArray("127.0.0.1"));
    QVERIFY(settings.mid(212).startsWith("Channel,CallerID,SimpleDes,IncomingTime,SN,LineNo,ID "));
}

void tst_BadFiles::readOnlySettingsAreLeftAlone()
{
    Desk desk;
    everyCallPopsUp(desk);
    const QByteArray before = desk.file(u"Crm.cfg"_s);
    QFile::setPermissions(desk.folder.filePath(u"data/Crm.cfg"_s), QFile::ReadOwner);
    QVERIFY(desk.start());
    aCallShows(desk);
    QCOMPARE(desk.file(u"Crm.cfg"_s), before);
    QCOMPARE(errorLines(desk).size(), 1);
    QVERIFY(errorLines(desk).first().contains(">  !Get_misc "));
}

void tst_BadFiles::aFolderInPlaceOfTheRunLogIsBorne()
{
    Desk desk;
    QVERIFY(QDir(desk.folder.path()).mkpath(u"data/Runlog.txt"_s));
    QVERIFY(desk.start());
    aCallShows(desk);
}

void tst_BadFiles::aDataFolderThatCannotBeMadeIsBorne()
{
    Desk desk;
    desk.writeFile(u"data"_s, "in the way");
    QVERIFY(desk.start());
    aCallShows(desk);
}

QTEST_MAIN(tst_BadFiles)
#include "tst_BadFiles.moc"
