#include "mainwindow/CallGridModel.h"
#include "support/Rows.h"
#include "support/TestForms.h"

#include <QAbstractItemModelTester>

using mainwindow::CallGridModel;

class tst_CallGridModel : public QObject
{
    Q_OBJECT

    struct Grid : support::TestForms
    {
        CallGridModel model{settings, values, texts, log};
        core::SettingsRecord &record = settings.record;

        Grid()
        {
            core::setGridDefaults(record);
            model.iniGridCallerID_tarn();
        }
        void add(int number) { model.ShowCallerID_tarn(call(number)); }
        static core::CallRecord call(int number)
        {
            core::CallRecord call;
            call.CallerID = u"555"_s + QString::number(number);
            call.SimpleDes = u"a\x1b[31mb\r\nc\u202Ed"_s;
            call.Source = u"CUSTOMER"_s;
            call.SnText = QString::number(number);
            call.SN = number;
            return call;
        }
    };

private Q_SLOTS:
    void theNewest299CallsAreShownOncePublished()
    {
        Grid grid;
        const QAbstractItemModelTester tester(&grid.model);
        QPersistentModelIndex firstCall;
        int number = 0;
        for (int burst : {1, 200, 97, 1, 1, 30, 700, 299, 300}) {
            const int shown = grid.model.rowCount();
            while (burst-- > 0) {
                grid.add(++number);
            }
            QCOMPARE(grid.model.rowCount(), shown);
            grid.model.publish();
            QCOMPARE(grid.model.rowCount(), std::min(number, 299));
            for (int row = 0; row < grid.model.rowCount(); ++row) {
                const QString count = QString::number(number - row);
                QCOMPARE(grid.model.cell(row, u"CallerID"_s), u"555"_s + count);
                QCOMPARE(grid.model.cell(row, u"ID"_s), u"CUSTOMER"_s + count);
                QCOMPARE(grid.model.cell(row, u"SN"_s), count.rightJustified(3, u'0'));
            }
            firstCall = shown == 0 ? QPersistentModelIndex(grid.model.index(number - 1, 1)) : firstCall;
            QCOMPARE(firstCall.row(), number <= 299 ? number - 1 : -1);
        }
        QCOMPARE(grid.model.cell(0, u"SimpleDes"_s), u"a [31mb  c d"_s);
    }

    void anEarlierCallStandsBelowTheNewerOnes()
    {
        Grid grid;
        grid.values.MaxGridRows = 5; // four rows of calls
        grid.model.iniGridCallerID_tarn();
        const QAbstractItemModelTester tester(&grid.model);
        const auto shown = [&] { return support::columnOf(grid.model, 4); };
        grid.add(1);
        grid.model.publish();
        const QPersistentModelIndex first = grid.model.index(0, 4);
        grid.add(2);
        grid.add(3); // not published yet
        QCOMPARE(shown(), u"001"_s);
        grid.model.showEarlierCall(Grid::call(9), 2);
        QCOMPARE(shown(), u"003|002|009|001"_s);
        QCOMPARE(first.row(), 3);
        grid.model.showEarlierCall(Grid::call(8), 0);
        QCOMPARE(shown(), u"008|003|002|009"_s);
        grid.model.showEarlierCall(Grid::call(7), 9);
        QCOMPARE(shown(), u"008|003|002|007"_s);
    }

    void aMarkedCallerIsToldInWords()
    {
        Grid grid;
        for (const auto &[vip, blackList, word] :
             {std::tuple(u"Y"_s, u""_s, u"[IFVIP]"_s), {u"Y"_s, u"Y"_s, u"[IfInBlackList]"_s}}) {
            core::CallRecord call = Grid::call(144);
            call.IfVIP = vip;
            call.IfInBlackList = blackList;
            grid.model.ShowCallerID_tarn(call);
            grid.model.publish();
            const QModelIndex number = grid.model.index(0, grid.model.GetGridColumn(u"CallerID"_s));
            QCOMPARE(number.data(Qt::ToolTipRole).toString(), word + u"\n[DoubleClickToAddPhoneNumber]"_s);
            QCOMPARE(number.data(Qt::AccessibleTextRole).toString(), u"555144, "_s + word);
        }
    }

    void anUnusableColumnListGivesTheDefaultsAndSaysSo()
    {
        const QString names = u"Channel,CallerID,SimpleDes,IncomingTime,SN,LineNo,"_s;
        for (const auto &[columns, flags] : {std::pair(names + u"Color"_s, u",1,1,1,1,1,"_s),
                                             {names + u"SN"_s, u",1,1,1,1,1,"_s},
                                             {QString(), u",1,1,1,1,1,"_s},
                                             {names + u"ID"_s, QString()}}) {
            Grid grid;
            grid.record.gridColumnNames.setText(columns);
            grid.record.gridColumnVisibility.setText(flags);
            grid.model.iniGridCallerID_tarn();
            QCOMPARE(grid.model.columns().at(1).name, u"CallerID"_s);
            QVERIFY(grid.model.columns().at(1).visible && !grid.model.columns().at(0).visible);
            QVERIFY(grid.logMessages().last().startsWith(u"!iniGridCallerID_tarn "_s));
        }
    }

    void editedColumnsAreSavedAndMoveDataWithHeaders()
    {
        Grid grid;
        grid.add(7);
        grid.model.publish();
        QList<mainwindow::GridColumn> columns = grid.model.columns();
        columns.swapItemsAt(0, 1);
        columns[0].width = 123456;
        grid.model.ChangeGridCfg(columns);
        grid.model.iniGridCallerID_tarn();
        QCOMPARE(grid.model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), u"[CallerID]"_s);
        QCOMPARE(grid.model.index(0, 0).data().toString(), u"5557"_s);
        core::Settings read(grid.paths, grid.log);
        read.Get_misc();
        const core::SettingsRecord &saved = read.record;
        QCOMPARE(saved.gridColumnNames.text(), u"CallerID,Channel,SimpleDes,IncomingTime,SN,LineNo,ID"_s);
        QCOMPARE(saved.gridColumnWidths.text(), u"9999,500,2500,2700,500,1500,1500"_s);
        QCOMPARE(saved.gridColumnVisibility.text(), u"1,,1,1,1,1,"_s);
    }
};

QTEST_MAIN(tst_CallGridModel)
#include "tst_CallGridModel.moc"
