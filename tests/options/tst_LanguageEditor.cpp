#include "appearance/RecordGrid.h"
#include "options/OptionsWindows.h"
#include "support/TestForms.h"

/// The language editor: rows, search, cells and the two boxes.
class tst_LanguageEditor : public QObject
{
    Q_OBJECT

    struct Desk : support::TestForms, options::OptionsEffects
    {
        options::OptionsWindows windows{{context(), settings, *this}};

        Desk()
        {
            desk.runSql(desk.paths.UserLangFile,
                        u"Create Table Language (item text(255), userlanguage text(255), english text(255));"
                        "insert into Language values ('Save', '', 'Save');"
                        "insert into Language values ('Copy', 'Kopie', 'Copy');"
                        "insert into Language values ('Ann', 'x', 'O''Brien [1] 100% safe');"_s);
            settings.record.LanguageSetting.setText(u"chs"_s);
        }
        ~Desk() override { windows.close(); }

        void iniUDP() override {}
        QStringList gridColumnNames() const override { return {}; }
        void ChangeGridCfg(const QStringList &) override {}
        void iniGridCallerID_tarn() override {}

        void open()
        {
            windows.showLanguageEditor();
            QVERIFY(QTest::qWaitForWindowExposed(form()));
        }
        static QWidget *form() { return support::openForm<options::frmLanguageEditor>(); }
        template <typename Control>
        static Control *find(const char *name)
        {
            return form()->findChild<Control *>(QLatin1String(name));
        }
        static appearance::RecordGrid *grid() { return find<appearance::RecordGrid>("DBGrid1"); }
        static void press(const char *button)
        {
            QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
        }
        static QString keys()
        {
            QString found;
            for (int row = 0; row < grid()->model()->rowCount(); ++row) {
                found += grid()->model()->index(row, 0).data().toString() + u' ';
            }
            return found;
        }
        /// Opens the cell's own editor as F2 does, types, and leaves it by Enter.
        static void type(const QModelIndex &cell, const QString &text)
        {
            grid()->setCurrentIndex(cell);
            QTest::keyClick(grid(), Qt::Key_Return);
            auto *editor = grid()->findChild<QLineEdit *>();
            QVERIFY(editor != nullptr);
            editor->selectAll();
            QTest::keyClicks(editor, text);
            QTest::keyClick(editor, Qt::Key_Return);
        }
    };

private Q_SLOTS:
    void aSearchLooksIntoAllColumns_data()
    {
        const support::Table<QString, QString, bool> row("typed", "keys", "fails");
        row("nothing", u"  "_s, u"Save Copy Ann "_s, false);
        row("a key in other case", u" ANN "_s, u"Ann "_s, false);
        row("a translation", u"kopi"_s, u"Copy "_s, false);
        row("English", u"a"_s, u"Ann Save "_s, false);
        row("no wildcard", u"100%"_s, u"Ann "_s, false);
        row("a wildcard", u"S?ve"_s, u"Save "_s, false);
        row("nowhere", u"zzz"_s, u""_s, false);
        row("a quote", u"O'B"_s, u"Save Copy Ann "_s, true);
    }
    void aSearchLooksIntoAllColumns()
    {
        QFETCH(QString, typed);
        QFETCH(bool, fails);
        Desk desk;
        desk.open();
        QTest::keyClicks(desk.find<QLineEdit>("txtCondition"), typed);
        QTest::keyClick(desk.find<QLineEdit>("txtCondition"), Qt::Key_Return);
        QTEST(desk.keys(), "keys");
        QCOMPARE(!desk.desk.logMessages().isEmpty(), fails);
        QCOMPARE(desk.find<QLabel>("lblState")->text() == "[SearchTextUnusable]"_L1, fails);
        const QHeaderView *columns = desk.grid()->horizontalHeader();
        QVERIFY(columns->sectionSize(0) > 50 && columns->sectionSize(0) == columns->sectionSize(2));
    }

