#include "imports/Headings.h"
#include "imports/ListImport.h"
#include "store/DeliveredFiles.h"
#include "support/Row.h"
#include "support/Rows.h"
#include "support/TestDesk.h"

#include <QProcess>
#include <QStringEncoder>

using imports::OnFile;
using imports::RowKey;

namespace {

QByteArray encoded(const char *codePage, const QString &text)
{
    QStringEncoder encoder(codePage);
    return encoder.encode(text);
}

QString attributes(int count)
{
    QString text;
    for (int i = 0; i < count; ++i) {
        text += u" a%1='x'"_s.arg(i);
    }
    return text;
}

/// "new/changed/kept/refused", and each refusal by its row, its reason and what that is about.
QString shown(const imports::ImportReport &report, const imports::ListTarget &target)
{
    static const QStringList reasons{u"characters"_s, u"unclosed"_s,  u"columns"_s,
                                     u"no name"_s,    u"no number"_s, u"too long"_s,
                                     u"no flag"_s,    u"as"_s,        u"id taken"_s};
    QString text = report.isCancelled ? u"cancelled"_s
                                      : u"%1/%2/%3/%4"_s.arg(report.added)
                                            .arg(report.changed)
                                            .arg(report.kept)
                                            .arg(report.refused.size());
    for (const imports::RefusedRow &refused : report.refused) {
        text += u" %1:%2"_s.arg(refused.row).arg(reasons.at(int(refused.why)));
        text += refused.field >= 0     ? u' ' + target.fields.at(refused.field).column
                : refused.otherRow > 0 ? u' ' + QString::number(refused.otherRow)
                                       : QString();
    }
    return text;
}

} // namespace

/// Lists as people have them, and what becomes of their rows.
class tst_ListImport : public QObject
{
    Q_OBJECT

    /// Two customers, and an empty phone book.
    struct Desk : support::TestDesk
    {
        imports::ListTarget customers = imports::customersOf(paths);
        imports::ListTarget phoneBook = imports::phoneBookOf(paths);

