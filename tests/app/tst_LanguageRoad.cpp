#include "ProgramDesk.h"

#include <QNetworkDatagram>

using messages::frmSendSMS;

namespace {

/// The system speaks another language than the program when its operator chose so.
struct Operator : ProgramDesk
{
    Operator(quint16 system, const QString &language)
    {
        systemLanguageId = system;
        core::SettingsRecord record;
        record.LanguageSetting.setText(language);
        writeFile(paths.SettingsFile, record.toBytes());
    }
    /// Sends a message, which comes back as the server passes it on to all.
    void say(const QString &text)
    {
        send("the server is up");
        QTRY_VERIFY(logged("the server is up"));
        program->windows().show(core::Window::SendMessage);
        find<frmSendSMS, QPlainTextEdit>("txtSMS")->setPlainText(text);
        press<frmSendSMS>("Command6");
        openForm<frmSendSMS>()->close();
        QTRY_VERIFY(unit.hasPendingDatagrams());
        send(unit.receiveDatagram().data());
    }
};

} // namespace

/// What operators of other languages write, and how they change the program's own words.
class tst_LanguageRoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void messagesArriveInEveryLanguageOverTheTurnOfAMonth()
    {
        for (const auto &[system, language, text] :
             {std::tuple(0x0409, u"CHS"_s, u"Yes \u2013 O\u2019Brien\u2019s at {{12}}"_s),
              {0x0804, u"AUTO"_s, u"请回电张三"_s}, // which could be UTF-8
              {0x0804, u"ENG"_s, u"好的，谢谢！"_s},
              {0x042A, u"USER"_s, u"Gọi lại cho bà Nguyễn"_s},
              {0x0401, u"ARA"_s, u"اتصل بسارة من فضلك"_s}}) {
            Operator desk(quint16(system), language);
            QVERIFY(desk.start());
            QByteArray log;
            for (const QString &month : {u"2026-11"_s, u"2026-12"_s}) {
                desk.clock.time = QDate::fromString(month, u"yyyy-MM"_s).startOfDay();
                desk.say(text);
                const QByteArray entry =
                    "<" + month.toLatin1() + "-01 00:00:00>  \r\n" + text.toUtf8() + "\r\n\r\n";
                log += entry;
                QTRY_COMPARE(desk.fileBytes(desk.paths.SmsFile), log);
                QCOMPARE(desk.fileBytes(desk.paths.SmsFolder + u"/SMS%1.txt"_s.arg(month)), entry);
                QCOMPARE((find<messages::frmShowSMS, QPlainTextEdit>("txtSMS")->toPlainText()), text);
                openForm<messages::frmShowSMS>()->close();
            }
            QVERIFY(!desk.logged(">  !"));
        }
    }

    void aLanguageThatWasLockedAtTheStartIsShownOnceItIsFree()
    {
        Operator desk(0x0409, u"FRN"_s);
        std::optional<support::TakenFile> other(desk.paths.StartFolder + u"/FRN.lan"_s);
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
};

QTEST_MAIN(tst_LanguageRoad)
#include "tst_LanguageRoad.moc"
