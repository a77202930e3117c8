#include "OptionsDesk.h"
#include "support/Rows.h"

/// The language editor: rows, search, cells and the two boxes.
class tst_LanguageEditor : public QObject
{
    Q_OBJECT

    struct Desk : OptionsDesk<options::frmLanguageEditor>
    {
        explicit Desk(const QString &sql = {}, const QByteArray &bytes = {})
        {
            sql.isEmpty() ? writeFile(paths.UserLangFile, bytes) : runSql(paths.UserLangFile, sql);
        }
        void open()
        {
            windows.showLanguageEditor();
            QVERIFY(QTest::qWaitForWindowExposed(form()));
        }
        QString reason() const { return find<QLabel>("lblState")->text(); }
        static QTableView *grid() { return find<QTableView>("DBGrid1"); }
        static QString typed()
        {
            const auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
            return editor != nullptr ? editor->text() : QString();
        }
        static QString keys() { return support::columnOf(*grid()->model()); }
    };

    const QString m_rows =
        u"Create Table Language (item text(255), userlanguage text(255), english text(255));"
        "insert into Language values ('Save', '', 'Save');"
        "insert into Language values ('Copy', 'Kopie', 'Copy');"
        "insert into Language values ('Ann', 'x', 'O''Brien [1] 100% safe');"_s;

private Q_SLOTS:
    void aSearchLooksIntoAllColumns()
    {
        Desk desk(m_rows);
        desk.open();
        for (const auto &[typed, keys] : {std::pair(u" ANN "_s, u"Ann"_s), // a key in other case
                                          {u"kopi"_s, u"Copy"_s},          // a translation
                                          {u"a"_s, u"Ann|Save"_s},         // English
                                          {u"100%"_s, u"Ann"_s},
                                          {u"S?ve"_s, u"Save"_s},
                                          {u"zzz"_s, u""_s},
                                          {u"  "_s, u"Save|Copy|Ann"_s}}) {
            desk.find<QLineEdit>("txtCondition")->clear();
            QTest::keyClicks(desk.find<QLineEdit>("txtCondition"), typed);
            QTest::keyClick(desk.find<QLineEdit>("txtCondition"), Qt::Key_Return);
            QCOMPARE(desk.keys(), keys);
        }
        QCOMPARE(desk.logMessages(), QStringList());
        desk.find<QLineEdit>("txtCondition")->setText(u"O\u2019B"_s);
        desk.press("cmdSearch");
        QCOMPARE(desk.keys(), u"Ann"_s);
        const QHeaderView *columns = desk.grid()->horizontalHeader();
        QVERIFY(columns->sectionSize(0) > 50 && columns->sectionSize(0) == columns->sectionSize(2));
    }

