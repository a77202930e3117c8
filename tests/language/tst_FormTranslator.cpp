#include "language/forms/FormTranslator.h"
#include "support/TestForms.h"

class tst_FormTranslator : public QObject
{
    Q_OBJECT

    struct Texts : core::TextLookup
    {
        QHash<QString, QString> byKey;
        QString Lms(const QString &key) const override { return byKey.value(key); }
    };

    /// One control of every kind, designed with the caption "Edit".
    struct Form
    {
        QWidget window;
        QPushButton button{u"Edit"_s, &window};
        QGroupBox frame{u"Edit"_s, &window};
        QLabel label{u"Edit"_s, &frame};
        QLabel buddyLabel{u"Edit"_s, &frame};
        QLabel customer{u"<b>Smith & Sons</b>"_s, &frame};
        QLineEdit box{u"Edit"_s, &frame};
        QListWidget list{&window};
        QTabWidget tabs{&window};
        QTableWidget grid{2, 1, &window};
        QToolBar bar{&window};
        QMenuBar menus{&window};
        QAction *tool = bar.addAction(u"Edit"_s);
        QMenu *menu = menus.addMenu(u"Edit"_s);
        QAction *item = menu->addAction(u"Edit"_s);

        Form()
        {
            window.setWindowTitle(u"Edit"_s);
            button.setToolTip(u"Help"_s);
            button.setAccessibleName(u"Edit"_s);
            buddyLabel.setBuddy(&box);
            list.addItem(u"Edit"_s);
            tabs.addTab(new QWidget, u"Edit"_s);
            grid.setHorizontalHeaderLabels({u"Edit"_s});
        }
    };

    Texts m_texts;
    support::TestDesk m_desk;
    language::LanguageState m_language;
    language::FormTranslator m_translator{m_texts, m_language, m_desk.log};

private Q_SLOTS:
    void everyKindOfControlShowsTheTextOfItsCaption()
    {
        for (const auto &[code, rightToLeft, before, marked, plain] :
             {std::tuple(u"POL"_s, false, u""_s, u"E&ditieren"_s, u"Editieren"_s),
              {u"ARA"_s, true, u"编辑(&E)"_s, u"Terms &&& prices"_s, u"Terms & prices"_s},
              {u"HBR"_s, true, u"编辑(&E)"_s, u"Edit"_s, u"Edit"_s}, // back to the design
              {u"CHS"_s, false, u""_s, u"编辑(&E)"_s, u"编辑"_s}}) {
            Form form;
            m_language.code = code;
            for (const QString &text : {before, marked == u"Edit"_s ? QString() : marked}) {
                m_texts.byKey = {{u"Edit"_s, text}, {u"Help"_s, u"Hilfe"_s}};
                m_translator.iniFormLang(form.window);
            }
            for (const QString &shown :
                 {form.button.text(), form.frame.title(), form.buddyLabel.text(), form.tabs.tabText(0),
                  form.tool->text(), form.menu->title(), form.item->text()}) {
                QCOMPARE(shown, marked);
            }
            const auto *toolButton = qobject_cast<QToolButton *>(form.bar.widgetForAction(form.tool));
            for (const QString &shown :
                 {form.window.windowTitle(), form.label.text(), form.list.item(0)->text(),
                  form.grid.horizontalHeaderItem(0)->text(), toolButton->text(), form.tool->toolTip(),
                  form.button.accessibleName()}) {
                QCOMPARE(shown, plain);
            }
            QCOMPARE(form.button.isRightToLeft(), rightToLeft);
            QCOMPARE(form.button.toolTip(), u"Hilfe"_s);
            QCOMPARE(form.customer.text(), u"<b>Smith & Sons</b>"_s); // is no caption
            QCOMPARE(form.customer.textFormat(), Qt::PlainText);
            QCOMPARE(form.box.text(), u"Edit"_s); // typed text
        }
    }

    void everyControlHasTheLanguagesFont()
    {
        Form form;
        form.button.setFont(QFont(u"monospace"_s, 31, QFont::Bold));
        form.label.setProperty("fontScale", 1.5);
        form.label.setProperty("fontBold", true);
        const qreal desktopSize = QFontInfo(QApplication::font()).pointSizeF();
        for (const auto &[told, applied] : {std::pair(40, 40.0), std::pair(1, desktopSize)}) {
            m_language.font = {1, {}, told};
            m_translator.iniFormFonts(form.window);
            for (const QWidget *control : QWidgetList{&form.button, form.grid.horizontalHeader()}) {
                QCOMPARE(control->font().pointSizeF(), applied);
                QVERIFY(!control->font().bold());
            }
            QCOMPARE(form.label.font().pointSizeF(), applied * 1.5);
            QVERIFY(form.label.font().bold());
        }
    }
};

QTEST_MAIN(tst_FormTranslator)
#include "tst_FormTranslator.moc"
