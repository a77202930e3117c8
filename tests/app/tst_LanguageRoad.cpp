#include "ProgramDesk.h"
#include "support/Rows.h"

#include <QNetworkDatagram>

using messages::frmSendSMS;
using options::frmLanguageEditor;

namespace {

struct Operator : ProgramDesk
{
    /// The system speaks another language than the program when its operator chose so.
    Operator(quint16 system, const QString &language)
    {
        systemLanguageId = system;
        core::SettingsRecord record;
        record.LanguageSetting.setText(language);
        writeFile(paths.SettingsFile, record.toBytes());
    }
    /// Passes on what this operator sends to the other, as the server does.
    void serve(Operator &other)
    {
        QObject::connect(&unit, &QUdpSocket::readyRead, &unit, [&] {
            while (unit.hasPendingDatagrams()) {
                other.send(unit.receiveDatagram().data());
            }
        });
        send("the server is up");
        QTRY_VERIFY(logged("the server is up"));
    }
    void say(const QString &to, const QString &text) const
    {
        program->windows().show(core::Window::SendMessage);
        find<frmSendSMS, QComboBox>("txtSendTo")->setEditText(to);
        find<frmSendSMS, QPlainTextEdit>("txtSMS")->setPlainText(text);
        press<frmSendSMS>("Command6");
        openForm<frmSendSMS>()->close();
    }
    void filesAndShows(const QString &text)
    {
        const QByteArray entry = "<" + clock.time.toString(u"yyyy-MM-dd HH:mm:ss"_s).toLatin1() + ">  \r\n" +
                                 text.toUtf8() + "\r\n\r\n";
        m_log += entry;
        QTRY_COMPARE(fileBytes(paths.SmsFile), m_log);
        const QString month = clock.time.toString(u"yyyy-MM"_s);
        QCOMPARE(fileBytes(paths.SmsFolder + u"/SMS"_s + month + u".txt"_s), entry);
        QCOMPARE((find<messages::frmShowSMS, QPlainTextEdit>("txtSMS")->toPlainText()), text);
        openForm<messages::frmShowSMS>()->close();
    }

private:
    QByteArray m_log;
};

} // namespace

/// What operators of other languages write, and how they change the program's own words.
class tst_LanguageRoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void operatorsExchangeMessagesOverTheTurnOfAMonth()
    {
        for (const auto &[system, language, question, answer] :
             {std::tuple(0x0409, u"CHS"_s, u"Lunch at {{12}}?"_s, u"Yes \u2013 O\u2019Brien\u2019s"_s),
              {0x0804, u"AUTO"_s, u"请回电张三"_s, u"谢谢"_s}, // which could be UTF-8
              {0x0804, u"ENG"_s, u"请回电张三"_s, u"好的，谢谢！"_s},
              {0x042A, u"USER"_s, u"Gọi lại cho bà Nguyễn"_s, u"Được ạ, cảm ơn"_s},
              {0x0401, u"ARA"_s, u"اتصل بسارة من فضلك"_s, u"حسنا، شكرا"_s}}) {
            Operator ann(quint16(system), language);
            Operator bob(quint16(system), language);
            QVERIFY(ann.start() && bob.start());
            ann.serve(bob);
            bob.serve(ann);
            for (const QDateTime &time :
                 {QDateTime({2026, 11, 30}, {23, 59, 59}), QDateTime({2026, 12, 1}, {})}) {
                ann.clock.time = bob.clock.time = time;
                ann.say(u"Bob"_s, question);
                bob.filesAndShows(question);
                bob.say(u"ALL"_s, answer);
                ann.filesAndShows(answer);
            }
            QVERIFY(!ann.logged(">  !") && !bob.logged(">  !iniUDP"));
        }
    }

    void aLanguageThatWasLockedAtTheStartIsShownOnceItIsFree()
    {
        Operator desk(0x0409, u"FRN"_s);
        std::optional<store::Database> other(desk.paths.StartFolder + u"/FRN.lan"_s);
        other->Execute(u"begin exclusive"_s);
        QVERIFY(desk.start());
        const auto caption = [&desk] { return desk.window().findChild<QAction *>(u"Command4"_s)->text(); };
        QCOMPARE(caption(), u"Phone book"_s);
        QCOMPARE(desk.source(), u"Nothing has been received yet"_s);
        desk.prompts.expect(false); // in English, too
        desk.choose("Command2");
        QVERIFY(desk.prompts.asked.value(0).startsWith("Exit the program?"_L1));
        other.reset();
        QTRY_COMPARE(caption(), u"Répertoire"_s);
        QVERIFY(desk.source().startsWith("Rien "_L1));
        const QAbstractItemModel &calls = desk.window().calls();
        QVERIFY(calls.headerData(1, Qt::Horizontal).toString() != u"Caller number"_s);
        QCOMPARE(desk.prompts.asked.size(), 1);
    }

    void aTextOfTheOperatorsOwnTranslationIsShownAfterARestart()
    {
        ProgramDesk desk;
        QVERIFY(desk.start());
        const auto caption = [&desk] { return desk.window().findChild<QAction *>(u"cmdCallInfo"_s)->text(); };
        QVERIFY(!caption().contains(u"Logbook"_s));
        desk.choose("Command3");
        press<options::frmOptions>("cmdLanguageEditor");
        type<frmLanguageEditor>("txtCondition", u"NotePad"_s);
        press<frmLanguageEditor>("cmdSearch");
        auto *grid = find<frmLanguageEditor, QTableView>("DBGrid1");
        QVERIFY(support::columnOf(*grid->model()).contains(u"NotePad"_s));
        const QModelIndexList rows = grid->model()->match(grid->model()->index(0, 0), Qt::DisplayRole,
                                                          u"NotePad"_s, 1, Qt::MatchExactly);
        QCOMPARE(rows.size(), 1);
        support::typeCell(grid, rows.first().siblingAtColumn(1), u"Logbook"_s);
        QTRY_COMPARE(grid->currentIndex().data().toString(), u"Logbook"_s);
        find<frmLanguageEditor>("chkUseUserLang")->click();
        press<frmLanguageEditor>("cmdReturn");
        desk.prompts.expect(true);
        desk.choose("Command2");
        QVERIFY(desk.ended);
        desk.program.reset();
        QVERIFY(QFile::remove(desk.folder.filePath(u"calldesk.lock"_s))); // as the end of the process does
        QVERIFY(desk.start());
        QCOMPARE(caption(), u"Logbook"_s);
    }
};

QTEST_MAIN(tst_LanguageRoad)
#include "tst_LanguageRoad.moc"