    void aChangedCellIsInTheFileAtOnce()
    {
        Desk desk;
        desk.open();
        QTest::keyClicks(desk.find<QLineEdit>("txtCondition"), u"a"_s);
        desk.press("cmdSearch");
        desk.type(desk.grid()->model()->index(1, 1), u"Sichern"_s);
        const auto stored = [&desk] {
            store::Database file(desk.desk.paths.UserLangFile);
            return file.OpenRecordset(u"select * from language where item = 'Save'"_s)
                .value(u"UserLanguage"_s)
                .toString();
        };
        QTRY_COMPARE(stored(), u"Sichern"_s);
        desk.press("cmdRefresh");
        QCOMPARE(desk.keys(), u"Ann Save "_s);

        store::Database other(desk.desk.paths.UserLangFile);
        other.transaction([&] {
            other.Execute(u"update language set english = 'x' where item = 'Copy'"_s);
            desk.prompts.expect();
            desk.type(desk.grid()->model()->index(1, 1), u"lost"_s);
            QTRY_COMPARE(desk.prompts.asked, QStringList{u"[LanguageTextNotSaved]"_s});
        });
        QCOMPARE(stored(), u"Sichern"_s);
    }

    void theBoxesChooseTheLanguageOfTheNextStart_data()
    {
        const support::Table<QString, QString, QString> row("before", "pressed", "after");
        row("neither", u"chs"_s, u""_s, u"chs"_s);
        row("own", u"chs"_s, u"chkUseUserLang"_s, u"USER"_s);
        row("keys win", u"user "_s, u"chkUseID"_s, u"ID"_s);
        row("keys no more", u"id"_s, u"chkUseID"_s, u"id"_s);
    }
    void theBoxesChooseTheLanguageOfTheNextStart()
    {
        QFETCH(QString, before);
        QFETCH(QString, pressed);
        QFETCH(QString, after);
        Desk desk;
        desk.settings.record.LanguageSetting.setText(before);
        desk.windows.showOptions();
        desk.open();
        QCOMPARE(desk.find<QCheckBox>("chkUseUserLang")->isChecked(), before == "user "_L1);
        QCOMPARE(desk.find<QCheckBox>("chkUseID")->isChecked(), before == "id"_L1);
        if (!pressed.isEmpty()) {
            QTest::keyClick(desk.find<QCheckBox>(qPrintable(pressed)), Qt::Key_Space);
        }
        desk.press("cmdReturn");
        const QByteArray saved = desk.desk.fileBytes(desk.desk.paths.SettingsFile);
        QCOMPARE(core::SettingsRecord::fromBytes(saved).LanguageSetting.text(), after);
        auto *dialog = support::openForm<options::frmOptions>();
        QCOMPARE(dialog->findChild<QComboBox *>(u"CmbLanguage"_s)->currentText(), after.toUpper());
    }

    void aFileThatIsNoLanguageFileIsSaidSo_data()
    {
        const support::Table<QByteArray, QString> row("bytes", "sql");
        row("damaged", QByteArray("SQLite format 3\0 and no more", 27), u""_s);
        row("empty", "", u""_s);
        row("foreign", "hello", u""_s);
        row("another table", {}, u"Create Table Other (a text(5));"_s);
    }
    void aFileThatIsNoLanguageFileIsSaidSo()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, sql);
        Desk desk;
        QFile::remove(desk.desk.paths.UserLangFile);
        sql.isEmpty() ? desk.desk.writeFile(desk.desk.paths.UserLangFile, bytes)
                      : desk.desk.runSql(desk.desk.paths.UserLangFile, sql);
        desk.open();
        QCOMPARE(desk.find<QLabel>("lblState")->text(), u"[LanguageFileUnreadable]"_s);
        QVERIFY(desk.desk.logMessages().last().startsWith(u"!frmLanguageEditor_Load "_s));
        for (const char *button : {"cmdSearch", "cmdRefresh"}) {
            desk.press(button);
            QCOMPARE(desk.grid()->model()->rowCount(), 0);
        }
    }
};

QTEST_MAIN(tst_LanguageEditor)
#include "tst_LanguageEditor.moc"
