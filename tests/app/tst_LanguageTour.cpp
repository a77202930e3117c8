#include "ProgramDesk.h"
#include "Scene.h"
#include "appearance/theme/Theme.h"
#include "core/platform.h"
#include "language/ShownTexts.h"
#include "language/forms/Captions.h"
#include "start/forms/frmConvertDesk.h"
#include "support/JetWriter.h"
#include "support/Row.h"

using language::withoutMnemonic;

/// Every window in every language: its texts fit, are translated, and begin on the right side, and no letter
/// presses two of them. With CALLDESK_SHOTS=<folder> each window is kept there as a picture, dark where the
/// desktop is.
class tst_LanguageTour : public QObject
{
    Q_OBJECT

    QSet<QString> m_known, m_own; // keys in capitals and English texts; the language's texts; without marks
    QString m_code, m_shot;
    QStringList m_findings;
    QSet<QKeySequence> m_pressed;

    void readTexts(ProgramDesk &desk)
    {
        core::Settings settings(desk.paths, desk.log);
        settings.record.PopupAllLines = settings.record.PopupDetail = 1;
        settings.record.LanguageSetting.setText(m_code);
        QVERIFY(settings.SaveMisc());
        language::LanguagePack texts(desk.paths, desk.log, desk.prompts, settings);
        texts.iniLanguage();
        m_own.clear();
        store::Database lang(desk.paths.LangFile);
        lang.forEachRow(u"select [id],[ENG] from Lang"_s, [&](const store::Row &row) {
            m_known += {row.text(0).toUpper(), withoutMnemonic(row.text(1))};
            m_own += withoutMnemonic(texts.Lms(row.text(0)));
        });
    }

    /// Each text with whether it fits where it stands.
    using Texts = QList<std::pair<QString, bool>>;
    void checkTexts(const QWidget &control, const Texts &texts)
    {
        for (const auto &[text, fits] : texts) {
            const QString word = withoutMnemonic(text);
            const bool strange = m_known.contains(word) || m_known.contains(word.toUpper());
            if (strange && !m_own.contains(word)) {
                m_findings += m_shot + u' ' + control.objectName() + u" is not translated: "_s + text;
            } else if (!fits && !text.isEmpty()) {
                m_findings += m_shot + u' ' + control.objectName() + u" does not fit: "_s + text;
            }
            const QKeySequence letter = QKeySequence::mnemonic(text);
            if (m_pressed.contains(letter)) {
                m_findings += m_shot + u' ' + letter.toString() + u" presses also: "_s + text;
            }
            m_pressed += letter.isEmpty() ? QSet<QKeySequence>() : QSet{letter};
        }
    }
    static bool fits(const QWidget &control, const QSize &needed)
    {
        return needed.boundedTo(control.size()) == needed;
    }
    static bool labelFits(const QLabel &label)
    {
        const QWidget *box = label.buddy() != nullptr ? label.buddy() : static_cast<const QWidget *>(&label);
        const QPoint way = box->mapTo(box->window(), QPoint()) - label.mapTo(box->window(), QPoint());
        const bool beside = way.x() != 0 && std::abs(way.y()) < label.height();
        const QSize wrapped(0, label.heightForWidth(label.width()));
        return fits(label, label.wordWrap() ? wrapped : label.sizeHint()) &&
               (!beside || (way.x() < 0) == label.isRightToLeft());
    }
    void checkControl(const QWidget &control)
    {
        Texts texts = {{control.toolTip(), true},
                       {control.windowTitle(), control.width() <= 1000 && control.height() <= 700}};
        if (const auto *label = qobject_cast<const QLabel *>(&control)) {
            const QString plain = label->text().replace(u'&', u"&&"_s);
            texts.append({label->buddy() != nullptr ? label->text() : plain, labelFits(*label)});
        } else if (const auto *button = qobject_cast<const QAbstractButton *>(&control)) {
            texts.append({button->text(), fits(*button, button->sizeHint())});
            texts.append({u"hidden buttons"_s, button->objectName() != "qt_toolbar_ext_button"_L1});
        } else if (const auto *box = qobject_cast<const QGroupBox *>(&control)) {
            texts.append({box->title(), fits(*box, box->minimumSizeHint())});
        } else if (const auto *date = qobject_cast<const QAbstractSpinBox *>(&control)) {
            texts.append({date->text(), !date->isRightToLeft()});
        } else if (const auto *bar = qobject_cast<const QTabBar *>(&control)) {
            for (int tab = 0; tab < bar->count(); ++tab) {
                texts.append({bar->tabText(tab), bar->rect().contains(bar->tabRect(tab))});
            }
        } else if (const auto *header = qobject_cast<const QHeaderView *>(&control)) {
            for (int column = 0; column < header->count() && !header->isSectionHidden(column); ++column) {
                texts.append({header->model()->headerData(column, Qt::Horizontal).toString(),
                              header->sectionSizeHint(column) <= header->sectionSize(column)});
            }
        }
        checkTexts(control, texts);
    }
    bool isReadable(const QWidget &form)
    {
        m_findings.clear();
        m_pressed.clear();
        checkControl(form);
        for (const QWidget *control : form.findChildren<QWidget *>()) {
            if (control->isVisible() && control->window() == &form) {
                checkControl(*control);
            }
        }
        return m_findings.isEmpty() && form.layoutDirection() == language::layoutDirection(m_code);
    }

