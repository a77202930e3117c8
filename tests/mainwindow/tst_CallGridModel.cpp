#include "mainwindow/CallGridModel.h"
#include "support/TestForms.h"

#include <QAbstractItemModelTester>
#include <QTest>

using namespace Qt::StringLiterals;
using mainwindow::CallGridModel;

class tst_CallGridModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theFullGridDropsItsOldestCall();
    void callsBetweenTwoPublishesComeAllAtOnce();
    void theOrderOfColumnsMovesDataWithHeaders();
    void anUnusableColumnListGivesTheDefaultsAndSaysSo_data();
    void anUnusableColumnListGivesTheDefaultsAndSaysSo();
    void editedColumnsAreSaved();
    void aStrangersTextIsShownPlain();
    void aRowOpensWhatItsIdSays_data();
    void aRowOpensWhatItsIdSays();

private:
    core::CallRecord call(int number) const;
    void fill(int first, int last);

    std::unique_ptr<support::TestForms> m_forms;
    std::unique_ptr<CallGridModel> m_model;
};

void tst_CallGridModel::init()
{
    m_forms = std::make_unique<support::TestForms>();
    core::setGridDefaults(m_forms->settings.record);
    m_model = std::make_unique<CallGridModel>(m_forms->settings, m_forms->desk.values, m_forms->texts,
                                              m_forms->desk.log);
    m_model->iniGridCallerID_tarn();
}

core::CallRecord tst_CallGridModel::call(int number) const
{
    core::CallRecord record;
    record.CallerID = u"555"_s + QString::number(number);
    record.SimpleDes = u"Caller "_s + QString::number(number);
    record.Source = u"CUSTOMER"_s;
    record.SnText = QString::number(number);
    record.SN = number;
    return record;
}

void tst_CallGridModel::fill(int first, int last)
{
    for (int number = first; number <= last; ++number) {
        m_model->ShowCallerID_tarn(call(number));
    }
    m_model->publish();
}

void tst_CallGridModel::theFullGridDropsItsOldestCall()
{
    const QAbstractItemModelTester tester(m_model.get());
    fill(1, 299);
    QCOMPARE(m_model->rowCount(), 299);
    QCOMPARE(m_model->cell(298, u"CallerID"_s), u"5551"_s);
    QCOMPARE(m_model->cell(294, u"SN"_s), u"005"_s);
    fill(300, 300);
    QCOMPARE(m_model->rowCount(), 299);
    QCOMPARE(m_model->cell(0, u"ID"_s), u"CUSTOMER300"_s);
    QCOMPARE(m_model->cell(298, u"CallerID"_s), u"5552"_s);
}

void tst_CallGridModel::callsBetweenTwoPublishesComeAllAtOnce()
{
    const QAbstractItemModelTester tester(m_model.get());
    fill(1, 2);
    const QPersistentModelIndex watched(m_model->index(0, 1));
    for (int number = 3; number <= 200; ++number) {
        m_model->ShowCallerID_tarn(call(number));
        QCOMPARE(m_model->rowCount(), 2);
        QCOMPARE(m_model->cell(0, u"SN"_s), u"002"_s);
    }
    m_model->publish();
    QCOMPARE(m_model->rowCount(), 200);
    QCOMPARE(watched.row(), 198);
    QCOMPARE(watched.data().toString(), u"5552"_s);
    fill(201, 1000); // more than the grid holds
    QCOMPARE(m_model->rowCount(), 299);
    QCOMPARE(m_model->cell(0, u"SN"_s), u"1000"_s);
    QCOMPARE(m_model->cell(298, u"SN"_s), u"702"_s);
    QVERIFY(!watched.isValid());
}

void tst_CallGridModel::theOrderOfColumnsMovesDataWithHeaders()
{
    fill(7, 7);
    m_forms->settings.record.gridColumnNames.setText(
        u"ID, SN,LineNo,IncomingTime,SimpleDes,CallerID,Channel"_s);
    m_model->iniGridCallerID_tarn();
    QCOMPARE(m_model->GetGridColumn(u"CallerID"_s), 5);
    QCOMPARE(m_model->GetGridColumn(u"NoSuch"_s), -1);
    QCOMPARE(m_model->headerData(5, Qt::Horizontal, Qt::DisplayRole).toString(), u"[CallerID]"_s);
    QCOMPARE(m_model->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), u"ID"_s);
    QCOMPARE(m_model->index(0, 5).data().toString(), u"5557"_s);
    QCOMPARE(m_model->index(0, 1).data().toString(), u"007"_s);
}

