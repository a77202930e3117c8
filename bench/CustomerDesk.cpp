#include "CustomerDesk.h"

#include "customers/CustomerQueries.h"

#include <QFile>

#include <random>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

QString schema()
{
    QFile file(QStringLiteral(CALLDESK_SCHEMA_FOLDER "/Customer.sql"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// A value for each exported column but SN, which the database gives.
QVariantList values(int i, std::mt19937 &random)
{
    static const QStringList words{u"Anna"_s, u"Spółka"_s,  u"张伟"_s,    u"贸易公司"_s,
                                   u"محمد"_s, u"İbrahim"_s, u"Handels"_s, u"Лидия"_s};
    const auto word = [&] { return words.at(qsizetype(random() % unsigned(words.size()))); };
    QVariantList row;
    for (const customers::ExportField &field : customers::exportFields()) {
        const QLatin1StringView column(field.column);
        if (column == "CustomerName"_L1) {
            row.append(word() + u' ' + word() + QString::number(i));
        } else if (column == "WorkPhones"_L1 || column == "Fax"_L1 || column == "ContactPersonMobile"_L1) {
            row.append(u"0533-%1"_s.arg(random() % 100000000, 8, 10, QChar(u'0')));
        } else if (column == "Note"_L1) {
            row.append(u"A note about %1, who asked for %2 twice"_s.arg(word(), word()));
        } else if (column != "SN"_L1) {
            row.append(column.startsWith("If"_L1, Qt::CaseInsensitive) ? u"0"_s : word());
        }
    }
    return row;
}

void fill(store::Database &database, int count)
{
    QStringList columns;
    for (const customers::ExportField &field : customers::exportFields()) {
        if (QLatin1StringView(field.column) != "SN"_L1) {
            columns.append(QString::fromLatin1(field.column));
        }
    }
    const QString insert = u"insert into customer(T3,"_s + columns.join(u',') + u") values('1',"_s +
                           QStringList(columns.size(), u"?"_s).join(u',') + u')';
    std::mt19937 random(20261121);
    for (int i = 1; i <= count; ++i) {
        database.Execute(insert, values(i, random));
    }
}

} // namespace

CustomerDesk::CustomerDesk(int customers)
{
    store::createDatabase(paths.CustomerFile, schema(),
                          [&](store::Database &database) { fill(database, customers); });
    values.CustomerDbExists = true;
    index.LoadCustomerPhoneNumberSnArray();
    while (index.isLoading()) {
        index.continueLoading();
    }
    store::FixCustomerData(log, paths);
}

} // namespace bench
