#include "ProgramDesk.h"
#include "notes/forms/frmNotePad.h"
#include "notes/forms/frmNotePadManager.h"
#include "support/Rows.h"

#include <cstdio>
#include <sqlite3.h>

using customers::FrmCustomer, customers::FrmEditCustomer;
using notes::frmNotePad, notes::frmNotePadManager;
using options::frmLanguageEditor, options::frmOptions;
using phonebook::frmSimplePhoneBook, phonebook::frmSimplePhoneBookEdit;

namespace {

/// What the engine has slept while it waited for locks; the speed of the machine is no part of it.
qint64 sleptUs = 0;
int (*engineSleep)(sqlite3_vfs *, int) = nullptr;

int countedSleep(sqlite3_vfs *system, int microseconds)
{
    sleptUs += microseconds;
    return engineSleep(system, microseconds);
}

/// Takes files to itself, as another desk does that saves for long.
class OtherProgram
{
public:
    explicit OtherProgram(const QStringList &files)
    {
        m_process.start(QCoreApplication::applicationFilePath(), QStringList(u"lock"_s) + files);
        QVERIFY(m_process.waitForReadyRead() && m_process.readAllStandardOutput() == "locked\n");
    }
    ~OtherProgram() { end(); }
    Q_DISABLE_COPY_MOVE(OtherProgram)

    void end()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }
    static int run(const QStringList &files)
    {
        std::vector<std::unique_ptr<store::Database>> locked;
        for (const QString &file : files) {
            locked.push_back(std::make_unique<store::Database>(file));
            locked.back()->Execute(u"begin exclusive"_s);
        }
        std::puts("locked");
        std::fflush(stdout);
        return std::getchar() == EOF ? 0 : 1;
    }

private:
    QProcess m_process;
};

/// Agrees to everything, and drops what was typed.
struct Agreeing : core::Prompts
{
    explicit Agreeing(const QString &folder) : target(folder + u"/target"_s) {}
    using Prompts::askSave;
    void tell(const QString &, const QString &, QWidget *) override {}
    bool askOkCancel(const QString &, const QString &) override { return true; }
    Answer askSave(const QString &, QWidget *, const SaveWords &) override { return Answer::Discard; }
    QString saveFileName(const QString &, const QString &) override { return target; }
    bool isOpen() const override { return false; }
    QString target;
};

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

} // namespace

/// However long another program keeps the files to itself, no turn of the window's thread waits for it longer
/// than half a second.
class tst_Stalls : public QObject
{
    Q_OBJECT

    struct LockedDesk : ProgramDesk
    {
        Agreeing agreeing{folder.path()};
        QStringList files{paths.CustomerFile, paths.PhoneBookFile, paths.UserLangFile, paths.LangFile,
                          paths.StartFolder + u"/Help/HelpENG.chlp"_s};

        ~LockedDesk() { program.reset(); } // it speaks to the doors of this desk to the last

        bool start()
        {
            program = std::make_unique<app::Program>(
                app::Outside{agreeing, shell, printer, clock, paths.StartFolder, paths.DataFolder,
                             folder.path(), QString(), 0x0409, port, [this] { ended = true; }});
            return program->subMain();
        }
        core::Navigator &windows() const { return program->windows(); }
    };

    static constexpr qint64 longestWaitMs = 550;

    static void openAll(LockedDesk &desk)
    {
        desk.windows().show(core::Window::CustomerList);
        desk.windows().show(core::Window::PhoneBook);
        desk.windows().show(core::Window::CallNotes);
        desk.windows().show(core::Window::Options);
        desk.windows().Show_Editor({core::RowKey::Table::Customer, 1});
        desk.windows().Show_Editor({core::RowKey::Table::PhoneBook, 1});
        desk.windows().ShowNotePad(u"Harbor Lantern Hotel"_s);
        press<frmOptions>("cmdLanguageEditor");
        press<frmNotePadManager>("cmdAllDates");
    }