        Desk()
        {
            deliver(u"Customer"_s, paths.CustomerFile);
            deliver(u"SimplePhoneBook"_s, paths.PhoneBookFile);
            runSql(paths.CustomerFile,
                   u"insert into customer(SN,CustomerName,CustomerID,WorkPhones,city,note,T3) values"
                   "(1,'Acme','A1','0755-111','','old','1'),(2,'Bay','','222333,+4989 44','Ulm','','0');"
                   "create table CallInfo(CallID text(50),CustomerName text(255));"
                   "insert into CallInfo values('c1','Acme')"_s);
        }
        QString path(const QByteArray &bytes, const QString &name = u"list"_s) const
        {
            QString file = folder.filePath(name);
            writeFile(file, bytes);
            return file;
        }
        /// As the window would propose.
        imports::ListPlan planFor(const QString &file, const imports::ListTarget &target) const
        {
            imports::ListPlan plan{.form = imports::formOf(file, 936)};
            const auto source = imports::openList(file, plan.form);
            QList<QStringList> rows;
            for (auto row = source->next(); row && rows.size() < 100; row = source->next()) {
                rows.append(row->cells);
            }
            const imports::Guess guess = imports::guessOf(target, plan.form.kind, rows);
            plan.hasHeadings = guess.hasHeadings;
            plan.fieldOfColumn = guess.fieldOfColumn;
            return plan;
        }
        static imports::ImportReport run(const QString &file, const imports::ListTarget &target,
                                         const imports::ListPlan &plan, imports::ListImport::Mode mode)
        {
            imports::ListImport work(target, file, plan, mode);
            [&] { QTRY_VERIFY(work.isDone()); }();
            return work.take();
        }
        /// What the import came to; the check before it has said the same.
        QString import(const QString &file, const imports::ListTarget &target,
                       const imports::ListPlan &plan) const
        {
            const auto check = run(file, target, plan, imports::ListImport::Mode::Check);
            const auto done = run(file, target, plan, imports::ListImport::Mode::Write);
            return shown(check, target) == shown(done, target)
                       ? shown(done, target)
                       : shown(check, target) + u" but "_s + shown(done, target);
        }
        QString customersBehind(int sn) const
        {
            return support::rowsOf(paths.CustomerFile,
                                   u"select CustomerName,CustomerID,ContactPersonName,WorkPhones,"
                                   "ContactPersonMobile,ContactPersonEmail,city,IfVIP,note from customer "
                                   "where SN>%1 order by SN"_s.arg(sn));
        }
        QString entries() const
        {
            return support::rowsOf(paths.PhoneBookFile,
                                   u"select Telno,simpledes,detaildes,IfVIP from phonebook order by SN"_s);
        }
    };

private Q_SLOTS:
    void customersArriveFromListsAsPeopleHaveThem()
    {
        struct File
        {
            const char *name;
            QByteArray bytes;
            QString report, rows;
            RowKey key = RowKey::Number;
        };
        const QByteArray longName(256, 'x');
        for (const File &file : {
                 File{"semicolons and a byte mark",
                      "\xEF\xBB\xBFName;Telefon;Ort\r\nZo\xC3\xAB;+49 (89) 12-3.4;M\xC3\xBCnchen\r\n",
                      u"1/0/0/0"_s, u"Zoë|||+49(89)12-34|||München|N|"_s},
                 {"quotation marks around breaks, commas and marks",
                  "Customer name,Phone,Notes\n\"Smith, \"\"Bob\"\"\",0755123456,\"two\nlines\"\n",
                  u"1/0/0/0"_s, u"Smith, \"Bob\"|||0755123456||||N|two\r\nlines"_s},
                 {"tabs in GBK", encoded("GBK", u"姓名\t电话\t备注\n张三\t0755-8888\t老客户\n"_s),
                  u"1/0/0/0"_s, u"张三|||0755-8888||||N|老客户"_s},
                 {"UTF-16 with a mark",
                  "\xFF\xFE" + encoded("UTF-16LE", u"Company\tPhone\r\nŁódź\t0012345\r\n"_s), u"1/0/0/0"_s,
                  u"Łódź|||0012345||||N|"_s},
                 {"short rows, blank rows, and a cell too many",
                  "Name,Phone,City\n\nAda\n,,\nBob,7654321,Rome,more\n", u"2/0/0/0"_s,
                  u"Ada|||||||N|\nBob|||7654321|||Rome|N|"_s},
                 {"two columns of one heading", "Name,Phone,Phone\nAda,1112223,3334445\n", u"1/0/0/0"_s,
                  u"Ada|||1112223,3334445||||N|"_s},
                 {"no headings", "13800138000,Ada,ada@example.org\n13800138001,Bob,bob@example.org\n",
                  u"2/0/0/0"_s,
                  u"Ada|||13800138000||ada@example.org||N|\nBob|||13800138001||bob@example.org||N|"_s},
                 {"a desktop's address book",
                  "Title,First Name,Middle Name,Last Name,Company,Business Street,Business City,Business "
                  "Phone,"
                  "Business Phone 2,Mobile Phone,E-mail Address,E-mail 2 Address,Notes\n"
                  "Dr.,Ada,K.,King,Engines Ltd,1 High St,London,020 7946 0000,020 7946 0001,07700 900000,"
                  "ada@example.org,a@example.org,VIP\n,Max,,Solo,,,,,,07700900001,,,\n",
                  u"2/0/0/0"_s,
                  u"Engines Ltd||Ada King|02079460000,02079460001|07700900000|ada@example.org|London|N|VIP\n"
                  "Max Solo||Max Solo||07700900001|||N|"_s},
                 {"a web mail's address book",
                  "Name,Given Name,Family Name,Organization 1 - Name,E-mail 1 - Value,Phone 1 - Type,Phone 1 "
                  "- "
                  "Value,Notes\nAda King,Ada,King,Engines Ltd,ada@example.org,Work,+44 20 7946 0000,x\n",
                  u"1/0/0/0"_s, u"Engines Ltd||Ada King|+442079460000||ada@example.org||N|x"_s},
                 {"our own captions in another language",
                  "Nom du client,Code client,Numéros de téléphone\nCafé d'Or,c9,01.02.03.04.05\n",
                  u"1/0/0/0"_s, u"Café d’Or|C9||0102030405||||N|"_s},
                 {"yes and no in words", "Name,Phone,VIP\nA,1234567,是\nB,2345678,maybe\nC,3456789,no\n",
                  u"2/0/0/1 3:no flag IfVIP"_s, u"A|||1234567||||Y|\nC|||3456789||||N|"_s},
                 {"what does not fit, and what is missing",
                  "Name,Phone,Mail\n" + longName + ",1234567,\n,2345678,\n'A,'0755123,a@example.org\n",
                  u"1/0/0/2 2:too long CustomerName 3:no name"_s, u"’A|||0755123||a@example.org||N|"_s},
                 {"identities by number", "Name,Phone\nX,0755111\nY,9998887\nZ,99-98-887\nQ,222333;777\n",
                  u"1/0/2/1 4:as 3"_s, u"Y|||9998887||||N|"_s},
                 {"identities by ID", "Customer ID,Name,Phone\na1,X,1\nb1,Y,2\nB1,Z,3\n,W,4\n",
                  u"2/0/1/1 4:as 3"_s, u"Y|B1||2||||N|\nW|||4||||N|"_s, RowKey::Id},
                 {"an ID that another has", "Customer ID,Name,Phone\nA1,X,1\nb1,Y,2\nb1,Z,3\n",
                  u"1/0/0/2 2:id taken 4:id taken"_s, u"Y|B1||2||||N|"_s, RowKey::Name},
                 {"identities by name, or by nothing", "Name\nacme\n BAY \nNew\n", u"1/0/2/0"_s,
                  u"New|||||||N|"_s, RowKey::Name},
                 {"all are new", "Name\nacme\nacme\n", u"2/0/0/0"_s, u"acme|||||||N|\nacme|||||||N|"_s,
                  RowKey::Nothing},
                 {"a quotation mark that nothing closes", "Name,Phone\n\"Ada,1234567\nBob,2345678\n",
                  u"1/0/0/1 2:unclosed"_s, u"Bob|||2345678||||N|"_s},
                 {"bytes that are no characters", "Name,Phone\nB\x81,1234567\nBob,2345678\n",
                  u"1/0/0/1 2:characters"_s, u"Bob|||2345678||||N|"_s},
                 {"a line that names the separator, and lone returns",
                  "sep=;\rName;Phone\rA,B;=\"0012345\"\r", u"1/0/0/0"_s, u"A,B|||0012345||||N|"_s},
                 {"digits of other scripts, numbers parted by blanks",
                  "Name,Phone\nA,٠١٢٣٤٥٦٧٨\nB,+49 89 1234567\nC,13800138000 13800138001\n", u"3/0/0/0"_s,
                  u"A|||012345678||||N|\nB|||+49891234567||||N|\nC|||13800138000,13800138001||||N|"_s},
                 {"more columns than there may be", "Name,Phone\nA" + QByteArray(300, ',') + "\nB,1234567\n",
                  u"1/0/0/1 2:columns"_s, u"B|||1234567||||N|"_s},
             }) {
            const support::Row row(file.name);
            const Desk desk;
            const QString path = desk.path(file.bytes);
            imports::ListPlan plan = desk.planFor(path, desk.customers);
            plan.identify = file.key;
            QCOMPARE(desk.import(path, desk.customers, plan), file.report);
            QCOMPARE(desk.customersBehind(2), file.rows);
        }
    }

