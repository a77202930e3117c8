#include "CustomerDesk.h"
#include "customers/CustomerExport.h"
#include "customers/CustomerQueries.h"

#include <QProcess>

#include <numeric>

/// The spreadsheet file, read back by another program.
class tst_CustomerExport : public QObject
{
    Q_OBJECT

    struct Desk : support::TestDesk
    {
        QString target = folder.filePath(u"客户 list.xlsx"_s);

        Desk() { deliver(u"Customer"_s, paths.CustomerFile); }
        bool exportAll(const QList<int> &fields) const
        {
            QStringList headings;
            for (const int field : fields) {
                headings.append(u"H%1"_s.arg(field));
            }
            customers::CustomerExport running(paths.CustomerFile, customers::exportQuery(fields, u"rowid,"_s),
                                              headings, target);
            const bool ended = QTest::qWaitFor([&] { return running.hasEnded(); }, 60000);
            return ended && !running.drop(); // too late
        }
        /// What a Python expression over the sheet `s` of the workbook gives.
        QString read(const QString &expression) const
        {
            const QString script = u"import openpyxl,sys\nb=openpyxl.load_workbook(sys.argv[1])\ns=b.active\n"
                                   "sys.stdout.buffer.write(str(%1).encode())"_s.arg(expression);
            QProcess python;
            python.start(u"/usr/bin/python3"_s, {u"-c"_s, script, target});
            python.waitForFinished();
            return QString::fromUtf8(python.readAllStandardOutput() + python.readAllStandardError());
        }
        QStringList files() const { return QDir(folder.path()).entryList({u"*.xlsx*"_s}, QDir::Files); }
    };

private Q_SLOTS:
    void aSearchIsBuiltInTheGivenWords()
    {
        QCOMPARE(customers::searchQuery(u" 1 2 "_s),
                 u"Select * from customer where  [CustomerName] like '*1 2*' or [WorkPhones] like '*1 2*' or "
                 "[ContactPersonName] like '*1 2*' or [City] like '*1 2*' or [Broker] like '*1 2*' or "
                 "[ContactPersonEmail] like '*1 2*' or [CustomerType] like '*1 2*' or [Note] like '*1 2*'"_s);
    }

    void everyCellArrivesAsTheTextItIs()
    {
        const Desk desk;
        const QString emoji = QString(40000, u'x').insert(32766, u"😀"_s);
        const QString note = u"two\r\nlines\tof \u0001 a_x0041_b"_s;
        customerSql(desk,
                    u"insert into customer(SN,CustomerName,CustomerID,ContactPersonName,WorkPhones,City,"
                    "Address,Note,ifinblacklist,CustomerServiceID) values(7,?,?,?,?,?,?,?,1,?)"_s,
                    {u"=1+1"_s, u"+49"_s, u"山田 محمد 😀"_s, u"0755"_s, emoji, u"<&>\"'"_s, note, u"1e5"_s});
        customerSql(desk, u"insert into customer(SN) values(9)"_s);
        QStringList others;
        for (const customers::ExportField &field : customers::exportFields()) {
            const QString column = QLatin1String(field.column);
            others.append(column == "SN"_L1 ? u"9"_s : fullCustomer().text(column));
            customerSql(desk, u"update customer set "_s + column + u" = ? where SN = 9"_s, {others.last()});
        }
        QList<int> all(customers::exportFieldCount);
        std::iota(all.begin(), all.end(), 0);
        QVERIFY(desk.exportAll(all));
        QCOMPARE(desk.files(), QStringList(u"客户 list.xlsx"_s));
        QCOMPARE(desk.read(u"[c.value for c in s[1]]==['H%d'%i for i in range(27)]"_s), u"True"_s);
        QCOMPARE(desk.read(u"'|'.join([s[p].value for p in ('A2','B2','C2','D2','H2','P2','Z2','AA2')])"_s),
                 u"=1+1|+49|山田 محمد 😀|0755|<&>\"'|7|1e5|1"_s);
        QCOMPARE(desk.read(u"'|'.join(c.value for c in s[3])"_s), others.join(u'|'));
        QCOMPARE(desk.read(u"set(c.data_type for c in s[2] if c.value is not None)"_s), u"{'s'}"_s);
        QCOMPARE(desk.read(u"s['E2'].value=='x'*32766"_s), u"True"_s); // half a pair would not fit
        QCOMPARE(desk.read(u"s['N2'].value"_s), u"two\nlines\tof   a_x005F_x0041_b"_s);
        QCOMPARE(desk.read(u"(s['D2'].number_format,s.max_row)"_s), u"('@', 3)"_s); // retyped, it stays text
    }

    void manyRowsKeepTheirOrderAndAFailedOrDroppedExportTheOldFile()
    {
        const Desk desk;
        customerSql(desk, u"insert into customer(SN) with recursive counted(i) as (select 1 union all select "
                          "i + 1 from counted where i < 9999) select 3 * i from counted"_s);
        QVERIFY(desk.exportAll({15}));
        QCOMPARE(desk.read(u"[int(r[0]) for r in s.iter_rows(2,values_only=True)]==list(range(3,30000,3))"_s),
                 u"True"_s);
        const QByteArray old = desk.fileBytes(desk.target);
        {
            desk.runSql(
                desk.paths.CustomerFile,
                u"insert into customer(SN) with recursive counted(i) as (select 30000 union all select "
                "i + 1 from counted where i < 300000) select i from counted"_s);
            customers::CustomerExport dropped(desk.paths.CustomerFile,
                                              customers::exportQuery({15, 15, 15}, u"rowid,"_s),
                                              {u"1"_s, u"2"_s, u"3"_s}, desk.target);
            QTRY_VERIFY(dropped.rowsWritten() > 0);
            {
                const support::TakenFile taken(desk.paths.CustomerFile); // for longer than a window waits
                QVERIFY(!QTest::qWaitFor([&] { return dropped.hasEnded(); }, 1000));
            }
            const int rows = dropped.rowsWritten();
            QTRY_VERIFY(dropped.rowsWritten() > rows);
            QVERIFY(dropped.drop());
            QVERIFY(QTest::qWaitFor([&] { return dropped.hasEnded(); }, 60000));
        }
        QFile(desk.target).setPermissions(QFile::ReadOwner);
        QVERIFY_THROWS_EXCEPTION(core::Error, desk.exportAll({0}));
        QCOMPARE(desk.fileBytes(desk.target), old);
        QCOMPARE(desk.files(), QStringList(u"客户 list.xlsx"_s));
    }
};

QTEST_GUILESS_MAIN(tst_CustomerExport)
#include "tst_CustomerExport.moc"
