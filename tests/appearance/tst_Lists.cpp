#include "appearance/ComboLists.h"
#include "appearance/GridDelegate.h"
#include "appearance/RecordGrid.h"
#include "appearance/theme/Theme.h"
#include "support/TestForms.h"

namespace {

/// Has every cell drawn by the style alone.
class StyledDelegate : public appearance::GridDelegate
{
public:
    using GridDelegate::GridDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
    }
};

/// Texts short and long, of scripts that are written in either direction, at each side of their cells.
void fillCells(QStandardItemModel &model)
{
    for (const QString &text : {u"05332345678"_s, u"港湾贸易公司"_s, u"مكالمة 12"_s, u"ağ é👍"_s, QString(),
                                u"two words wrap"_s, u"ف"_s.repeated(40)}) {
        QList<QStandardItem *> cells;
        for (const auto side : {Qt::AlignLeading, Qt::AlignTrailing, Qt::AlignHCenter, Qt::AlignLeft}) {
            cells.append(new QStandardItem(text));
            cells.last()->setTextAlignment(side | Qt::AlignVCenter);
        }
        cells.last()->setEnabled(model.rowCount() % 2 == 0);
        cells.first()->setBackground(Qt::yellow);
        model.appendRow(cells);
    }
    QPixmap mark(8, 8);
    mark.fill(Qt::red);
    model.appendRow(new QStandardItem(QIcon(mark), u"marked"_s));
}

} // namespace

/// What lists and combo boxes of all forms share.
class tst_Lists : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aComboRemembersEachTextOncePerLanguage()
    {
        support::TestForms forms;
        QDir(forms.paths.StartFolder).mkdir(u"PopUserData"_s);
        const appearance::ComboLists lists(forms.paths, forms.log, forms.translator);
        QComboBox combo;
        combo.setObjectName(u"txtCity"_s);
        combo.setEditable(true);
        for (const QString &text : {u"Łódź"_s, u"北京"_s, u"Łódź"_s, u"łódź"_s, u""_s, u"two\nlines"_s}) {
            combo.setEditText(text);
            lists.SaveComboItem(combo);
        }
        const QString file = forms.paths.PopUserDataFolder + u"/txtCity_ENG.txt"_s;
        QCOMPARE(QString::fromUtf8(forms.fileBytes(file)), u"Łódź\r\n北京\r\nłódź\r\n"_s);
        QVERIFY(forms.logMessages().last().startsWith(u"!SaveComboItem "_s));

        combo.clear();
        combo.setEditText(u"typed"_s);
        lists.ReadComboList(combo);
        QCOMPARE(combo.count(), 3);
        QCOMPARE(combo.itemText(1), u"北京"_s);
        QCOMPARE(combo.currentText(), u"typed"_s);
        forms.language.code = u"CHS"_s;
        combo.clear();
        lists.ReadComboList(combo);
        QCOMPARE(combo.count(), 0);
    }

    void aGridCopiesWhatItShowsAndKeepsItsColumns()
    {
        support::TestForms forms;
        QStandardItemModel model(2, 3);
        for (int cell = 0; cell < 6; ++cell) {
            model.setItem(cell / 3, cell % 3, new QStandardItem(u"=a\tb%1"_s.arg(cell)));
        }
        {
            appearance::RecordGrid grid;
            grid.setModel(&model);
            grid.setSelectionBehavior(QAbstractItemView::SelectRows);
            grid.remember(forms.windows, u"list"_s);
            grid.horizontalHeader()->moveSection(2, 0);
            grid.setColumnHidden(1, true);
            grid.show();
            grid.selectAll();
            QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
            QCOMPARE(QApplication::clipboard()->text(), u"'=a b2\t'=a b0\n'=a b5\t'=a b3"_s);
            grid.setCurrentIndex(model.index(0, 0));
            grid.copyCell(); // alone it is no table
            QCOMPARE(QApplication::clipboard()->text(), u"=a\tb0"_s);
            QSignalSpy opened(&grid, &appearance::RecordGrid::recordActivated);
            grid.setCurrentIndex(model.index(1, 0));
            QTest::keyClick(&grid, Qt::Key_Return);
            QCOMPARE(opened.takeFirst().first().toInt(), 1);
            grid.hide();
        }
        appearance::RecordGrid again;
        again.setModel(&model);
        again.remember(forms.windows, u"list"_s);
        QVERIFY(again.isColumnHidden(1));
        QCOMPARE(again.horizontalHeader()->logicalIndex(0), 2);
    }

    void cellsLookAsTheStyleDrawsThem()
    {
        QStandardItemModel model;
        fillCells(model);
        appearance::GridDelegate quick;
        StyledDelegate styled;
        appearance::RecordGrid grid;
        grid.setModel(&model);
        grid.setAlternatingRowColors(true);
        const auto drawnBy = [&grid](QAbstractItemDelegate &delegate) {
            grid.setItemDelegate(&delegate);
            return grid.grab().toImage();
        };
        grid.resize(500, 400);
        grid.selectRow(1);
        grid.setCurrentIndex(model.index(2, 0));
        const auto sameInEachLook = [&](const char *what) {
            for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
                for (const bool dark : {false, true}) {
                    grid.setLayoutDirection(direction);
                    grid.setPalette(appearance::themePalette(dark));
                    QVERIFY2(drawnBy(quick) == drawnBy(styled), what);
                }
            }
        };
        sameInEachLook("as first drawn");
        sameInEachLook("drawn again");
        grid.selectAll();
        sameInEachLook("all selected");
        grid.setColumnWidth(0, 60);
        grid.setFont(QFont(grid.font().family(), 17));
        sameInEachLook("another width and font");
        grid.setEnabled(false);
        sameInEachLook("disabled");
    }

    // A menu that ran an event loop of its own would keep the test from going on.
    void theMenuOfARowIsNotWaitedFor()
    {
        QStandardItemModel model(1, 1);
        appearance::RecordGrid grid;
        grid.setModel(&model);
        int opened = 0;
        grid.setRowMenu({{u"Open"_s, [&opened] { ++opened; }}, {}, {u"Copy"_s, [] {}}});
        grid.show();
        for (const bool onRow : {false, true}) {
            grid.setCurrentIndex(onRow ? model.index(0, 0) : QModelIndex());
            QContextMenuEvent asked(QContextMenuEvent::Mouse, QPoint(4, 4), QPoint(4, 4));
            QApplication::sendEvent(grid.viewport(), &asked);
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            QVERIFY(menu != nullptr);
            QCOMPARE(menu->actions().size(), 3);
            QCOMPARE(menu->actions().first()->isEnabled(), onRow);
            menu->actions().first()->trigger();
            menu->close();
            QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);
        }
        QCOMPARE(opened, 1);
    }
};

QTEST_MAIN(tst_Lists)
#include "tst_Lists.moc"
