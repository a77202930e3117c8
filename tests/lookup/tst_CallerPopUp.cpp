#include "lookup/CallerPopUp.h"
#include "support/TestForms.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_CallerPopUp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void standingDecidesColorsAndWords_data();
    void standingDecidesColorsAndWords();
    void aTurnWithSeveralCallsShowsTheNewest();
    void theCardStandsInTheCornerAndLeavesTheKeyboardAlone();
    void editOpensTheCallersRow();
    void editIsDisabledWithoutAnEditor();
    void returnAndEscapeClose_data();
    void returnAndEscapeClose();

private:
    core::CallRecord caller() const;
    void pop(const core::CallRecord &record);
    lookup::frmPopUp *card() const;
    template <typename Control>
    Control *find(const QString &name) const
    {
        return card()->findChild<Control *>(name);
    }

    std::unique_ptr<support::TestForms> m_forms;
    std::unique_ptr<QWidget> m_mainWindow;
    std::unique_ptr<lookup::CallerPopUp> m_popUp;
};

void tst_CallerPopUp::init()
{
    m_popUp.reset();
    m_forms = std::make_unique<support::TestForms>();
    m_forms->settings.record.PopupDetail = 1;
    m_forms->navigator.available = {core::Window::CallerEditor};
    m_mainWindow = std::make_unique<QWidget>();
    m_popUp = std::make_unique<lookup::CallerPopUp>(lookup::CallerPopUp::Context{
        m_forms->desk.log, m_forms->settings, m_forms->texts, m_forms->navigator, m_forms->services(),
        [this]() -> const QWidget & { return *m_mainWindow; }});
}

core::CallRecord tst_CallerPopUp::caller() const
{
    core::CallRecord record;
    record.CallerID = u"5550144"_s;
    record.SimpleDes = u"Jane <b>Miller</b>"_s;
    record.DetailDes = u"Buys paper"_s;
    record.SnText = u"70007"_s;
    record.Source = u"CUSTOMER"_s;
    return record;
}

lookup::frmPopUp *tst_CallerPopUp::card() const
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (auto *form = qobject_cast<lookup::frmPopUp *>(window); form != nullptr && form->isVisible()) {
            return form;
        }
    }
    return nullptr;
}

void tst_CallerPopUp::pop(const core::CallRecord &record)
{
    m_popUp->ShowPopup(record);
    QTRY_VERIFY(card() != nullptr);
}

void tst_CallerPopUp::standingDecidesColorsAndWords_data()
{
    QTest::addColumn<QString>("vip");
    QTest::addColumn<QString>("blackList");
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QString>("notice");
    QTest::newRow("ordinary") << QString() << QString() << QColor(0, 255, 0) << QColor(0, 0, 255)
                              << QString();
    QTest::newRow("VIP") << u"Y"_s << QString() << QColor(255, 0, 0) << QColor(0, 0, 255)
                         << u"[VIPattention]"_s;
    QTest::newRow("black-listed") << QString() << u"Y"_s << QColor(0, 0, 0) << QColor(255, 255, 255)
                                  << u"[ListInBlackAttention]"_s;
    QTest::newRow("both") << u"Y"_s << u"Y"_s << QColor(0, 0, 0) << QColor(255, 255, 255)
                          << u"[ListInBlackAttention]"_s;
}

void tst_CallerPopUp::standingDecidesColorsAndWords()
{
    QFETCH(QString, vip);
    QFETCH(QString, blackList);
    QFETCH(QString, notice);
    core::CallRecord record = caller();
    record.IfVIP = vip;
    record.IfInBlackList = blackList;
    pop(record);
    const auto *about = find<QLineEdit>(u"txtAbout"_s);
    const auto *content = find<QPlainTextEdit>(u"txtContent"_s);
    QCOMPARE(about->text(), u"5550144     Jane <b>Miller</b>"_s);
    QCOMPARE(content->toPlainText(), u"Buys paper"_s);
    for (const QPalette &palette : {about->palette(), content->palette()}) {
        QTEST(palette.color(QPalette::Base), "ground");
        QTEST(palette.color(QPalette::Text), "text");
    }
    const auto *label = find<QLabel>(u"lblBlackListNotice"_s);
    QCOMPARE(label->isVisible(), !notice.isEmpty());
    QVERIFY(notice.isEmpty() || label->text() == notice);
    QCOMPARE(find<QLabel>(u"lblCallerNumber"_s)->textFormat(), Qt::PlainText);
}

void tst_CallerPopUp::aTurnWithSeveralCallsShowsTheNewest()
{
    core::CallRecord first = caller();
    first.IfVIP = u"Y"_s;
    core::CallRecord second = caller();
    second.CallerID = u"5550177"_s;
    core::CallRecord unknown; // pops nobody up and leaves the card to the others
    m_popUp->ShowPopup(first);
    m_popUp->ShowPopup(second);
    m_popUp->ShowPopup(unknown);
    QTRY_VERIFY(card() != nullptr);
    QCOMPARE(find<QLabel>(u"lblCallerNumber"_s)->text(), u"5550177"_s);
    auto *standing = card();
    pop(first);
    QTRY_COMPARE(find<QLabel>(u"lblCallerNumber"_s)->text(), u"5550144"_s);
    QCOMPARE(card(), standing);
}

void tst_CallerPopUp::theCardStandsInTheCornerAndLeavesTheKeyboardAlone()
{
    pop(caller());
    QVERIFY(card()->testAttribute(Qt::WA_ShowWithoutActivating));
    const QRect free = m_mainWindow->screen()->availableGeometry();
    QVERIFY(free.contains(card()->geometry()));
    QVERIFY(free.right() - card()->geometry().right() < 32);
    QVERIFY(free.bottom() - card()->geometry().bottom() < 64);
    const QPoint moved = card()->pos() - QPoint(100, 100);
    card()->move(moved);
    core::CallRecord next = caller();
    next.IfVIP = u"Y"_s;
    pop(next);
    QTRY_VERIFY(find<QLabel>(u"lblBlackListNotice"_s)->isVisible());
    QCOMPARE(card()->pos(), moved);
}

void tst_CallerPopUp::editOpensTheCallersRow()
{
    pop(caller());
    QTest::mouseClick(find<QPushButton>(u"Command2"_s), Qt::LeftButton);
    QCOMPARE(m_forms->navigator.shown, QStringList{u"Show_Editor CUSTOMER 70007"_s});
    QTRY_COMPARE(card(), nullptr);
    QTRY_COMPARE(m_forms->openForms.count(), 0);
}

void tst_CallerPopUp::editIsDisabledWithoutAnEditor()
{
    m_forms->navigator.available.clear();
    pop(caller());
    QVERIFY(!find<QPushButton>(u"Command2"_s)->isEnabled());
}

void tst_CallerPopUp::returnAndEscapeClose_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("button") << false;
    QTest::newRow("Esc") << true;
}

void tst_CallerPopUp::returnAndEscapeClose()
{
    QFETCH(bool, byKey);
    pop(caller());
    if (byKey) {
        QTest::keyClick(card(), Qt::Key_Escape);
    } else {
        QTest::mouseClick(find<QPushButton>(u"Command1"_s), Qt::LeftButton);
    }
    QTRY_COMPARE(card(), nullptr);
    QCOMPARE(m_forms->navigator.shown, QStringList());
}

QTEST_MAIN(tst_CallerPopUp)
#include "tst_CallerPopUp.moc"