    static QWidget *shown(const QString &name) { return openForm<QWidget>(name); }
    void look(const QString &name, const QString &variant = {})
    {
        QTRY_VERIFY2(shown(name) != nullptr, qPrintable(m_code + u' ' + name));
        auto *tabs = shown(name)->findChild<QTabWidget *>();
        for (int page = 0; page < (tabs != nullptr ? tabs->count() : 1); ++page) {
            m_shot = m_code + u'-' + name + variant + (page > 0 ? QString::number(page) : QString());
            if (tabs != nullptr) {
                tabs->setCurrentIndex(page);
            }
            QTRY_VERIFY2(isReadable(*shown(name)), qPrintable(m_findings.join(u'\n')));
            if (const QString folder = qEnvironmentVariable("CALLDESK_SHOTS"); !folder.isEmpty()) {
                QTest::qWait(100);
                QVERIFY(shown(name)->grab().save(folder + u'/' + m_shot + u".png"_s));
            }
        }
    }
    void lookAtScene(ProgramDesk &desk)
    {
        const QString scene = QString::fromUtf8(desk.fileBytes(QStringLiteral(SCENE)));
        for (const sim::SceneStep &step : sim::parseScene(scene, {})) {
            desk.clock.time = desk.clock.time.addSecs(97);
            desk.send(sim::makeDatagram(step.datagram, 1, desk.clock.time));
            if (const QString &match = step.datagram.fields.match; !match.isEmpty()) {
                look(u"frmPopUp"_s, match);
                QVERIFY(shown(u"frmPopUp"_s) != nullptr && shown(u"frmPopUp"_s)->close());
            }
        }
        look(u"frmShowSMS"_s);
        look(u"FrmMain"_s);
        shown(u"FrmMain"_s)->findChild<QAction *>(u"cmdSmallShape"_s)->trigger();
        look(u"FrmMain"_s, u"Small"_s);
        shown(u"FrmMain"_s)->findChild<QAction *>(u"cmdFullShape"_s)->trigger();
    }

    /// Stands before the desk's language is read; its texts are the ones that the program was built with.
    void lookAtQuestions(ProgramDesk &desk)
    {
        const language::BuiltInTexts texts(m_code);
        const language::LanguageState state{m_code, {}, {}, language::fontChoice(m_code)};
        const language::FormTranslator translator(texts, state, desk.log);
        const QTemporaryDir folder;
        desk.writeFile(
            folder.filePath(u"Customer.ccsm"_s),
            support::jetFile({{u"customer"_s, {{u"CustomerName"_s}}, {{u"Harbor Lantern Hotel"_s}}}}));
        start::frmConvertDesk oldDesk(
            {folder.path(), desk.clock.now().date(), texts, translator, desk.prompts});
        oldDesk.show();
        QTRY_COMPARE(oldDesk.findChild<QTreeWidget *>(u"lstFound"_s)->topLevelItemCount(), 1);
        look(u"frmConvertDesk"_s);
    }