    /// Everything in the windows that reads or writes a file.
    static QList<std::pair<const char *, std::function<void()>>> acts(LockedDesk &desk)
    {
        return {
            {"notes: six conditions",
             [] {
                 for (const char *box : {"txtCallID", "txtCustomerName", "txtConsultant", "txtContent",
                                         "txtRequest", "txtNote"}) {
                     type<frmNotePadManager>(box, u"a"_s);
                 }
                 press<frmNotePadManager>("cmdShowResult");
             }},
            {"notes: all dates", [] { press<frmNotePadManager>("cmdAllDates"); }},
            {"notes: print", [] { press<frmNotePadManager>("cmdPrintOut"); }},
            {"notes: export", [] { press<frmNotePadManager>("cmdExport"); }},
            {"customers: typing", [] { type<FrmCustomer>("txtSearch", u"lantern"_s); }},
            {"customers: sort",
             [] { find<FrmCustomer, QTableView>("DataGrid1")->horizontalHeader()->sectionClicked(1); }},
            {"customers: delete", [] { press<FrmCustomer>("Command5"); }},
            {"customers: edit", [] { press<FrmCustomer>("Command4"); }},
            {"phone book: typing", [] { type<frmSimplePhoneBook>("txtSearch", u"a"_s); }},
            {"phone book: delete", [] { press<frmSimplePhoneBook>("cmdPhonebook_delete"); }},
            {"entry: save",
             [] {
                 type<frmSimplePhoneBookEdit>("txtTelno", u"2125550100"_s);
                 press<frmSimplePhoneBookEdit>("Command1");
             }},
            {"customer: name", [] { type<FrmEditCustomer>("txtCustomerName", u"Changed"_s); }},
            {"customer: save", [] { press<FrmEditCustomer>("Command2"); }},
            {"customer: notes", [] { press<FrmEditCustomer>("cmdViewNotePad"); }},
            {"note: report", [] { press<frmNotePad>("cmdRefreshReport"); }},
            {"note: save",
             [] {
                 for (const char *box : {"txtConsultant", "txtContent", "txtRequest", "txtResponse"}) {
                     type<frmNotePad>(box, u"a"_s);
                 }
                 press<frmNotePad>("cmdSave");
             }},
            {"language: search",
             [] {
                 type<frmLanguageEditor>("txtCondition", u"a"_s);
                 press<frmLanguageEditor>("cmdSearch");
             }},
            {"export: open", [] { press<FrmCustomer>("cmdExport"); }},
            {"another customer",
             [&desk] {
                 desk.windows().Show_Editor({core::RowKey::Table::Customer, 2});
             }},
            {"customer by name", [&desk] { desk.windows().ShowCustomerByName(u"Harbor Lantern Hotel"_s); }},
            {"new customer", [&desk] { desk.windows().addCustomer(u"1"_s, u"lantern"_s, {}); }},
            {"another entry",
             [&desk] {
                 desk.windows().Show_Editor({core::RowKey::Table::PhoneBook, 2});
             }},
            {"help", [&desk] { desk.windows().ShowHelp(u"Popup_CustomerDatabase"_s); }}};
    }

private Q_SLOTS:
    void theProgramStarts()
    {
        LockedDesk desk;
        Turns turns;
        OtherProgram other(desk.files);
        QVERIFY(turns.waitsFor([&desk] { QVERIFY(desk.start()); }));
        QVERIFY2(turns.longestMs() <= longestWaitMs, qPrintable(QString::number(turns.longestMs())));
        other.end();
        desk.send(call(vipNumber, u"Harbor Lantern Hotel"_s));
        QTRY_VERIFY(desk.lastCaller().contains(vipNumber));
    }

    void everyWindowIsUsedAndFollowsWhenTheFilesAreFree()
    {
        LockedDesk desk;
        QVERIFY(desk.start());
        openAll(desk);
        Turns turns;
        OtherProgram other(desk.files);
        for (const auto &[name, act] : acts(desk)) {
            turns.waitsFor(act);
            QVERIFY2(turns.longestMs() <= longestWaitMs,
                     qPrintable(QLatin1StringView(name) + u": "_s + QString::number(turns.longestMs())));
        }
        const QLabel &message = *find<FrmCustomer, QLabel>("lblMessage");
        QVERIFY(message.text().contains(u"another program"_s));
        other.end();
        QTRY_COMPARE(support::columnOf(*find<FrmCustomer, QTableView>("DataGrid1")->model()),
                     u"Harbor Lantern Hotel"_s);
        QCOMPARE(message.text(), QString());
        QTRY_COMPARE((find<frmNotePadManager, QTableView>("DataGrid1")->model()->rowCount()), 0);
    }
};

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "lock"_L1) {
        return OtherProgram::run(arguments.sliced(2));
    }
    sqlite3_vfs *system = sqlite3_vfs_find(nullptr);
    engineSleep = std::exchange(system->xSleep, countedSleep);
    tst_Stalls test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Stalls.moc"