    void cardsBecomeEntriesAndCustomers()
    {
        struct File
        {
            const char *name;
            QByteArray bytes;
            QString customers, entries;
        };
        for (const File &file : {
                 File{"2.1, quoted-printable in a character set of its own",
                      "BEGIN:VCARD\r\nVERSION:2.1\r\nN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:=E5=BC=A0;=E4="
                      "B8=89;;;\r\n"
                      "TEL;CELL:138 0013 "
                      "8000\r\nTEL;WORK;VOICE:0755-88=\r\nNOTE;ENCODING=QUOTED-PRINTABLE:a=0D=0A=\r\nb\r\n"
                      "PHOTO;ENCODING=BASE64;JPEG:\r\n AAAA\r\n\r\nEND:VCARD\r\n",
                      u"张三||张三|0755-88=|13800138000|||N|a\r\nb"_s,
                      u"0755-88=,13800138000|张三|a\r\nb|N"_s},
                 {"3.0, folded, escaped, several of a kind",
                  "begin:vcard\nVERSION:3.0\nFN:Ada\n  King\nN:King;Ada;;;\nORG:Engines\\, Ltd;Research\n"
                  "item1.TEL;TYPE=\"WORK,VOICE\":+44 20 1\nTEL;TYPE=FAX,WORK:99999\nTEL;type=home:77777\n"
                  "EMAIL:a@example.org\nEMAIL:b@example.org\nADR;TYPE=work:;;1 High St;London;;N1;UK\n"
                  "NOTE:one\\ntwo\nEND:VCARD\n",
                  u"Engines, Ltd||Ada King|+44201||a@example.org|London|N|one\r\ntwo"_s,
                  u"+44201,77777|Engines, Ltd Ada King|one\r\ntwo|N"_s},
                 {"4.0, numbers as addresses",
                  "BEGIN:VCARD\nVERSION:4.0\nFN:Bob\nTEL;VALUE=uri;TYPE=\"cell\":tel:+1-555-0100;ext=5\nEND:"
                  "VCARD\n",
                  u"Bob||Bob||+1-555-0100|||N|"_s, u"+1-555-0100|Bob||N"_s},
                 {"in the system's code page; one without anything, and one that is cut off",
                  encoded("GBK", u"BEGIN:VCARD\nVERSION:2.1\nN:李;四\nTEL:12345678\nEND:VCARD\n"
                                 "BEGIN:VCARD\nEND:VCARD\nBEGIN:VCARD\nFN:Lost\nTEL:1\n"_s),
                  u"李四||李四|12345678||||N|"_s, u"12345678|李四||N"_s},
             }) {
            const support::Row row(file.name);
            const Desk desk;
            const QString path = desk.path(file.bytes);
            QCOMPARE(desk.import(path, desk.customers, desk.planFor(path, desk.customers)), u"1/0/0/0"_s);
            QCOMPARE(desk.customersBehind(2), file.customers);
            QCOMPARE(desk.import(path, desk.phoneBook, desk.planFor(path, desk.phoneBook)), u"1/0/0/0"_s);
            QCOMPARE(desk.entries(), file.entries);
        }
    }