    void lookAtImport(ProgramDesk &desk)
    {
        const QString list = desk.folder.filePath(u"list.csv"_s);
        desk.writeFile(list, "Firma;Kontakt;Tel.\nHarbor Lantern Hotel;Ada;0755\n;;\n;Bob;;x\n;;1\n");
        desk.prompts.expectFile(list);
        shown(u"frmImport"_s)->findChild<QAbstractButton *>(u"cmdChoose"_s)->click();
        auto *check = shown(u"frmImport"_s)->findChild<QAbstractButton *>(u"cmdCheck"_s);
        QTRY_VERIFY(check->isEnabled());
        check->click();
        QTRY_VERIFY(shown(u"frmImport"_s)->findChild<QWidget *>(u"lstRefused"_s)->isVisible());
        look(u"frmImport"_s, u"-list"_s);
    }

private Q_SLOTS:
    void initTestCase() { appearance::applyTheme(*qApp, core::platform::prefersDark()); }

    void everyWindowIsReadable_data()
    {
        QTest::addColumn<QString>("code");
        for (const language::Language &language : language::languages()) {
            QTest::newRow(qPrintable(language.code)) << language.code;
        }
        QTest::newRow("an own translation that lacks keys") << u"USER"_s;
    }
    void everyWindowIsReadable()
    {
        ProgramDesk desk;
        QFETCH(const QString, code);
        m_code = code;
        readTexts(desk);
        if (m_code == "USER"_L1) { // nobody sees a window without texts, or keys in place of them
            desk.runSql(desk.paths.UserLangFile, u"delete from Language where item>'L'"_s);
        }
        QVERIFY(desk.start());
        for (const auto &[context, text, english] :
             {std::tuple("QLineEdit", "&Undo", "ENG ID USER"), {"QFileDialog", "Look in:", "ENG ID USER"}}) {
            const support::Row row(text);
            const QString shown = QCoreApplication::translate(context, text);
            QCOMPARE(withoutMnemonic(shown) == withoutMnemonic(QLatin1StringView(text)),
                     QByteArray(english).contains(m_code.toLatin1()));
        }
        QCOMPARE(QCoreApplication::translate("frmOptions", "Save"), u"Save"_s); // a key
        lookAtScene(desk);
        if (language::languageOf(m_code) != nullptr && m_code != "ID"_L1) {
            lookAtQuestions(desk);
        }
        desk.program->windows().addCaller(u"2125550188"_s, {});
        look(u"frmChoosePhoneDatabase"_s);
        if (m_code == "ID"_L1 || m_code == "USER"_L1) {
            desk.prompts.expect(); // has no help pages
        }
        const QStringList ways =
            u"FrmMain Command4 frmSimplePhoneBook,frmSimplePhoneBook Command1 frmSimplePhoneBookEdit,"
            "FrmMain Command1 FrmCustomer,FrmCustomer Command4 FrmEditCustomer,"
            "FrmCustomer cmdExport frmAddDataToExcel_Tarn20050921,FrmCustomer cmdImport frmImport,"
            "FrmEditCustomer cmdViewNotePad frmNotePad,"
            "FrmMain cmdCallInfo frmNotePadManager,FrmMain cmdSendSMS frmSendSMS,FrmMain Command3 frmOptions,"
            "frmOptions cmdCopies frmCopies,frmCopies cmdLookInto frmCopiedCustomers,"
            "frmOptions cmdLanguageEditor frmLanguageEditor,FrmMain Command5 frmHelp"_s.split(u',');
        for (const QString &way : ways) {
            QVERIFY(!QTest::currentTestFailed());
            const QStringList step = way.split(u' ');
            auto *button = shown(step[0])->findChild<QAbstractButton *>(step[1]);
            QTRY_VERIFY(button->isEnabled()); // the day's copy is made by then
            button->click();
            look(step[2]);
        }
        lookAtImport(desk);
    }
};

QTEST_MAIN(tst_LanguageTour)
#include "tst_LanguageTour.moc"
