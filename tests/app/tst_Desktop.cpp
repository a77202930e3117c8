#include "RunningProgram.h"
#include "tools/ToolRun.h"

namespace {

QString xdotool(const QString &options)
{
    return runTool("xdotool", options).output.trimmed();
}

QString propertyOf(const QString &window, const QString &name)
{
    return runTool("xprop", u"-id %1 %2"_s.arg(window, name)).output.trimmed();
}

QStringList windowsOf(qint64 process)
{
    return xdotool(u"search --onlyvisible --pid %1"_s.arg(process)).split(u'\n', Qt::SkipEmptyParts);
}

QString windowOfType(const RunningProgram &program, const QString &type)
{
    const QRegularExpression first(u"= [A-Z_]*_TYPE_"_s + type);
    const QStringList windows = windowsOf(program.processId());
    const auto found = std::ranges::find_if(windows, [&](const QString &window) {
        return propertyOf(window, u"_NET_WM_WINDOW_TYPE"_s).contains(first);
    });
    return found != windows.end() ? *found : QString();
}

QString windowTitled(const RunningProgram &program, const QString &title)
{
    return xdotool(
        u"search --onlyvisible --all --pid %1 --name \"%2\""_s.arg(program.processId()).arg(title));
}

void press(const QString &window, const QString &key)
{
    QTRY_VERIFY(xdotool(u"windowactivate %1 getactivewindow"_s.arg(window)) == window);
    xdotool(u"key "_s + key);
}

void minimize(const QString &window)
{
    xdotool(u"windowminimize "_s + window);
    QTRY_VERIFY(propertyOf(window, u"WM_STATE"_s).contains("Iconic"_L1));
}

QString activeWindow()
{
    return xdotool(u"getactivewindow getwindowname"_s);
}

void clickOn(const QString &window, int button)
{
    xdotool(u"mousemove --window %1 8 8 click %2"_s.arg(window).arg(button));
}

/// Answers the question that a program puts, or will put, by these keys.
void answer(const RunningProgram &program, const QString &keys)
{
    QTRY_VERIFY(!windowOfType(program, u"DIALOG"_s).isEmpty());
    const QString question = windowOfType(program, u"DIALOG"_s);
    press(question, keys);
    QTRY_VERIFY(windowOfType(program, u"DIALOG"_s) != question);
}

/// What an operator does to the sample desk's first customer.
struct CustomerEditor
{
    const RunningProgram &program;

    void open() const
    {
        QTRY_VERIFY(!windowOfType(program, u"NORMAL"_s).isEmpty());
        press(windowOfType(program, u"NORMAL"_s), u"Tab Tab Return"_s); // the toolbar's second button
        QTRY_VERIFY(!windowTitled(program, u"^Customers$"_s).isEmpty());
        press(windowTitled(program, u"^Customers$"_s), u"h a r b o r Down Return"_s);
        QTRY_VERIFY(!windowTitled(program, u"^Harbor "_s).isEmpty());
    }
    /// Into the field that is so many places behind the one that has the keyboard.
    void typeAndSave(int tabs, const QString &text) const
    {
        press(windowTitled(program, u"^Harbor "_s), u"Tab "_s.repeated(tabs) + u"ctrl+a"_s);
        xdotool(u"type "_s + text);
        xdotool(u"key ctrl+s"_s);
    }
    QString phoneAndPostalCode() const { return program.firstCustomer(u"WorkPhones,PostalCode"_s); }
};

} // namespace

