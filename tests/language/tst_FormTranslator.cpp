#include "language/Captions.h"
#include "language/FormTranslator.h"
#include "support/TestDesk.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

class Texts : public core::TextLookup
{
public:
    QHash<QString, QString> byKey;
    QString Lms(const QString &key) const override { return byKey.value(key); }
};

/// One control of every kind, each designed with the caption "Edit".
struct Form
{
    QWidget window;
    QVBoxLayout layout{&window};
    QPushButton button{u"Edit"_s};
    QCheckBox check{u"Edit"_s};
    QRadioButton option{u"Edit"_s};
    QGroupBox frame{u"Edit"_s};
    QLabel label{u"Edit"_s};
    QLabel buddyLabel{u"Edit"_s};
    QLineEdit box{u"Edit"_s};
    QComboBox combo;
    QListWidget list;
    QTabWidget tabs;
    QTableWidget grid{2, 1};
    QToolBar bar;
    QMenuBar menus;
    QAction *tool = bar.addAction(u"Edit"_s);
    QAction *tippedTool = bar.addAction(u"Edit"_s);
    QMenu *menu = menus.addMenu(u"Edit"_s);
    QAction *item = menu->addAction(u"Edit"_s);

    Form()
    {
        for (QWidget *part : QWidgetList{&button, &check, &option, &frame, &label, &buddyLabel, &box, &combo,
                                         &list, &tabs, &grid, &bar, &menus}) {
            layout.addWidget(part);
        }
        window.setWindowTitle(u"Edit"_s);
        button.setToolTip(u"Help"_s);
        button.setAccessibleName(u"Edit"_s);
        tippedTool->setToolTip(u"Help"_s);
        buddyLabel.setBuddy(&box);
        combo.addItem(u"Edit"_s);
        list.addItem(u"Edit"_s);
        tabs.addTab(new QLabel, u"Edit"_s);
        grid.setHorizontalHeaderLabels({u"Edit"_s});
    }
    QString heading() const
    {
        return grid.model()->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString();
    }
    QToolButton *toolButton() const { return qobject_cast<QToolButton *>(bar.widgetForAction(tool)); }
    /// The texts that may carry a mnemonic, and those that show none.
    QStringList marked() const
    {
        return {button.text(),   check.text(), option.text(), frame.title(), buddyLabel.text(),
                tabs.tabText(0), tool->text(), menu->title(), item->text()};
    }
    QStringList plain() const
    {
        return {window.windowTitle(), label.text(),           list.item(0)->text(), heading(),
                tool->toolTip(),      button.accessibleName()};
    }
};

} // namespace

class tst_FormTranslator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void everyKindOfControlShowsTheTextOfItsCaption_data();
    void everyKindOfControlShowsTheTextOfItsCaption();
    void tipsHaveKeysOfTheirOwn();
    void textBoxesAndComboBoxesStayAsDesigned();
    void aCaptionWithoutATextStaysAsDesigned();
    void childWindowsAreLeftAlone();
    void arabicAndHebrewFormsAreMirrored();
    void labelsTakeMarkupAsText();
    void everyControlHasTheLanguagesFont();
    void marksAreDroppedFromPlainTexts();

private:
    void translate(QWidget &form) const
    {
        language::FormTranslator(m_texts, m_language, m_desk.log).iniFormLang(form);
    }

    Texts m_texts;
    language::LanguageState m_language;
    mutable support::TestDesk m_desk;
};

void tst_FormTranslator::init()
{
    m_texts.byKey = {{u"Edit"_s, u"&Bearbeiten"_s}, {u"Help"_s, u"Hilfe"_s}};
    m_language.code = u"ENG"_s;
}

void tst_FormTranslator::everyKindOfControlShowsTheTextOfItsCaption_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("plain");
    QTest::newRow("at the first time") << QString() << u"&Bearbeiten"_s << u"Bearbeiten"_s;
    QTest::newRow("after another language") << u"编辑(&E)"_s << u"&Bearbeiten"_s << u"Bearbeiten"_s;
    QTest::newRow("back to the design") << u"编辑(&E)"_s << QString() << u"Edit"_s;
}