void tst_CallGridModel::anUnusableColumnListGivesTheDefaultsAndSaysSo_data()
{
    QTest::addColumn<QString>("names");
    QTest::addColumn<QString>("flags");
    QTest::newRow("unknown name") << u"Channel,CallerID,SimpleDes,IncomingTime,SN,LineNo,Color"_s
                                  << u",1,1,1,1,1,"_s;
    QTest::newRow("doubled name") << u"Channel,CallerID,CallerID,IncomingTime,SN,LineNo,ID"_s
                                  << u",1,1,1,1,1,"_s;
    QTest::newRow("too few") << u"CallerID"_s << u"1"_s;
    QTest::newRow("nothing") << QString() << u",1,1,1,1,1,"_s;
    QTest::newRow("nothing visible") << u"Channel,CallerID,SimpleDes,IncomingTime,SN,LineNo,ID"_s
                                     << QString();
}

void tst_CallGridModel::anUnusableColumnListGivesTheDefaultsAndSaysSo()
{
    QFETCH(QString, names);
    QFETCH(QString, flags);
    m_forms->settings.record.gridColumnNames.setText(names);
    m_forms->settings.record.gridColumnVisibility.setText(flags);
    m_model->iniGridCallerID_tarn();
    QCOMPARE(m_model->columnCount(), 7);
    QCOMPARE(m_model->GetGridColumn(u"CallerID"_s), 1);
    QVERIFY(m_model->columns().at(1).visible);
    QVERIFY(!m_model->columns().at(0).visible);
    QVERIFY(m_forms->desk.logMessages().last().startsWith(u"!iniGridCallerID_tarn "_s));
}

void tst_CallGridModel::editedColumnsAreSaved()
{
    QList<mainwindow::GridColumn> columns = m_model->columns();
    columns.swapItemsAt(0, 1);
    columns[0].width = 123456;
    m_model->ChangeGridCfg(columns);
    core::Settings read(m_forms->desk.paths, m_forms->desk.log);
    read.Get_misc();
    QCOMPARE(read.record.gridColumnNames.text(), u"CallerID,Channel,SimpleDes,IncomingTime,SN,LineNo,ID"_s);
    QCOMPARE(read.record.gridColumnWidths.text(), u"9999,500,2500,2700,500,1500,1500"_s);
    QCOMPARE(read.record.gridColumnVisibility.text(), u"1,,1,1,1,1,"_s);
}

void tst_CallGridModel::aStrangersTextIsShownPlain()
{
    core::CallRecord record = call(1);
    record.SimpleDes = u"a\x1b[31mb\r\nc\u202Ed"_s;
    m_model->ShowCallerID_tarn(record);
    m_model->publish();
    QCOMPARE(m_model->cell(0, u"SimpleDes"_s), u"a [31mb  c d"_s);
}

void tst_CallGridModel::aRowOpensWhatItsIdSays_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("opens");
    QTest::newRow("customer") << u"CUSTOMER12"_s << u"Show_Editor CUSTOMER 12"_s;
    QTest::newRow("large SN") << u"CUSTOMER70000"_s << u"Show_Editor CUSTOMER 70000"_s;
    QTest::newRow("phone book") << u"PHONEBOOK3"_s << u"Show_Editor PHONEBOOK 3"_s;
    QTest::newRow("unknown") << QString() << u"addCaller 5551 Jane"_s;
    QTest::newRow("source without a number") << u"CUSTOMER"_s << u"addCaller 5551 Jane"_s;
}

void tst_CallGridModel::aRowOpensWhatItsIdSays()
{
    QFETCH(QString, id);
    QFETCH(QString, opens);
    mainwindow::ShowEditor(m_forms->navigator, u"5551"_s, u"Jane"_s, id);
    QCOMPARE(m_forms->navigator.shown, QStringList{opens});
}

QTEST_MAIN(tst_CallGridModel)
#include "tst_CallGridModel.moc"