    void rowsOnFileStayAreFilledInOrOverwritten()
    {
        for (const auto &[choice, report, first] :
             {std::tuple(OnFile::Stays, u"0/0/2/0"_s, u"Acme|A1|Null|0755-111|Null|Null||Null|old"_s),
              {OnFile::FilledIn, u"0/1/1/0"_s, u"Acme|A1|Kim|0755-111|Null|Null|Rome|Null|old"_s},
              {OnFile::Overwritten, u"0/2/0/0"_s, u"Acme Ltd|A1|Kim|0755111|Null|Null|Rome|Null|new"_s}}) {
            const Desk desk;
            const QString path = desk.path("Company,Contact person,City,Phone,Notes\n"
                                           "Acme Ltd,Kim,Rome,0755111,new\n,,Bern,222333,\n");
            imports::ListPlan plan = desk.planFor(path, desk.customers);
            plan.identify = RowKey::Number;
            plan.onFile = choice;
            QCOMPARE(desk.import(path, desk.customers, plan), report);
            QCOMPARE(desk.customersBehind(0).section(u'\n', 0, 0), first);
            const QString note =
                support::rowsOf(desk.paths.CustomerFile, u"select CustomerName from CallInfo"_s);
            QCOMPARE(note, choice == OnFile::Overwritten ? u"Acme Ltd"_s : u"Acme"_s); // they follow the name
            if (choice == OnFile::Overwritten) { // also where two exchange theirs
                desk.run(desk.path("Company,Contact person,City,Phone\nBay,,,0755111\nAcme Ltd,,,222333\n"),
                         desk.customers, plan, imports::ListImport::Mode::Write);
                QCOMPARE(support::rowsOf(desk.paths.CustomerFile, u"select CustomerName from CallInfo"_s),
                         u"Bay"_s);
            }
        }
    }

