#include "OptionsDesk.h"

using Editor = support::Ui<options::frmLanguageEditor>;

/// The language editor: rows, search, cells and the two boxes.
class tst_LanguageEditor : public QObject
{
    Q_OBJECT

    inline static const QString rows =
        u"Create Table Language (item text(255), userlanguage text(255), english text(255));"
        "insert into Language values ('Save', '', 'Save');"
        "insert into Language values ('Copy', 'Kopie', 'Copy');"
        "insert into Language values ('Ann', 'x', 'O''Brien [1] 100% safe');"_s;

    /// A language file made by statements, or of other bytes, and the editor on it.
    struct Desk : OptionsDesk
    {
        explicit Desk(const QString &sql = rows, const QByteArray &bytes = {}, const QString &chosen = {})
        {
            sql.isEmpty() ? writeFile(paths.UserLangFile, bytes) : runSql(paths.UserLangFile, sql);
            settings.record.LanguageSetting.setText(chosen);
            open();
        }
        void open()
        {
            windows.showLanguageEditor();
            Editor::activate();
        }
        QString stored() const
        {
            return support::rowsOf(paths.UserLangFile,
                                   u"select UserLanguage from language where item = 'Save'"_s);
        }
    };

    static void search(const QString &words)
    {
        Editor::set("txtCondition", words);
        Editor::press("cmdSearch");
    }
    static QString reason() { return Editor::text("lblState"); }
    static QString typed()
    {
        const auto *box = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        return box != nullptr ? box->text() : QString();
    }
    static QModelIndex translation(int row) { return Editor::grid()->model()->index(row, 1); }

private Q_SLOTS:
    void aSearchLooksIntoAllColumns()
    {
        const Desk desk;
        for (const auto &[typed, found] : {std::pair(u" ANN "_s, u"Ann"_s), // a key in other case
                                           {u"kopi"_s, u"Copy"_s},          // a translation
                                           {u"a"_s, u"Ann|Save"_s},         // English
                                           {u"O\u2019B"_s, u"Ann"_s},
                                           {u"zzz"_s, u""_s},
                                           {u"  "_s, u"Save|Copy|Ann"_s}}) {
            search(typed);
            QCOMPARE(Editor::rows(), found);
        }
    }

    void aChangedCellIsInTheFileAtOnce()
    {
        Desk desk;
        Editor::type("txtCondition", u"a"_s);
        support::key(Qt::Key_Return);
        QCOMPARE(Editor::rows(), u"Ann|Save"_s);
        support::typeCell(Editor::grid(), translation(1), u"Sichern"_s);
        QTRY_COMPARE(desk.stored(), u"Sichern"_s);
        Editor::press("cmdRefresh");
        QCOMPARE(Editor::rows(), u"Ann|Save"_s);
        support::Lock other(desk.paths.UserLangFile);
        desk.prompts.expect();
        support::typeCell(Editor::grid(), translation(1), u"Merken"_s);
        QTRY_COMPARE(desk.prompts.asked, QStringList{u"[LanguageTextNotSaved]"_s});
        QTRY_COMPARE(typed(), u"Merken"_s);
        desk.prompts.expect();
        QVERIFY(!Editor::form()->close());
        QCOMPARE(typed(), u"Merken"_s);
        other.release();
        QCOMPARE(desk.stored(), u"Sichern"_s);
        support::key(Qt::Key_Return);
        QTRY_COMPARE(desk.stored(), u"Merken"_s);
    }

    void whatIsTypedOutlivesTheEndOfALock()
    {
        const Desk desk;
        support::Lock other(desk.paths.UserLangFile);
        search(u"x"_s);
        QCOMPARE(reason(), u"[FileInUse]"_s);
        const QSignalSpy lockEnded(qobject_cast<store::ResultModel *>(Editor::grid()->model()),
                                   &store::ResultModel::lockEnded);
        Editor::grid()->setCurrentIndex(translation(0));
        QTest::keyClick(Editor::grid(), Qt::Key_Return);
        support::keys(u"Sich"_s);
        other.release();
        QTRY_COMPARE(lockEnded.size(), 1);
        QCOMPARE(typed(), u"Sich"_s);
        support::keys(u"ern"_s);
        support::key(Qt::Key_Return);
        QTRY_COMPARE(Editor::rows(), u"Ann"_s); // the search that waited
        QCOMPARE(desk.stored(), u"Sichern"_s);
    }

