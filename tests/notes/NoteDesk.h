#pragma once

#include "../store/DeliveredFiles.h"
#include "notes/NoteWindows.h"
#include "store/Upgrade.h"
#include "support/TestForms.h"

/// A desk with the customers "Acme" and "O'Brien's" and no call notes.
class NoteDesk : public support::TestForms
{
public:
    NoteDesk()
    {
        deliver(u"Customer"_s, desk.paths.CustomerFile);
        run(u"insert into customer(CustomerName) values('Acme'),('O''Brien''s')"_s);
        store::UpdateDatabase_Customer_0606191111(desk.log, desk.paths);
    }

    support::FakePrinter printer;
    notes::NoteWindows windowsOfNotes{{context(), printer, desk.values, language}};

    void run(const QString &statements) const { desk.runSql(desk.paths.CustomerFile, statements); }
    /// The rows of a select, cells parted by "|" and rows by a line break.
    QString rows(const QString &select) const
    {
        store::Database database(desk.paths.CustomerFile);
        store::Recordset result = database.OpenRecordset(select);
        QStringList lines;
        for (; !result.EOFile(); result.MoveNext()) {
            QStringList cells;
            for (int i = 0; i < result.fieldNames().size(); ++i) {
                cells.append(result.value(i).toString());
            }
            lines.append(cells.join(u'|'));
        }
        return lines.join(u'\n');
    }
    /// One call with one entry.
    void addCall(const QString &id, const QString &customer, const QString &time, const QString &consultant,
                 const QString &content, const QString &request, int resolved) const
    {
        run(u"insert into callinfo values('%1','%2','%3','%4','%5');"_s.arg(id, customer, time, consultant,
                                                                            content) +
            u"insert into customerrequest values('%1','%2','Done by %3',%4,'Note %1')"_s.arg(
                id, request, consultant, QString::number(resolved)));
    }
};

template <typename Control>
Control *control(QWidget *form, const char *name)
{
    auto *found = form->findChild<Control *>(QLatin1String(name));
    if (found == nullptr) {
        QTest::qFail(name, __FILE__, __LINE__);
    }
    return found;
}

inline void type(QWidget *form, const char *name, const QString &text)
{
    auto *box = control<QWidget>(form, name);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(box, text);
}

inline void click(QWidget *form, const char *name)
{
    QTest::mouseClick(control<QAbstractButton>(form, name), Qt::LeftButton);
}