    void aChangedCellIsInTheFileAtOnce()
    {
        Desk desk(m_rows);
        desk.open();
        QTest::keyClicks(desk.find<QLineEdit>("txtCondition"), u"a"_s);
        desk.press("cmdSearch");
        QCOMPARE(desk.keys(), u"Ann|Save"_s);
        support::typeCell(desk.grid(), desk.grid()->model()->index(1, 1), u"Sichern"_s);
        const auto stored = [&desk] {
            return support::rowsOf(desk.paths.UserLangFile,
                                   u"select UserLanguage from language where item = 'Save'"_s);
        };
        QTRY_COMPARE(stored(), u"Sichern"_s);
        desk.press("cmdRefresh");
        QCOMPARE(desk.keys(), u"Ann|Save"_s);
        store::Database(desk.paths.UserLangFile).transaction([&] { // of another program
            desk.prompts.expect();
            support::typeCell(desk.grid(), desk.grid()->model()->index(1, 1), u"Merken"_s);
            QTRY_COMPARE(desk.prompts.asked, QStringList{u"[LanguageTextNotSaved]"_s});
            QTRY_COMPARE(desk.typed(), u"Merken"_s);
            desk.prompts.expect();
            QVERIFY(!desk.form()->close());
            QCOMPARE(desk.prompts.asked.size(), 2);
            QCOMPARE(desk.typed(), u"Merken"_s);
        });
        QCOMPARE(stored(), u"Sichern"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // once the other is done
        QTRY_COMPARE(stored(), u"Merken"_s);
    }

    void whatIsTypedOutlivesTheEndOfALock()
    {
        Desk desk(m_rows);
        desk.open();
        std::optional<store::Database> other(desk.paths.UserLangFile);
        other->Execute(u"begin exclusive"_s);
        desk.find<QLineEdit>("txtCondition")->setText(u"x"_s);
        desk.press("cmdSearch");
        QCOMPARE(desk.reason(), u"[FileInUse]"_s);
        const QSignalSpy lockEnded(qobject_cast<store::ResultModel *>(desk.grid()->model()),
                                   &store::ResultModel::lockEnded);
        desk.grid()->setCurrentIndex(desk.grid()->model()->index(0, 1));
        QTest::keyClick(desk.grid(), Qt::Key_Return);
        QTest::keyClicks(QApplication::focusWidget(), u"Sich"_s);
        other.reset();
        QTRY_COMPARE(lockEnded.size(), 1);
        QCOMPARE(desk.typed(), u"Sich"_s);
        QTest::keyClicks(QApplication::focusWidget(), u"ern"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_COMPARE(desk.keys(), u"Ann"_s); // the search that waited
        QCOMPARE(support::rowsOf(desk.paths.UserLangFile,
                                 u"select UserLanguage from language where item = 'Save'"_s),
                 u"Sichern"_s);
    }

    void onlyTheTranslationCanBeTypedOver()
    {
        Desk desk(m_rows);
        desk.open();
        for (const int column : {0, 2}) {
            desk.grid()->setCurrentIndex(desk.grid()->model()->index(0, column));
            QTest::keyClicks(desk.grid(), u"x"_s);
            QVERIFY(desk.grid()->findChildren<QLineEdit *>().isEmpty());
            QTest::keyClick(desk.grid(), Qt::Key_Return); // leads to the translation
            QCOMPARE(desk.grid()->currentIndex().column(), 1);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            QTRY_VERIFY(desk.grid()->findChildren<QLineEdit *>().isEmpty());
        }
    }

    void aChoiceThatIsNotSavedYetStaysAndOneThatWasSavedIsNotUndone()
    {
        Desk desk(m_rows);
        desk.settings.record.LanguageSetting.setText(u"USER"_s);
        desk.windows.showOptions();
        desk.open();
        const auto *options = support::openForm<options::frmOptions>();
        auto *language = options->findChild<QComboBox *>(u"CmbLanguage"_s);
        language->setCurrentText(u"KOR"_s); // not saved
        desk.press("cmdReturn");
        QCOMPARE(language->currentText(), u"KOR"_s);
        QTRY_VERIFY(desk.form() == nullptr);
        desk.open();
        QVERIFY(desk.find<QCheckBox>("chkUseUserLang")->isChecked());
        desk.prompts.expect(); // the language changes at the next start
        options->findChild<QPushButton *>(u"Command3"_s)->click();
        QVERIFY(!desk.find<QCheckBox>("chkUseUserLang")->isChecked());
        desk.press("cmdReturn");
        QCOMPARE(desk.saved().LanguageSetting.text(), u"KOR"_s);
        QTRY_VERIFY(desk.form() == nullptr);
        desk.open();
        desk.find<QCheckBox>("chkUseID")->click();
        desk.breakSettings();
        desk.prompts.expect();
        desk.press("cmdReturn");
        QVERIFY(desk.form() != nullptr);
        QCOMPARE(desk.settings.record.LanguageSetting.text(), u"KOR"_s);
    }

    void theBoxesChooseTheLanguageOfTheNextStart()
    {
        for (const auto &[before, pressed, after] : {std::tuple(u"chs"_s, "txtCondition", u"chs"_s),
                                                     {u"chs"_s, "chkUseUserLang", u"USER"_s},
                                                     {u"user "_s, "chkUseID", u"ID"_s}, // wins
                                                     {u"id"_s, "chkUseID", u"id"_s}}) {
            Desk desk(m_rows);
            desk.settings.record.LanguageSetting.setText(before);
            desk.windows.showOptions();
            desk.open();
            QCOMPARE(desk.find<QCheckBox>("chkUseUserLang")->isChecked(), before == "user "_L1);
            QCOMPARE(desk.find<QCheckBox>("chkUseID")->isChecked(), before == "id"_L1);
            QTest::keyClick(desk.find<QWidget>(pressed), Qt::Key_Space);
            desk.press("cmdReturn");
            QCOMPARE(desk.saved().LanguageSetting.text(), after);
            const auto *dialog = support::openForm<options::frmOptions>();
            QCOMPARE(dialog->findChild<QComboBox *>(u"CmbLanguage"_s)->currentText(), after.toUpper());
        }
    }

    void eachFailureOfASearchSaysWhatItIs()
    {
        Desk desk(m_rows +
                  u"insert into Language with recursive n(i) as (select 1 union all select i+1 from n "
                  "where i<500) select 'key'||i, hex(zeroblob(100)), '' from n"_s);
        desk.open();
        desk.find<QLineEdit>("txtCondition")->setText(QString(20'000, u'梅'));
        desk.press("cmdSearch");
        QCOMPARE(desk.reason(), u"[SearchTextUnusable]"_s);
        {
            store::Database other(desk.paths.UserLangFile);
            other.Execute(u"begin exclusive"_s);
            desk.find<QLineEdit>("txtCondition")->setText(u"x"_s);
            desk.press("cmdSearch");
            QCOMPARE(desk.reason(), u"[FileInUse]"_s);
        }
        desk.press("cmdSearch");
        QTRY_VERIFY(desk.reason().startsWith("[LanguageEditorCount]"_L1));
        QByteArray bytes = desk.fileBytes(desk.paths.UserLangFile);
        bytes.replace(bytes.size() / 4096 / 2 * 4096, 4096, QByteArray(4096, '\xEE'));
        desk.writeFile(desk.paths.UserLangFile, bytes);
        desk.press("cmdSearch");
        QTRY_COMPARE(desk.reason(), u"[LanguageFileUnreadable]"_s);
    }

    void aFileThatIsNoLanguageFileIsSaidSo()
    {
        const QByteArray damaged("SQLite format 3\0 and no more", 27);
        for (const auto &[bytes, sql] :
             {std::pair(damaged, u""_s), // the engine's own first bytes
              {""_ba, u""_s},
              {"hello"_ba, u""_s},
              {""_ba, u"Create Table Other (a text(5));"_s},
              {""_ba, u"Create Table Language (item text(255), english text(255));"_s}}) {
            Desk desk(sql, bytes);
            desk.open();
            QCOMPARE(desk.find<QLabel>("lblState")->text(), u"[LanguageFileUnreadable]"_s);
            QVERIFY(desk.logMessages().last().startsWith(u"!frmLanguageEditor_Load "_s));
            desk.find<QLineEdit>("txtCondition")->setText(u"x"_s);
            desk.press("cmdSearch");
            QCOMPARE(desk.find<QLabel>("lblState")->text(), u"[LanguageFileUnreadable]"_s);
            QFile::remove(desk.paths.UserLangFile);
            desk.runSql(desk.paths.UserLangFile, m_rows);
            desk.press("cmdRefresh");
            QCOMPARE(desk.keys(), u"Save|Copy|Ann"_s);
        }
    }
};

QTEST_MAIN(tst_LanguageEditor)
#include "tst_LanguageEditor.moc"
