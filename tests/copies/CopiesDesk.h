#pragma once

#include "copies/CopyKeeper.h"
#include "store/DeliveredFiles.h"
#include "support/Rows.h"
#include "support/TestDesk.h"

/// A desk with some customers and a phone book, and the folder of its copies.
struct CopiesDesk : support::TestDesk
{
    explicit CopiesDesk(int customers = 3)
    {
        deliver(u"Customer"_s, paths.CustomerFile);
        deliver(u"SimplePhoneBook"_s, paths.PhoneBookFile);
        store::Database database(paths.CustomerFile);
        database.transaction([&] {
            for (int i = 1; i <= customers; ++i) {
                database.Execute(u"insert into customer (CustomerName,note) values (?,?)"_s,
                                 {u"Customer %1"_s.arg(i), QString(300, u'n')});
            }
        });
    }
    QString names() const
    {
        return support::rowsOf(paths.CustomerFile, u"select SN,CustomerName from customer order by SN"_s);
    }
    /// Nothing in it can be read any more.
    void spoil(const QString &file) const { writeFile(file, QByteArray(5000, 'x')); }
    QStringList folders() const
    {
        return QDir(copies().path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    }
    copies::CopyFolder copies() const { return copies::CopyFolder(paths); }
};
