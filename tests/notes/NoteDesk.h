#pragma once

#include "../store/DeliveredFiles.h"
#include "notes/NoteWindows.h"
#include "store/Upgrade.h"
#include "support/Rows.h"
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
    QString rows(const QString &select) const { return support::rowsOf(desk.paths.CustomerFile, select); }
};

template <typename Control>
Control *control(QWidget *form, const char *name)
{
    return form->findChild<Control *>(QLatin1String(name));
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