void tst_FormTranslator::everyKindOfControlShowsTheTextOfItsCaption()
{
    QFETCH(QString, before);
    QFETCH(QString, text);
    QFETCH(QString, plain);
    Form form;
    if (!before.isEmpty()) {
        m_texts.byKey[u"Edit"_s] = before;
        translate(form.window);
    }
    m_texts.byKey[u"Edit"_s] = text;
    translate(form.window);
    QCOMPARE(form.marked(), QStringList(form.marked().size(), text.isEmpty() ? plain : text));
    QCOMPARE(form.plain(), QStringList(form.plain().size(), plain));
    QCOMPARE(form.toolButton()->text(), plain);
}

void tst_FormTranslator::tipsHaveKeysOfTheirOwn()
{
    Form form;
    translate(form.window);
    QCOMPARE(form.button.toolTip(), u"Hilfe"_s);
    QCOMPARE(form.tippedTool->toolTip(), u"Hilfe"_s);
}

void tst_FormTranslator::textBoxesAndComboBoxesStayAsDesigned()
{
    Form form;
    translate(form.window);
    QCOMPARE(form.box.text(), u"Edit"_s);
    QCOMPARE(form.combo.itemText(0), u"Edit"_s);
}

void tst_FormTranslator::aCaptionWithoutATextStaysAsDesigned()
{
    Form form;
    form.label.setText(u"Smith & Sons"_s);
    form.list.item(0)->setText(u"AT&T"_s);
    translate(form.window);
    QCOMPARE(form.label.text(), u"Smith & Sons"_s);
    QCOMPARE(form.list.item(0)->text(), u"AT&T"_s);
}

void tst_FormTranslator::childWindowsAreLeftAlone()
{
    Form form;
    QDialog child(&form.window);
    QPushButton button(u"Edit"_s, &child);
    translate(form.window);
    QCOMPARE(button.text(), u"Edit"_s);
}

void tst_FormTranslator::arabicAndHebrewFormsAreMirrored()
{
    Form form;
    for (const auto &[code, direction] :
         {std::pair(u"ARA"_s, Qt::RightToLeft), {u"CHS"_s, Qt::LeftToRight}, {u"HBR"_s, Qt::RightToLeft}}) {
        m_language.code = code;
        translate(form.window);
        QCOMPARE(form.button.layoutDirection(), direction);
    }
}

void tst_FormTranslator::labelsTakeMarkupAsText()
{
    Form form;
    translate(form.window);
    QCOMPARE(form.label.textFormat(), Qt::PlainText);
}

void tst_FormTranslator::everyControlHasTheLanguagesFont()
{
    Form form;
    form.button.setFont(QFont(u"monospace"_s, 31, QFont::Bold));
    form.label.setProperty("fontScale", 1.5);
    form.label.setProperty("fontBold", true);
    m_language.font = {1, {}, 20};
    const language::FormTranslator translator(m_texts, m_language, m_desk.log);
    translator.iniFormFonts(form.window);
    translator.iniFormFonts(form.window); // a title does not grow from call to call
    for (const QWidget *part : std::initializer_list<const QWidget *>{
             &form.window, &form.button, &form.box, &form.grid, form.grid.horizontalHeader()}) {
        QCOMPARE(part->font().pointSizeF(), 20.0);
        QVERIFY(!part->font().bold());
    }
    QCOMPARE(form.label.font().pointSizeF(), 30.0);
    QVERIFY(form.label.font().bold());

    m_language.font.pointSize = 1;
    translator.iniFormFonts(form.window);
    QCOMPARE(form.button.font().pointSizeF(), QFontInfo(QApplication::font()).pointSizeF());
}

void tst_FormTranslator::marksAreDroppedFromPlainTexts()
{
    using language::withoutMnemonic;
    QCOMPARE(withoutMnemonic(u"E&xit"_s), u"Exit"_s);
    QCOMPARE(withoutMnemonic(u"编辑(&E)"_s), u"编辑"_s);
    QCOMPARE(withoutMnemonic(u"Terms && prices"_s), u"Terms & prices"_s);
    QCOMPARE(withoutMnemonic(u"lone &"_s), u"lone &"_s);
}

QTEST_MAIN(tst_FormTranslator)
#include "tst_FormTranslator.moc"
