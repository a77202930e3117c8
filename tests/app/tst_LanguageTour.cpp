#include "ProgramDesk.h"
#include "Scene.h"
#include "appearance/Theme.h"
#include "core/platform.h"
#include "language/Captions.h"

using language::withoutMnemonic;

constexpr auto sampleNotes =
    R"(insert into callinfo values('Call20261119091500','Harbor Lantern Hotel','2026-11-19 09:15:00','Marta Lind','Second breakfast line');
insert into customerrequest values('Call20261119091500','Which machine for 140 rooms?','Sent the list of prices',0,'Call back on Monday');
insert into callinfo values('Call20261119142200','Juniper & Sons Bakery','2026-11-19 14:22:00','Ben Okafor','Deck oven');
insert into customerrequest values('Call20261119142200','The door does not close','Mechanic comes on Friday',0,'Never before 9');
insert into callinfo values('Call20261120110500','Albergo Tre Colli','2026-11-20 11:05:00','Diego Ferrer','Dishwasher');
insert into customerrequest values('Call20261120110500','Delivery before Christmas','Promised for 12 December',1,'Closed in January');
insert into callinfo values('Call20261120163000','Cedar Street Clinic','2026-11-20 16:30:00','Marta Lind','Water coolers');
insert into customerrequest values('Call20261120163000','Two more of them','Order confirmed by e-mail',1,'');)";

/// Every window in every language: its texts fit, are translated, and begin on the right side. With
/// CALLDESK_SHOTS=<folder> each window is kept there as a picture, dark where the desktop is.
class tst_LanguageTour : public QObject
{
    Q_OBJECT

    QSet<QString> m_known, m_own; // keys in capitals and English texts; the language's texts; without marks
    Qt::LayoutDirection m_direction = Qt::LeftToRight;
    QString m_shot;
    QStringList m_findings;

    void readTexts(ProgramDesk &desk, const QString &code)
    {
        core::Settings settings(desk.paths, desk.log);
        settings.record.LanguageSetting.setText(code);
        language::LanguagePack texts(desk.paths, desk.log, desk.prompts, settings);
        texts.iniLanguage();
        m_direction = language::layoutDirection(code);
        store::Database lang(desk.paths.LangFile);
        lang.forEachRow(u"select [id],[ENG] from Lang"_s, [&](const store::Row &row) {
            m_known += {row.text(0).toUpper(), withoutMnemonic(row.text(1))};
            m_own += withoutMnemonic(texts.Lms(row.text(0)));
        });
    }

    void check(bool holds, const char *otherwise, const QWidget &control, const QString &text)
    {
        const QString at = m_shot + u' ' + control.objectName() + u": "_s + text + u' ';
        m_findings += holds ? QStringList() : QStringList(at + QLatin1String(otherwise));
    }
    void checkText(const QWidget &control, const QString &text, const QSize &needed = {})
    {
        const QString word = withoutMnemonic(text);
        const bool foreign = m_known.contains(word) || m_known.contains(word.toUpper());
        check(m_own.contains(word) || !foreign, "is not translated", control, text);
        check(text.isEmpty() || needed.boundedTo(control.size()) == needed, "does not fit", control, text);
    }
    void checkOrder(const QWidget &control, const QString &text, int first, int second)
    {
        check((first < second) == (m_direction == Qt::LeftToRight), "is not mirrored", control, text);
    }
    void checkLabel(const QLabel &label)
    {
        const QSize wrapped(0, label.heightForWidth(label.width()));
        checkText(label, label.text(), label.wordWrap() ? wrapped : label.sizeHint());
        const QWidget *box = label.buddy() != nullptr ? label.buddy() : &label;
        const QRect at(label.mapTo(label.window(), QPoint()), label.size());
        const QRect boxAt(box->mapTo(box->window(), QPoint()), box->size());
        if (box != &label && at.center().y() > boxAt.top() && at.top() < boxAt.bottom()) {
            checkOrder(label, label.text(), at.center().x(), boxAt.center().x());
        }
    }
    void checkTabs(const QTabBar &bar)
    {
        for (int tab = 0; tab < bar.count(); ++tab) {
            const QSize needed = bar.fontMetrics().size(Qt::TextShowMnemonic, bar.tabText(tab));
            checkText(bar, bar.tabText(tab));
            check(bar.rect().contains(bar.tabRect(tab)) && needed.width() < bar.tabRect(tab).width(),
                  "does not fit", bar, bar.tabText(tab));
        }
        checkOrder(bar, bar.tabText(0), bar.tabRect(0).x(), bar.tabRect(1).x());
    }
    void checkHeadings(const QTableView &grid)
    {
        const QHeaderView &header = *grid.horizontalHeader();
        for (int column = 0; column < header.count(); ++column) {
            const QString text = header.model()->headerData(column, Qt::Horizontal).toString();
            if (!header.isSectionHidden(column)) {
                checkText(grid, text);
                check(header.sectionSizeHint(column) <= header.sectionSize(column), "does not fit", grid,
                      text);
            }
        }
    }
    void checkControl(const QWidget &control)
    {
        checkText(control, control.toolTip());
        if (const auto *label = qobject_cast<const QLabel *>(&control)) {
            checkLabel(*label);
        } else if (const auto *button = qobject_cast<const QAbstractButton *>(&control)) {
            checkText(control, button->text(), button->sizeHint());
            check(control.objectName() != "qt_toolbar_ext_button"_L1, "hides buttons", control, {});
        } else if (const auto *bar = qobject_cast<const QTabBar *>(&control)) {
            checkTabs(*bar);
        } else if (const auto *grid = qobject_cast<const QTableView *>(&control)) {
            checkHeadings(*grid);
        } else if (qobject_cast<const QAbstractSpinBox *>(&control) != nullptr) {
            check(control.layoutDirection() == Qt::LeftToRight, "reads backwards", control, {});
        }
    }
    void checkForm(QWidget &form)
    {
        checkText(form, form.windowTitle());
        check(form.layoutDirection() == m_direction, "is not mirrored", form, {});
        check(form.size().boundedTo({1000, 700}) == form.size(), "is too large", form, {});
        for (const QWidget *control : form.findChildren<QWidget *>()) {
            if (control->isVisible() && control->window() == &form) {
                checkControl(*control);
            }
        }
    }