    void aFixedTextStandsInEveryRow()
    {
        const Desk desk;
        const QString path = desk.path("Name,City\nAda,Rome\nBob,\n");
        imports::ListPlan plan = desk.planFor(path, desk.customers);
        plan.fixedField = desk.customers.fieldOf(u"city");
        plan.fixedText = u"Ulm"_s;
        QCOMPARE(desk.import(path, desk.customers, plan), u"2/0/0/0"_s);
        QCOMPARE(desk.customersBehind(2), u"Ada||||||Ulm|N|\nBob||||||Ulm|N|"_s);
    }

    void aWorkbookIsReadAsItShows()
    {
        const Desk desk;
        const QString path = desk.folder.filePath(u"book.xlsx"_s);
        const QString script =
            u"import openpyxl,sys,datetime\nb=openpyxl.Workbook();s=b.active;s.title='No'\n"
            "s=b.create_sheet('List');s.append(['Name','Phone','Mobile','Notes','City'])\n"
            "s.append(['Ada','0755123',13912345678,datetime.date(2024,2,29),None])\n"
            "s.append([None,None,None,'  '])\n"
            "s.append(['Bob',755123,1.5,datetime.datetime(2024,1,2,3,4,5),'x\\ny'])\n"
            "s['B4'].number_format='00000000'\nb.save(sys.argv[1])\n"_s;
        QCOMPARE(QProcess::execute(u"/usr/bin/python3"_s, {u"-c"_s, script, path}), 0);
        imports::ListForm form = imports::formOf(path, 936);
        QCOMPARE(form.sheets, QStringList({u"No"_s, u"List"_s}));
        form.sheet = 1;
        const auto source = imports::openList(path, form);
        QStringList rows;
        for (auto row = source->next(); row; row = source->next()) {
            rows.append(QString::number(row->number) + u':' + row->cells.join(u'|'));
        }
        QCOMPARE(rows,
                 QStringList({u"1:Name|Phone|Mobile|Notes|City"_s, u"2:Ada|0755123|13912345678|2024-02-29"_s,
                              u"4:Bob|00755123|1.5|2024-01-02 03:04:05|x\ny"_s}));
    }

