#include "lookup/PopUpDecision.h"

#include <QTest>

using namespace Qt::StringLiterals;
using lookup::Standing;

namespace {

/// Answers each key with the key in angle brackets.
class KeyTexts : public core::TextLookup
{
public:
    QString Lms(const QString &key) const override { return u'<' + key + u'>'; }
};

core::CallRecord knownCaller()
{
    core::CallRecord record;
    record.CallerID = u"13900000000"_s;
    record.SimpleDes = u"Harbour Ltd"_s;
    record.DetailDes = u"pays late"_s;
    record.SnText = u"12"_s;
    record.Source = u"PHONEBOOK"_s;
    return record;
}

} // namespace

class tst_PopUpDecision : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theMarksDecideWhatShows_data();
    void theMarksDecideWhatShows();
    void thePopupShowsTheCallersFields();
    void anUnknownOrNamelessCallerShowsNothing();
    void aStrangersTextIsTamed();
};

void tst_PopUpDecision::theMarksDecideWhatShows_data()
{
    QTest::addColumn<QString>("vip");
    QTest::addColumn<QString>("blackListed");
    QTest::addColumn<bool>("popupDetail");
    QTest::addColumn<bool>("shows");
    QTest::addColumn<Standing>("standing");
    QTest::addColumn<QString>("notice");

    QTest::newRow("both marks") << u"Y"_s << u"Y"_s << false << true << Standing::BlackListed
                                << u"<ListInBlackAttention>"_s;
    QTest::newRow("VIP") << u"Y"_s << u"N"_s << false << true << Standing::Vip << u"<VIPattention>"_s;
    QTest::newRow("small y") << u"y"_s << u"y"_s << true << true << Standing::Ordinary << u""_s;
    QTest::newRow("ordinary, not wanted") << u"N"_s << u""_s << false << false << Standing::Ordinary << u""_s;
    QTest::newRow("VIP with more") << u"YES"_s << u""_s << false << false << Standing::Ordinary << u""_s;
}

void tst_PopUpDecision::theMarksDecideWhatShows()
{
    QFETCH(const QString, vip);
    QFETCH(const QString, blackListed);
    QFETCH(const bool, popupDetail);
    core::CallRecord record = knownCaller();
    record.IfVIP = vip;
    record.IfInBlackList = blackListed;
    const auto view = lookup::decidePopUp(lookup::popupInfoOf(record), popupDetail, KeyTexts());
    QTEST(view.has_value(), "shows");
    if (view) {
        QTEST(view->standing, "standing");
        QTEST(view->lblBlackListNotice, "notice");
    }
}

void tst_PopUpDecision::thePopupShowsTheCallersFields()
{
    const auto view = lookup::decidePopUp(lookup::popupInfoOf(knownCaller()), true, KeyTexts());
    QVERIFY(view);
    QCOMPARE(view->txtSN, u"12"_s);
    QCOMPARE(view->txtSnType, u"PHONEBOOK"_s);
    QCOMPARE(view->txtAbout, u"13900000000     Harbour Ltd"_s);
    QCOMPARE(view->txtContent, u"pays late"_s);
}

void tst_PopUpDecision::anUnknownOrNamelessCallerShowsNothing()
{
    for (QString core::CallRecord::*field : {&core::CallRecord::SnText, &core::CallRecord::SimpleDes}) {
        core::CallRecord record = knownCaller();
        record.IfInBlackList = u"Y"_s;
        (record.*field).clear();
        QVERIFY(!lookup::decidePopUp(lookup::popupInfoOf(record), true, KeyTexts()));
    }
}

void tst_PopUpDecision::aStrangersTextIsTamed()
{
    core::CallRecord record = knownCaller();
    record.SimpleDes = u"a\u202Eb\x1B"_s;
    record.DetailDes = QString(60000, u'w');
    const auto view = lookup::decidePopUp(lookup::popupInfoOf(record), true, KeyTexts());
    QVERIFY(view);
    QCOMPARE(view->txtAbout, u"13900000000     a b "_s);
    QCOMPARE(view->txtContent.size(), 256);
}

QTEST_GUILESS_MAIN(tst_PopUpDecision)
#include "tst_PopUpDecision.moc"