/// The program on a desktop with a window manager and, where a test starts one, a tray.
class tst_Desktop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_program = std::make_unique<RunningProgram>();
        m_tray = std::make_unique<QProcess>();
    }

    void aSecondInstanceBringsTheFirstToFrontAndTouchesNothing()
    {
        startWithTray();
        hideMainWindow();
        QTRY_VERIFY(!windowOfType(*m_program, u"TOOLTIP"_s).isEmpty()); // the tray icon's balloon
        const QMap<QString, QByteArray> files = m_program->allFiles();
        QProcess second;
        m_program->startProcess(second);
        QTRY_COMPARE(windowsOf(second.processId()).size(), 1); // "App is runing!"
        QTRY_VERIFY(!mainWindow().isEmpty());
        press(windowsOf(second.processId()).first(), u"Return"_s);
        QTRY_COMPARE(second.state(), QProcess::NotRunning);
        QCOMPARE(second.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(m_program->allFiles(), files);
        QTRY_COMPARE(xdotool(u"getactivewindow"_s), mainWindow());
    }

    void theTrayIconBringsTheWindowBackOpensAMenuAndGoesWithTheProgram()
    {
        startWithTray();
        const QString place = xdotool(u"getwindowgeometry "_s + mainWindow()).section(u'\n', 1);
        press(mainWindow(), u"alt+F4"_s);
        QTRY_VERIFY(mainWindow().isEmpty());
        QVERIFY(m_program->isRunning());
        clickOn(trayIcon(), 1);
        QTRY_VERIFY(!mainWindow().isEmpty());
        QTRY_COMPARE(xdotool(u"getwindowgeometry "_s + mainWindow()).section(u'\n', 1), place);

        const qsizetype windows = windowsOf(m_program->processId()).size();
        clickOn(trayIcon(), 3);
        QTRY_COMPARE(windowsOf(m_program->processId()).size(), windows + 1);
        xdotool(u"key Up Return"_s); // its last line ends the program, after a question
        QTRY_VERIFY(!windowOfType(*m_program, u"DIALOG"_s).isEmpty());
        press(windowOfType(*m_program, u"DIALOG"_s), u"Escape"_s);
        QTRY_VERIFY(windowOfType(*m_program, u"DIALOG"_s).isEmpty());
        QCOMPARE(trayWindows(), m_emptyTray + 1);

        hideMainWindow();
        m_program->sendCall();
        QTRY_VERIFY(!windowOfType(*m_program, u"UTILITY"_s).isEmpty());
        QTRY_COMPARE(propertyOf(mainWindow(), u"_NET_WM_USER_TIME"_s).section(u' ', -1), u"0"_s);
        hideMainWindow();
        QCOMPARE(m_program->shutDown(), 0);
        QTRY_COMPARE(trayWindows(), m_emptyTray);
        QVERIFY(m_program->log().endsWith(">  The program has ended\r\n"));
        QCOMPARE(m_program->log().count('!'), 0);
    }

    void whoeverTypesANumberThatIsOnFileKeepsTheKeyboard()
    {
        start();
        press(mainWindow(), u"Tab Return"_s); // the toolbar's first button
        QTRY_COMPARE(activeWindow(), u"Phone book"_s);
        xdotool(u"key alt+a"_s);
        QTRY_COMPARE(activeWindow(), u"Phone book entry"_s);
        press(windowTitled(*m_program, u"^Phone book$"_s), u"Escape"_s); // to be opened anew
        xdotool(u"search --name \"^Phone book entry\" windowactivate"_s);
        QTRY_COMPARE(activeWindow(), u"Phone book entry"_s);
        xdotool(u"type 617-555-0201"_s);
        xdotool(u"key Tab"_s);
        QTRY_COMPARE(activeWindow(), u"617-555-0201"_s); // the box
        xdotool(u"key Return"_s);
        QTRY_COMPARE(activeWindow(), u"Phone book entry"_s);
        xdotool(u"type Zoe"_s);
        QTRY_COMPARE(activeWindow(), u"Zoe - Phone book entry"_s);
        QTRY_VERIFY(!windowTitled(*m_program, u"^Phone book$"_s).isEmpty());
    }

    void twoProgramsOnOneFolderLoseNothingOfEachOtherAndAskWhereBothHaveChangedIt()
    {
        constexpr int phone = 2; // fields behind the name
        constexpr int postalCode = 18;
        RunningProgram other(m_program.get());
        QVERIFY(m_program->start());
        QVERIFY(other.start(">  !iniUDP 10048 "));
        answer(other, u"Return"_s); // the first one has the port
        const CustomerEditor ann{other};
        const CustomerEditor bob{*m_program};
        ann.open();
        bob.open();
        const auto onFile = [&] { return ann.phoneAndPostalCode(); };

        ann.typeAndSave(phone, u"2125550188"_s);
        QTRY_COMPARE(onFile(), u"2125550188|02110"_s);
        const QByteArray call = support::call(u"2125550188"_s, {}, u"5550100"_s, {}, {});
        QTRY_VERIFY((m_program->send(call), !windowOfType(*m_program, u"UTILITY"_s).isEmpty()));
        bob.typeAndSave(postalCode, u"9-1"_s);
        QTRY_COMPARE(onFile(), u"2125550188|9-1"_s); // both stand
        ann.typeAndSave(postalCode - phone, u"9-2"_s);
        answer(other, u"Right Return"_s); // theirs
        QTRY_COMPARE(onFile(), u"2125550188|9-1"_s);
        ann.typeAndSave(0, u"9-3"_s); // nobody was there since
        QTRY_COMPARE(onFile(), u"2125550188|9-3"_s);
        bob.typeAndSave(0, u"9-4"_s);
        answer(*m_program, u"Return"_s); // mine
        QTRY_COMPARE(onFile(), u"2125550188|9-4"_s);
        QCOMPARE(m_program->log().count('!'), 0);
    }

    void callsThatComeUpWhileANoteIsTypedTakeNoLetterAndStayBehindIt()
    {
        start();
        const QString window = mainWindow();
        press(window, u"Tab Tab Tab Return"_s); // the toolbar's third button
        QTRY_COMPARE(activeWindow(), u"Call notes"_s);
        xdotool(u"key alt+a"_s);
        QTRY_COMPARE(activeWindow(), u"Call note"_s);
        const QString note = xdotool(u"getactivewindow"_s);
        const QString letters = u"abcdefghijklmnopqrst"_s;
        for (int call = 1; call <= letters.size(); ++call) {
            if (call == letters.size() / 2) {
                minimize(window);
                xdotool(u"type "_s + letters.at(call - 1));
                QTRY_VERIFY(activeWindow().startsWith(letters.first(call))); // it has heard of both by now
                m_program->sendCall();
            } else {
                m_program->sendCall();
                xdotool(u"type "_s + letters.at(call - 1));
            }
            QTRY_COMPARE(m_program->log().count("<CRMV1"), qsizetype(2) * call);
            QTRY_VERIFY(propertyOf(window, u"WM_STATE"_s).contains("Normal"_L1));
            if (call == 1) {
                QTRY_VERIFY(propertyOf(window, u"_NET_WM_STATE"_s).contains("DEMANDS_ATTENTION"_L1));
            }
            QCOMPARE(xdotool(u"getactivewindow"_s), note);
            QTRY_VERIFY(stands(note) > stands(window));
        }
        QTRY_COMPARE(activeWindow(), letters + u" - Call note"_s); // which were typed into the name
        QVERIFY(!windowOfType(*m_program, u"UTILITY"_s).isEmpty());

        minimize(window);
        press(note, u"Escape"_s); // the name is not saved
        QTRY_VERIFY(!windowOfType(*m_program, u"DIALOG"_s).isEmpty());
        m_program->sendCall(); // waits until the question is answered
        answer(*m_program, u"Escape"_s);
        QTRY_COMPARE(m_program->log().count("<CRMV1"), 2 * (letters.size() + 1));
        QTRY_VERIFY(propertyOf(window, u"WM_STATE"_s).contains("Normal"_L1));
        QTRY_VERIFY(stands(note) > stands(window));
    }

    void withoutATrayTheWindowMinimizes()
    {
        start();
        const QString window = mainWindow();
        for (const QString &key : {u"Escape"_s, u"alt+F4"_s}) {
            press(window, key);
            QTRY_VERIFY(propertyOf(window, u"WM_STATE"_s).contains("Iconic"_L1));
        }
        QVERIFY(m_program->isRunning());
    }

private:
    void start()
    {
        QVERIFY(m_program->start());
        QTRY_VERIFY(!mainWindow().isEmpty());
    }
    void startWithTray()
    {
        m_tray->start(u"trayer"_s, QStringLiteral("--edge top --align right --SetDockType true"
                                                  " --widthtype request --height 24")
                                       .split(u' '));
        QTRY_VERIFY(!windowsOf(m_tray->processId()).isEmpty());
        m_trayPanel = windowsOf(m_tray->processId()).first();
        m_emptyTray = trayWindows();
        start();
        QTRY_VERIFY(!trayIcon().isEmpty());
        QTRY_COMPARE(trayWindows(), m_emptyTray + 1);
    }
    qsizetype trayWindows() const
    {
        static const QRegularExpression child(u"^ {5}0x"_s, QRegularExpression::MultilineOption);
        return runTool("xwininfo", u"-tree -id "_s + m_trayPanel).output.count(child);
    }
    QString mainWindow() const { return windowOfType(*m_program, u"NORMAL"_s); }
    QString trayIcon() const { return windowOfType(*m_program, u"OVERRIDE"_s); }
    /// Not within a second behind the end of another window, for which the key was meant then.
    void hideMainWindow() const
    {
        QTRY_VERIFY(
            (xdotool(u"windowactivate --sync %1 key Escape"_s.arg(mainWindow())), mainWindow().isEmpty()));
    }
    /// How far up a window stands.
    static qsizetype stands(const QString &window)
    {
        const QString id = u"0x"_s + QString::number(window.toLongLong(), 16);
        static const QRegularExpression separator(u"[ ,]+"_s);
        const QString stack = runTool("xprop", u"-root _NET_CLIENT_LIST_STACKING"_s).output.trimmed();
        return stack.split(separator).indexOf(id);
    }

    std::unique_ptr<QProcess> m_tray;
    QString m_trayPanel;
    qsizetype m_emptyTray = 0;
    std::unique_ptr<RunningProgram> m_program;
};

QTEST_GUILESS_MAIN(tst_Desktop)
#include "tst_Desktop.moc"