    // A packed file of hand-made parts, which no spreadsheet would write.
    void whatWouldHarmIsRefusedWithAReason()
    {
        struct Book
        {
            const char *name;
            QString sheet, outcome;
        };
        for (
            const Book &book :
            {Book{"inline texts, and no references",
                  u"<worksheet><sheetData><row><c "
                  u"t='inlineStr'><is><r><t>A</t></r><rPh><t>no</t></rPh><r><t>da</t></r></is></c>"
                  "<c/><c><v>1.5E3</v></c></row></sheetData></worksheet>"_s,
                  u"Ada||1500"_s},
             {"an entity",
              u"<!DOCTYPE x [<!ENTITY a 'b'>]><worksheet><sheetData><row><c><v>&a;</v></c></row></sheetData></worksheet>"_s,
              u"0 the table in the file cannot be read: it declares entities"_s},
             {"nested without end", QString(u"<a>"_s).repeated(1000),
              u"0 the table in the file cannot be read: nested too deeply"_s},
             {"attributes without end", u"<a"_s + attributes(1001) + u"/>"_s,
              u"0 the table in the file cannot be read: too many attributes"_s},
             {"a text without end", u"<worksheet><sheetData><row><c><v>"_s + QString(3 << 20, u'9'),
              u"0 the table in the file cannot be read: a text that is too long"_s},
             {"a letter that has changed since it was packed",
              u"<worksheet><sheetData><row><c t='str'><v>packed</v></c></row></sheetData></worksheet>"_s,
              u"0 the packed file is damaged, encrypted or too large"_s},
             {"cut off", u"<worksheet><sheetData><row>"_s,
              u"0 the table in the file cannot be read: it is cut off"_s}}) {
            const support::Row row(book.name);
            const Desk desk;
            const QString path = desk.folder.filePath(u"book.xlsx"_s);
            const QString sheet = desk.path(book.sheet.toUtf8(), u"sheet"_s);
            const QString script =
                u"import zipfile,sys\nz=zipfile.ZipFile(sys.argv[1],'w')\n"
                "z.writestr('xl/workbook.xml','<workbook xmlns:r=\"r\"><sheets><sheet name=\"S\" "
                "r:id=\"i\"/></sheets></workbook>')\n"
                "z.writestr('xl/_rels/workbook.xml.rels','<a><Relationship Id=\"i\" "
                "Target=\"s.xml\"/></a>')\n"
                "z.write(sys.argv[2],'xl/s.xml')\nz.close()\nb=open(sys.argv[1],'rb').read()\n"
                "open(sys.argv[1],'wb').write(b.replace(b'packed<',b'Packed<'))"_s;
            QCOMPARE(QProcess::execute(u"/usr/bin/python3"_s, {u"-c"_s, script, path, sheet}), 0);
            QString read;
            const QString error = support::errorOf([&] {
                const auto source = imports::openList(path, imports::formOf(path, 936));
                for (auto found = source->next(); found; found = source->next()) {
                    read += found->cells.join(u'|');
                }
            });
            QCOMPARE(error.isEmpty() ? read : error, book.outcome);
        }
        const Desk desk;
        for (const auto &[bytes, error] :
             {std::pair(QByteArray("PK\x03\x04 broken"),
                        u"0 the packed file is damaged, encrypted or too large"_s),
              {QByteArray("\xD0\xCF\x11\xE0"),
               u"0 this is an old or an encrypted workbook: save it as .xlsx without a password"_s},
              {QByteArray("a\0\0\0b", 5),
               u"0 this is no list of texts, no workbook (.xlsx) and no file of cards (.vcf)"_s}}) {
            const QString path = desk.path(bytes);
            QCOMPARE(support::errorOf([&] { imports::formOf(path, 936); }), error);
        }
    }

    void whatFailsOrIsCancelledLeavesNothing()
    {
        const Desk desk;
        QByteArray many = "Name,Phone\n";
        for (int i = 0; i < 50000; ++i) {
            many += "Name " + QByteArray::number(i) + ",0755" + QByteArray::number(1000000 + i) + '\n';
        }
        const QString path = desk.path(many);
        const imports::ListPlan plan = desk.planFor(path, desk.customers);
        {
            imports::ListImport cancelled(desk.customers, path, plan, imports::ListImport::Mode::Write);
            QTRY_VERIFY(cancelled.perMille() > 500);
            {
                const store::NoWaiting atOnce; // what is written of it so far locks nobody out who reads
                QCOMPARE(desk.customersBehind(2), QString());
            }
            cancelled.cancel();
            QTRY_VERIFY(cancelled.isDone());
            QVERIFY(cancelled.take().isCancelled);
        }
        QCOMPARE(desk.customersBehind(2), QString());
        {
            const support::TakenFile taken(desk.paths.CustomerFile);
            imports::ListImport locked(desk.customers, path, plan, imports::ListImport::Mode::Write);
            QTRY_VERIFY(locked.isDone());
            QVERIFY_THROWS_EXCEPTION(core::Error, locked.take());
        }
        QCOMPARE(desk.customersBehind(2), QString());
        QCOMPARE(
            shown(Desk::run(path, desk.customers, plan, imports::ListImport::Mode::Write), desk.customers),
            u"50000/0/0/0"_s);
    }
};

QTEST_GUILESS_MAIN(tst_ListImport)
#include "tst_ListImport.moc"
