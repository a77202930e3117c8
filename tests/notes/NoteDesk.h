#pragma once

#include "../store/DeliveredFiles.h"
#include "notes/forms/NoteWindows.h"
#include "store/Upgrade.h"
#include "support/Rows.h"
#include "support/TestForms.h"

/// A desk with the customers "Acme" and "O'Brien's" and no call notes.
class NoteDesk : public support::TestForms
{
public:
    NoteDesk()
    {
        deliver(u"Customer"_s, paths.CustomerFile);
        run(u"insert into customer(CustomerName) values('Acme'),('O''Brien''s')"_s);
        store::UpdateDatabase_Customer_0606191111(log, paths);
    }

    support::FakePrinter printer;
    notes::NoteWindows windowsOfNotes{{context(), printer, language}};

    void run(const QString &statements) const { runSql(paths.CustomerFile, statements); }
    QString rows(const QString &select) const { return support::rowsOf(paths.CustomerFile, select); }
};
