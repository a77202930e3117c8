#include "ProgramDesk.h"
#include "support/Rows.h"

#include <QProcess>

using customers::FrmEditCustomer;

/// Two programs on one folder: what one of them saves, the other one knows, without being started again.
class tst_TwoDesks : public QObject
{
    Q_OBJECT

    /// Another program, in a process of its own, with this desk's databases and a data folder of its own.
    class OtherDesk
    {
    public:
        explicit OtherDesk(const ProgramDesk &desk)
        {
            m_process.start(QCoreApplication::applicationFilePath(),
                            {u"desk"_s, desk.paths.StartFolder, m_folder.path()});
            QVERIFY(told("ready"));
        }
        ~OtherDesk()
        {
            m_process.closeWriteChannel();
            m_process.waitForFinished();
        }
        Q_DISABLE_COPY_MOVE(OtherDesk)
        /// Has the other operator do something, and waits until he has.
        bool does(const QByteArray &work)
        {
            m_process.write(work + '\n');
            return told("done");
        }

    private:
        bool told(const QByteArray &answer)
        {
            return (m_process.canReadLine() || m_process.waitForReadyRead(60000)) &&
                   m_process.readLine().trimmed() == answer;
        }
        QTemporaryDir m_folder;
        QProcess m_process;
    };

    /// The row of a call from this number that the sender matches with nobody; nothing where it gets none. A
    /// call of a stranger's, who gets no row, follows and tells when it was handled.
    static QString rowOf(ProgramDesk &desk, const QString &number)
    {
        static int strangers = 0;
        const QString stranger = QString::number(9000000 + ++strangers);
        mainwindow::CallGridModel &calls = desk.window().calls();
        const int rows = calls.rowCount();
        for (const QString &caller : {number, stranger}) {
            desk.send(call(caller, {}, u"5550100"_s, {}, {}));
        }
        if (!QTest::qWaitFor([&] { return desk.lastCaller().contains(stranger); }, 30000)) {
            return u"not received"_s;
        }
        calls.publish();
        return calls.rowCount() == rows ? QString()
                                        : calls.cell(0, u"ID"_s) + u' ' + calls.cell(0, u"SimpleDes"_s);
    }

private Q_SLOTS:
    void whatOneSavesComesUpAtTheOther()
    {
        const QString added = u"2125550188"_s;
        ProgramDesk desk;
        QVERIFY(desk.start());
        OtherDesk other(desk);
        QVERIFY(rowOf(desk, added).isEmpty());
        QVERIFY(other.does("add 2125550188"));
        QTRY_VERIFY_WITH_TIMEOUT(rowOf(desk, added).contains(u"CUSTOMER"_s), 5000);
        QVERIFY(rowOf(desk, added).endsWith(u" Added"_s));
        QVERIFY(other.does("renumber 1 2125550199"));
        QTRY_COMPARE_WITH_TIMEOUT(rowOf(desk, u"2125550199"_s), u"CUSTOMER1 Harbor Lantern Hotel"_s, 5000);
        QCOMPARE(rowOf(desk, vipNumber), QString());
        QVERIFY(other.does("switchOff 1"));
        QTRY_COMPARE_WITH_TIMEOUT(rowOf(desk, u"2125550199"_s), QString(), 5000);
        QVERIFY(other.does("delete Added"));
        QTRY_COMPARE_WITH_TIMEOUT(rowOf(desk, added), QString(), 5000);
    }
};

namespace {

void save(ProgramDesk &desk, int sn, const std::function<void()> &change)
{
    desk.program->windows().Show_Editor({core::RowKey::Table::Customer, sn});
    change();
    press<FrmEditCustomer>("Command2");
    openForm<FrmEditCustomer>()->close();
}

void carryOut(ProgramDesk &desk, const QStringList &work)
{
    if (work.first() == "add"_L1) {
        desk.program->windows().addCustomer(work.value(1), {}, {});
        type<FrmEditCustomer>("txtCustomerName", u"Added"_s);
        press<FrmEditCustomer>("Command2");
        openForm<FrmEditCustomer>()->close();
    } else if (work.first() == "renumber"_L1) {
        save(desk, work.value(1).toInt(), [&] { type<FrmEditCustomer>("txtCompanyCall", work.value(2)); });
    } else if (work.first() == "switchOff"_L1) {
        save(desk, work.value(1).toInt(),
             [] { find<FrmEditCustomer>("ChkPopTheCaller")->setChecked(false); });
    } else {
        desk.program->windows().showCustomerList(
            u"select * from customer where CustomerName='%1'"_s.arg(work.value(1)), nullptr);
        support::columnOf(*find<customers::FrmCustomer, QTableView>("DataGrid1")->model());
        desk.prompts.expect(true);
        press<customers::FrmCustomer>("Command5");
    }
}

/// The other desk: does what it is told, a line each.
int beDesk(const QString &startFolder, const QString &dataFolder)
{
    ProgramDesk desk(false);
    desk.paths = core::pathsBelow(startFolder, dataFolder);
    if (!desk.start()) {
        return 1;
    }
    std::printf("ready\n");
    std::fflush(stdout);
    QFile input;
    bool going = input.open(stdin, QIODevice::ReadOnly);
    while (going) {
        const QByteArray line = input.readLine().trimmed();
        going = !line.isEmpty();
        if (going) {
            carryOut(desk, QString::fromUtf8(line).split(u' '));
            std::printf("done\n");
            std::fflush(stdout);
        }
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "desk"_L1) {
        return beDesk(arguments.value(2), arguments.value(3));
    }
    tst_TwoDesks test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_TwoDesks.moc"
