#include "language/FormTranslator.h"
#include "support/TestDesk.h"

#include <QApplication>
#include <QDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

class Texts : public core::TextLookup
{
public:
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
    QLineEdit box{u"Edit"_s, &frame};
    QListWidget list{&window};
    QTabWidget tabs{&window};
    QTableWidget grid{2, 1, &window};
    QToolBar bar{&window};
    QMenuBar menus{&window};
    QAction *tool = bar.addAction(u"Edit"_s);
    QAction *tippedTool = bar.addAction(u"Edit"_s);
    QMenu *menu = menus.addMenu(u"Edit"_s);
    QAction *item = menu->addAction(u"Edit"_s);

    Form()
    {
        window.setWindowTitle(u"Edit"_s);
        button.setToolTip(u"Help"_s);
        button.setAccessibleName(u"Edit"_s);
        tippedTool->setToolTip(u"Help"_s);
        buddyLabel.setBuddy(&box);
        list.addItem(u"Edit"_s);
        tabs.addTab(new QWidget, u"Edit"_s);
        grid.setHorizontalHeaderLabels({u"Edit"_s});
    }
    QStringList textsWithMnemonic() const
    {
        return {button.text(), frame.title(), buddyLabel.text(), tabs.tabText(0),
                tool->text(),  menu->title(), item->text()};
    }
    QStringList plainTexts() const
    {
        const auto *toolButton = qobject_cast<QToolButton *>(bar.widgetForAction(tool));
        return {window.windowTitle(),   label.text(),
                list.item(0)->text(),   grid.horizontalHeaderItem(0)->text(),
                toolButton->text(),     tool->toolTip(),
                button.accessibleName()};
    }
};

} // namespace

class tst_FormTranslator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKindOfControlShowsTheTextOfItsCaption_data();
    void everyKindOfControlShowsTheTextOfItsCaption();
    void whatIsNoCaptionStaysAsDesigned();
    void onlyArabicAndHebrewFormsAreMirrored();
    void everyControlHasTheLanguagesFont();

private:
    Texts m_texts;
    support::TestDesk m_desk;
    language::LanguageState m_language;
    language::FormTranslator m_translator{m_texts, m_language, m_desk.log};
};

void tst_FormTranslator::everyKindOfControlShowsTheTextOfItsCaption_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("plain");
    QTest::newRow("at the first time") << QString() << u"E&ditieren"_s << u"Editieren"_s;
    QTest::newRow("after another language") << u"编辑(&E)"_s << u"Terms &&& prices"_s << u"Terms & prices"_s;
    QTest::newRow("back to the design") << u"编辑(&E)"_s << QString() << u"Edit"_s;
    QTest::newRow("to Chinese") << QString() << u"编辑(&E)"_s << u"编辑"_s;
}

void tst_FormTranslator::everyKindOfControlShowsTheTextOfItsCaption()
{
    QFETCH(QString, before);
    QFETCH(QString, text);
    QFETCH(QString, plain);
    Form form;
    for (const QString &edit : {before, text}) {
        m_texts.byKey = {{u"Edit"_s, edit}, {u"Help"_s, u"Hilfe"_s}};
        m_translator.iniFormLang(form.window);
    }
    const QString marked = text.isEmpty() ? plain : text;
    QCOMPARE(form.textsWithMnemonic(), QStringList(form.textsWithMnemonic().size(), marked));
    QCOMPARE(form.plainTexts(), QStringList(form.plainTexts().size(), plain));
    QCOMPARE(form.button.toolTip(), u"Hilfe"_s);
    QCOMPARE(form.tippedTool->toolTip(), u"Hilfe"_s);
}

void tst_FormTranslator::whatIsNoCaptionStaysAsDesigned()
{
    Form form;
    form.label.setText(u"<b>Smith & Sons</b>"_s);
    QDialog child(&form.window);
    QPushButton childButton(u"Edit"_s, &child);
    m_texts.byKey = {{u"Edit"_s, u"translated"_s}};
    m_translator.iniFormLang(form.window);
    QCOMPARE(form.label.text(), u"<b>Smith & Sons</b>"_s);
    QCOMPARE(form.label.textFormat(), Qt::PlainText);
    QCOMPARE(form.box.text(), u"Edit"_s);
    QCOMPARE(childButton.text(), u"Edit"_s);
}

void tst_FormTranslator::onlyArabicAndHebrewFormsAreMirrored()
{
    Form form;
    for (const QString &code : {u"ARA"_s, u"CHS"_s, u"HBR"_s}) {
        m_language.code = code;
        m_translator.iniFormLang(form.window);
        QCOMPARE(form.button.isRightToLeft(), code != u"CHS"_s);
    }
}

void tst_FormTranslator::everyControlHasTheLanguagesFont()
{
    Form form;
    form.button.setFont(QFont(u"monospace"_s, 31, QFont::Bold));
    form.label.setProperty("fontScale", 1.5);
    form.label.setProperty("fontBold", true);
    const qreal desktopSize = QFontInfo(QApplication::font()).pointSizeF();
    for (const auto &[told, applied] : {std::pair(40, 40.0), std::pair(1, desktopSize)}) {
        m_language.font = {1, {}, told};
        m_translator.iniFormFonts(form.window);
        for (const QWidget *control :
             QWidgetList{&form.window, &form.button, &form.box, form.grid.horizontalHeader()}) {
            QCOMPARE(control->font().pointSizeF(), applied);
            QVERIFY(!control->font().bold());
        }
        QCOMPARE(form.label.font().pointSizeF(), applied * 1.5);
        QVERIFY(form.label.font().bold());
    }
}

QTEST_MAIN(tst_FormTranslator)
#include "tst_FormTranslator.moc"