    static QWidget *shown(const QString &name)
    {
        const QWidgetList all = QApplication::topLevelWidgets();
        const auto found = std::find_if(all.begin(), all.end(), [&](const QWidget *window) {
            return window->isVisible() && window->objectName() == name;
        });
        return found != all.end() ? *found : nullptr;
    }
    void look(const QString &code, const QString &name, const QString &variant = {})
    {
        QTRY_VERIFY2(shown(name) != nullptr, qPrintable(code + u' ' + name));
        auto *tabs = shown(name)->findChild<QTabWidget *>();
        for (int page = 0; page < (tabs != nullptr ? tabs->count() : 1); ++page) {
            m_shot = code + u'-' + name + variant + (page > 0 ? QString::number(page) : QString());
            if (tabs != nullptr) {
                tabs->setCurrentIndex(page);
            }
            QCoreApplication::processEvents();
            checkForm(*shown(name));
            const QString folder = qEnvironmentVariable("CALLDESK_SHOTS");
            if (!folder.isEmpty()) {
                QTest::qWait(100); // what is read in slices and shown by frames
                QVERIFY(shown(name)->grab().save(folder + u'/' + m_shot + u".png"_s));
            }
        }
    }
    void lookAtScene(ProgramDesk &desk, const QString &code)
    {
        const QString scene = QString::fromUtf8(desk.fileBytes(QStringLiteral(SCENE)));
        for (const sim::SceneStep &step : sim::parseScene(scene, {})) {
            desk.clock.time = desk.clock.time.addSecs(97);
            desk.send(sim::makeDatagram(step.datagram, 1, desk.clock.time));
            if (!step.datagram.fields.match.isEmpty()) {
                look(code, u"frmPopUp"_s, step.datagram.fields.match);
                QVERIFY(shown(u"frmPopUp"_s) != nullptr && shown(u"frmPopUp"_s)->close());
            }
        }
        look(code, u"frmShowSMS"_s);
        look(code, u"FrmMain"_s);
    }

private Q_SLOTS:
    void initTestCase() { appearance::applyTheme(*qApp, core::platform::prefersDark()); }

    void everyWindowIsReadable_data()
    {
        const support::Table<QString> row("code");
        const QByteArray codes = "ENG CHS CHT SPN ARA FRN HBR TUK KOR POL PTG VN ID";
        for (const QByteArray &code : codes.split(' ')) {
            row(code.constData(), QString::fromLatin1(code));
        }
    }
    void everyWindowIsReadable()
    {
        QFETCH(QString, code);
        ProgramDesk desk;
        readTexts(desk, code);
        core::SettingsRecord record;
        record.PopupAllLines = record.PopupDetail = 1;
        record.LanguageSetting.setText(code);
        desk.writeFile(desk.paths.SettingsFile, record.toBytes());
        QVERIFY(desk.start());
        desk.runSql(desk.paths.CustomerFile, QString::fromUtf8(sampleNotes));
        lookAtScene(desk, code);
        desk.program->windows().addCaller(u"2125550188"_s, {});
        look(code, u"frmChoosePhoneDatabase"_s);
        if (code == "ID"_L1) {
            desk.prompts.expect(); // has no help pages
        }
        const char *ways[][3] = {{"FrmMain", "Command4", "frmSimplePhoneBook"},
                                 {"frmSimplePhoneBook", "Command1", "frmSimplePhoneBookEdit"},
                                 {"FrmMain", "Command1", "FrmCustomer"},
                                 {"FrmCustomer", "Command4", "FrmEditCustomer"},
                                 {"FrmCustomer", "cmdExport", "frmAddDataToExcel_Tarn20050921"},
                                 {"FrmEditCustomer", "cmdViewNotePad", "frmNotePad"},
                                 {"FrmMain", "cmdCallInfo", "frmNotePadManager"},
                                 {"frmNotePadManager", "cmdAllDates", "frmNotePadManager"},
                                 {"FrmMain", "cmdSendSMS", "frmSendSMS"},
                                 {"FrmMain", "Command3", "frmOptions"},
                                 {"frmOptions", "cmdLanguageEditor", "frmLanguageEditor"},
                                 {"FrmMain", "Command5", "frmHelp"}};
        for (const auto &[from, button, opened] : ways) {
            QVERIFY(!QTest::currentTestFailed());
            shown(QLatin1String(from))->findChild<QAbstractButton *>(QLatin1String(button))->click();
            look(code, QLatin1String(opened));
        }
        const QStringList findings = std::exchange(m_findings, {});
        QVERIFY2(findings.isEmpty(), qPrintable(findings.join(u'\n')));
    }
};

QTEST_MAIN(tst_LanguageTour)
#include "tst_LanguageTour.moc"