    void onlyTheTranslationCanBeTypedOver()
    {
        const Desk desk;
        for (const int column : {0, 2}) {
            Editor::standOn(0, column);
            QTest::keyClicks(Editor::grid(), u"x"_s);
            QCOMPARE(Editor::grid()->findChild<QLineEdit *>(), nullptr);
        }
        QTest::keyClick(Editor::grid(), Qt::Key_Return); // leads to the translation
        QCOMPARE(Editor::grid()->currentIndex().column(), 1);
    }

    void aChoiceThatIsNotSavedYetStaysAndOneThatWasSavedIsNotUndone()
    {
        Desk desk(rows, {}, u"USER"_s);
        desk.windows.showOptions();
        Options::set("CmbLanguage", u"KOR"_s); // not saved
        Editor::press("cmdReturn");
        QCOMPARE(Options::text("CmbLanguage"), u"KOR"_s);
        desk.open();
        QVERIFY(Editor::find<QCheckBox>("chkUseUserLang")->isChecked());
        desk.prompts.expect(); // the language changes at the next start
        Options::find<QPushButton>("Command3")->click();
        QVERIFY(!Editor::find<QCheckBox>("chkUseUserLang")->isChecked());
        Editor::press("cmdReturn");
        QCOMPARE(desk.saved().LanguageSetting.text(), u"KOR"_s);
    }

    void theBoxesChooseTheLanguageOfTheNextStart()
    {
        for (const auto &[before, pressed, after] : {std::tuple(u"chs"_s, "txtCondition", u"chs"_s),
                                                     {u"chs"_s, "chkUseUserLang", u"USER"_s},
                                                     {u"user "_s, "chkUseID", u"ID"_s}, // wins
                                                     {u"id"_s, "chkUseID", u"id"_s}}) {
            Desk desk(rows, {}, before);
            desk.windows.showOptions();
            QCOMPARE(Editor::find<QCheckBox>("chkUseUserLang")->isChecked(), before == "user "_L1);
            QCOMPARE(Editor::find<QCheckBox>("chkUseID")->isChecked(), before == "id"_L1);
            Editor::key(pressed, Qt::Key_Space);
            Editor::press("cmdReturn");
            QCOMPARE(desk.saved().LanguageSetting.text(), after);
            QCOMPARE(Options::text("CmbLanguage"), after.toUpper());
        }
    }

    void aSearchThatCannotBeMadeSaysWhy()
    {
        const Desk desk(rows +
                        u"insert into Language with recursive n(i) as (select 1 union all select i+1 from n "
                        "where i<500) select 'key'||i, hex(zeroblob(100)), '' from n"_s);
        QByteArray bytes = desk.fileBytes(desk.paths.UserLangFile);
        bytes.replace(bytes.size() / 4096 / 2 * 4096, 4096, QByteArray(4096, '\xEE'));
        desk.writeFile(desk.paths.UserLangFile, bytes);
        search(QString(20'000, u'梅'));
        QCOMPARE(reason(), u"[SearchTextUnusable]"_s);
        search(u"x"_s);
        QTRY_COMPARE(reason(), u"[LanguageFileUnreadable]"_s);
    }

    void aFileThatIsNoLanguageFileIsSaidSo()
    {
        for (const auto &[bytes, sql] :
             {std::pair("hello"_ba, u""_s),
              {""_ba, u""_s},
              {""_ba, u"Create Table Language (item text(255), english text(255));"_s}}) {
            const Desk desk(sql, bytes);
            QCOMPARE(reason(), u"[LanguageFileUnreadable]"_s);
            search(u"x"_s);
            QCOMPARE(reason(), u"[LanguageFileUnreadable]"_s);
            QFile::remove(desk.paths.UserLangFile);
            desk.runSql(desk.paths.UserLangFile, rows);
            Editor::press("cmdRefresh");
            QCOMPARE(Editor::rows(), u"Save|Copy|Ann"_s);
        }
    }
};

QTEST_MAIN(tst_LanguageEditor)
#include "tst_LanguageEditor.moc"
