#include "lookup/PopUpDecision.h"

#include <QTest>

using namespace Qt::StringLiterals;
using core::Standing;

namespace {

/// Answers each key with the key in angle brackets.
class KeyTexts : public core::TextLookup
{
public:
    QString Lms(const QString &key) const override { return u'<' + key + u'>'; }
};

core::CallRecord knownCaller(const QString &vip, const QString &blackListed)
{
    core::CallRecord record;
    record.CallerID = u"13900000000"_s;
    record.SimpleDes = u"Harbour\u202E Ltd\x1B"_s;
    record.DetailDes = QString(60000, u'w');
    record.SnText = u"12"_s;
    record.Source = u"PHONEBOOK"_s;
    record.IfVIP = vip;
    record.IfInBlackList = blackListed;
    return record;
}

std::optional<lookup::PopUpView> decide(const core::CallRecord &record, bool popupDetail)
{
    return lookup::decidePopUp(lookup::popupInfoOf(record), popupDetail, KeyTexts());
}

} // namespace

class tst_PopUpDecision : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theMarksDecideTheStanding_data();
    void theMarksDecideTheStanding();
    void thePopupShowsTheCallersFieldsTamed();
    void anUnknownOrNamelessCallerShowsNothing();
};

void tst_PopUpDecision::theMarksDecideTheStanding_data()
{
    QTest::addColumn<QString>("vip");
    QTest::addColumn<QString>("blackListed");
    QTest::addColumn<bool>("alwaysShows");
    QTest::addColumn<Standing>("standing");
    QTest::addColumn<QString>("notice");

    QTest::newRow("both") << u"Y"_s << u"Y"_s << true << Standing::BlackListed << u"<ListInBlackAttention>"_s;
    QTest::newRow("VIP") << u"Y"_s << u"N"_s << true << Standing::Vip << u"<VIPattention>"_s;
    QTest::newRow("small y") << u"y"_s << u"y"_s << false << Standing::Ordinary << u""_s;
    QTest::newRow("more than Y") << u"YES"_s << u""_s << false << Standing::Ordinary << u""_s;
}

void tst_PopUpDecision::theMarksDecideTheStanding()
{
    QFETCH(const QString, vip);
    QFETCH(const QString, blackListed);
    const core::CallRecord record = knownCaller(vip, blackListed);
    QTEST(decide(record, false).has_value(), "alwaysShows");
    QTEST(decide(record, true)->standing, "standing");
    QTEST(decide(record, true)->lblBlackListNotice, "notice");
}

void tst_PopUpDecision::thePopupShowsTheCallersFieldsTamed()
{
    const auto view = decide(knownCaller(u"Y"_s, u""_s), false);
    QVERIFY(view);
    QCOMPARE(view->txtSN, u"12"_s);
    QCOMPARE(view->txtSnType, u"PHONEBOOK"_s);
    QCOMPARE(view->txtAbout, u"13900000000     Harbour  Ltd "_s);
    QCOMPARE(view->txtContent, QString(256, u'w'));
}

void tst_PopUpDecision::anUnknownOrNamelessCallerShowsNothing()
{
    for (QString core::CallRecord::*field : {&core::CallRecord::SnText, &core::CallRecord::SimpleDes}) {
        core::CallRecord record = knownCaller(u"Y"_s, u"Y"_s);
        (record.*field).clear();
        QVERIFY(!decide(record, true));
    }
}

QTEST_GUILESS_MAIN(tst_PopUpDecision)
#include "tst_PopUpDecision.moc"
