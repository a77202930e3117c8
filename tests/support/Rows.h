#pragma once

#include "store/Database.h"
#include "store/ResultModel.h"
#include "support/Test.h"

#include <QAbstractItemView>
#include <QLineEdit>

namespace support {

/// The rows of a select on a database file: cells parted by "|", with "Null" for a Null, rows by a line
/// break.
inline QString rowsOf(const QString &path, const QString &select)
{
    store::Database database(path);
    store::Recordset rows = database.OpenRecordset(select);
    QStringList lines;
    for (; !rows.EOFile(); rows.MoveNext()) {
        QStringList cells;
        for (int column = 0; column < rows.fieldNames().size(); ++column) {
            cells.append(rows.value(column).isNull() ? u"Null"_s : rows.value(column).toString());
        }
        lines.append(cells.join(u'|'));
    }
    return lines.join(u'\n');
}

/// A column of a list as it is shown once all of its rows are found, its cells parted by "|".
inline QString columnOf(const QAbstractItemModel &model, int column = 0)
{
    const auto *result = qobject_cast<const store::ResultModel *>(&model);
    if (!QTest::qWaitFor([&] { return result == nullptr || !result->isReading(); }, 30000)) {
        return u"still being read"_s;
    }
    QStringList cells;
    for (int row = 0; row < model.rowCount(); ++row) {
        cells.append(model.index(row, column).data().toString());
    }
    return cells.join(u'|');
}

/// Opens the own editor of a list's cell, types over what stands there, and leaves it by Enter.
inline void typeCell(QAbstractItemView *view, const QModelIndex &cell, const QString &text)
{
    view->setCurrentIndex(cell);
    QTest::keyClick(view, Qt::Key_Return);
    auto *editor = view->findChild<QLineEdit *>();
    editor->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
}

inline void clickCell(const QAbstractItemView *view, int row, int column, bool twice = false)
{
    const QPoint place = view->visualRect(view->model()->index(row, column)).center();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place);
    if (twice) {
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, place);
    }
}

} // namespace support
