#include "ProgramDesk.h"
#include "notes/forms/frmNotePadManager.h"
#include "support/Rows.h"

#include <sqlite3.h>

using customers::FrmCustomer;
using notes::frmNotePadManager;

namespace {

/// What the engine has slept while it waited for locks; the speed of the machine is no part of it.
qint64 sleptUs = 0;
int (*engineSleep)(sqlite3_vfs *, int) = nullptr;

int countedSleep(sqlite3_vfs *system, int microseconds)
{
    sleptUs += microseconds;
    return engineSleep(system, microseconds);
}

/// The longest that the engine has slept within one turn of the event loop.
class Turns : public QObject
{
public:
    Turns()
    {
        connect(&m_heartbeat, &QTimer::timeout, this, [this] { endTurn(); });
        m_heartbeat.start(0);
    }
    /// Runs `act` as one turn, and the turns behind it until one of them, or the act itself, has waited.
    bool waitsFor(const std::function<void()> &act)
    {
        constexpr int longestMs = 700; // a pause in typing, and more
        const qint64 before = sleptUs;
        endTurn();
        m_longestUs = 0;
        act();
        const bool waited = QTest::qWaitFor([&] { return sleptUs > before; }, longestMs);
        QCoreApplication::processEvents();
        endTurn();
        return waited;
    }
    qint64 longestMs() const { return m_longestUs / 1000; }

private:
    void endTurn() { m_longestUs = std::max(m_longestUs, sleptUs - std::exchange(m_turnFrom, sleptUs)); }

    QTimer m_heartbeat;
    qint64 m_turnFrom = sleptUs;
    qint64 m_longestUs = 0;
};

struct LockedDesk : ProgramDesk
{
    std::vector<std::unique_ptr<support::TakenFile>> others;

    LockedDesk() { prompts.agreesToFile = folder.filePath(u"target"_s); }
    void takeFiles()
    {
        for (const QString &file : {paths.CustomerFile, paths.PhoneBookFile, paths.UserLangFile,
                                    paths.LangFile, paths.StartFolder + u"/Help/HelpENG.chlp"_s}) {
            others.push_back(std::make_unique<support::TakenFile>(file));
        }
    }
    core::Navigator &windows() const { return program->windows(); }
};

void openAll(const LockedDesk &desk)
{
    for (const core::Window window : {core::Window::CustomerList, core::Window::PhoneBook,
                                      core::Window::CallNotes, core::Window::Options}) {
        desk.windows().show(window);
    }
    desk.windows().Show_Editor({core::RowKey::Table::Customer, 1});
    desk.windows().Show_Editor({core::RowKey::Table::PhoneBook, 1});
    desk.windows().ShowNotePad(u"Harbor Lantern Hotel"_s);
    support::act(u"frmOptions"_s, u"cmdLanguageEditor"_s);
    support::act(u"frmNotePadManager"_s, u"cmdAllDates"_s);
}

/// Everything in the windows that reads or writes a file.
QList<std::pair<QString, QString>> acts()
{
    return {{u"frmNotePadManager"_s,
             u"txtCallID=a txtCustomerName=a txtConsultant=a txtContent=a txtRequest=a "
             "txtNote=a cmdShowResult"_s},
            {u"frmNotePadManager"_s, u"cmdAllDates"_s},
            {u"frmNotePadManager"_s, u"cmdPrintOut"_s},
            {u"frmNotePadManager"_s, u"cmdExport"_s},
            {u"FrmCustomer"_s, u"txtSearch=lantern"_s},
            {u"FrmCustomer"_s, u"Command5"_s}, // delete
            {u"FrmCustomer"_s, u"Command4"_s}, // edit
            {u"frmSimplePhoneBook"_s, u"txtSearch=a"_s},
            {u"frmSimplePhoneBook"_s, u"cmdPhonebook_delete"_s},
            {u"frmSimplePhoneBookEdit"_s, u"txtTelno=2125550100 Command1"_s},
            {u"FrmEditCustomer"_s, u"txtCustomerName=Changed"_s},
            {u"FrmEditCustomer"_s, u"Command2"_s}, // save
            {u"FrmEditCustomer"_s, u"cmdViewNotePad"_s},
            {u"frmNotePad"_s, u"cmdRefreshReport"_s},
            {u"frmNotePad"_s, u"txtConsultant=a txtContent=a txtRequest=a txtResponse=a cmdSave"_s},
            {u"frmLanguageEditor"_s, u"txtCondition=a cmdSearch"_s},
            {u"FrmCustomer"_s, u"cmdExport"_s}};
}

} // namespace

/// However long another program keeps the files to itself, no turn of the window's thread waits for it longer
/// than half a second.
class tst_Stalls : public QObject
{
    Q_OBJECT

    Turns m_turns;

    void isShort(const QString &name, const std::function<void()> &act, bool waits = false)
    {
        constexpr qint64 longestWaitMs = 550;
        const bool waited = m_turns.waitsFor(act);
        const QString told = name + u": "_s + QString::number(m_turns.longestMs());
        QVERIFY2(m_turns.longestMs() <= longestWaitMs && (waited || !waits), qPrintable(told));
    }

private Q_SLOTS:
    void theProgramStarts()
    {
        LockedDesk desk;
        desk.takeFiles();
        isShort(
            u"start"_s, [&desk] { QVERIFY(desk.start()); }, true);
        desk.others.clear();
        desk.showsACall();
    }

    void everyWindowIsUsedAndFollowsWhenTheFilesAreFree()
    {
        LockedDesk desk;
        QVERIFY(desk.start());
        openAll(desk);
        desk.takeFiles();
        for (const auto &[window, steps] : acts()) {
            isShort(window + u' ' + steps, [&] { support::act(window, steps); });
        }
        QTableView &list = *find<FrmCustomer, QTableView>("DataGrid1");
        isShort(u"sort"_s, [&list] { Q_EMIT list.horizontalHeader()->sectionClicked(1); });
        for (const core::RowKey::Table table :
             {core::RowKey::Table::Customer, core::RowKey::Table::PhoneBook}) {
            isShort(u"editor"_s, [&] { desk.windows().Show_Editor({table, 2}); });
        }
        isShort(u"new customer"_s, [&] { desk.windows().addCustomer(u"1"_s, u"lantern"_s, {}); });
        isShort(u"help"_s, [&] { desk.windows().ShowHelp(u"Popup_CustomerDatabase"_s); });
        const QLabel &message = *find<FrmCustomer, QLabel>("lblMessage");
        QVERIFY(message.text().contains(u"another program"_s));
        desk.others.clear();
        QTRY_COMPARE(support::columnOf(*list.model()), u"Harbor Lantern Hotel"_s);
        QCOMPARE(message.text(), QString());
        QTRY_COMPARE((find<frmNotePadManager, QTableView>("DataGrid1")->model()->rowCount()), 0);
    }
};

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    sqlite3_vfs *system = sqlite3_vfs_find(nullptr);
    engineSleep = std::exchange(system->xSleep, countedSleep);
    tst_Stalls test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Stalls.moc"
